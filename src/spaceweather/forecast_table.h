#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace skyhop::SolarForecastModule {

/// Slots of a forecast: 1 to 31 are days, 0 is not used.
inline constexpr std::size_t kSlotCount = 32;
/// The slot of the first day; the days after it follow downward to slot 1.
inline constexpr std::size_t kFirstDaySlot = 31;
inline constexpr std::size_t kColumnCount = 10;

// The columns of a slot. Each quantity fills three; 0 is not used.
inline constexpr std::array<std::size_t, 3> kFluxColumns = {1, 2, 3};  ///< predicted solar flux
inline constexpr std::array<std::size_t, 3> kAColumns = {4, 5, 6};     ///< predicted A index
inline constexpr std::array<std::size_t, 3> kKColumns = {7, 8, 9};  ///< K index estimated from it

/// One day of the forecast.
struct ForecastSlot {
  bool valid = false;
  int day = 0;       ///< of the month
  std::string date;  ///< as the forecast writes it, such as "21Nov26"
  /// A value that the forecast has no number for is -1.
  std::array<std::int16_t, kColumnCount> columns{};

  friend bool operator==(const ForecastSlot&, const ForecastSlot&) = default;
};

/// The days of the forecast that was downloaded last.
using ForecastTable = std::array<ForecastSlot, kSlotCount>;

}  // namespace skyhop::SolarForecastModule
