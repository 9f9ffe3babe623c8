#pragma once

#include <chrono>
#include <vector>

#include "common/clock.h"
#include "geo/lat_lon.h"

namespace skyhop {

/// Elevation of the sun's centre, in degrees, at which the sun rises and sets: half its diameter
/// and the mean refraction at the horizon below zero.
inline constexpr double kSunriseElevation = -0.833;

/// Elevation of the sun's centre above the horizon of a place, in degrees: geometric, without
/// refraction.
///
/// The sun's place comes from the low-precision formulas of the Astronomical Almanac (section C),
/// good to 0.01 degree from 1950 to 2050; the Greenwich sidereal time from its linear formula. The
/// position is taken as it is, on a sphere and without parallax (0.002 degree).
[[nodiscard]] double SolarElevation(const Position& place, UtcTime time);

/// The sun passes `kSunriseElevation`.
struct SunCrossing {
  UtcTime time;
  bool rises = false;  ///< up, else down
};

/// Sunrises and sunsets of a day.
struct SunTimes {
  enum class Day { kRisesOrSets, kUpAllDay, kDownAllDay };

  Day day = Day::kDownAllDay;
  /// In order of time. A UTC day has any number of either kind: at 180 degrees east the sun sets in
  /// the morning, and near the polar day one of the two may be missing or occur twice.
  std::vector<SunCrossing> crossings;
};

/// Sunrises and sunsets at a place within a UTC day, to a few seconds of the formulas. Does not
/// find a sun that is up or down for less than a minute.
[[nodiscard]] SunTimes SunTimesOn(const Position& place, std::chrono::year_month_day date);

}  // namespace skyhop
