#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <string>

#include "common/clock.h"
#include "engine/results_table.h"
#include "geo/lat_lon.h"

namespace skyhop {

enum class SunState { kDay, kTwilight, kNight };

/// The state of the sun at a place; civil twilight ends six degrees below the horizon.
[[nodiscard]] SunState SunStateAt(const Position& station, UtcTime time);

/// A station's row of bars: the state of the sun in each hour of a UTC day, and a tool tip.
struct SunRow {
  bool known = false;  ///< whether the station has valid coordinates
  std::array<SunState, kHourCount - 1> states{};
  /// "sunrise 11:42, sunset 21:38 UTC", or the reason why the day has neither.
  std::string tool_tip;

  friend bool operator==(const SunRow&, const SunRow&) = default;
};

/// The rows `XmitSun` (your station) and `RcvSun` (the DX station).
struct SolarBars {
  SunRow xmit_sun;
  SunRow rcv_sun;

  friend bool operator==(const SolarBars&, const SolarBars&) = default;
};

/// The bars of one station on one UTC day. The bar of an hour shows the sun's state in its middle.
[[nodiscard]] SunRow ComputeSunRow(const Position& station, std::chrono::year_month_day date);

}  // namespace skyhop
