#include "estimate/muf_spread.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace skyhop::estimate {
namespace {

constexpr std::size_t kSeasons = 3;    // local winter, equinox, local summer
constexpr std::size_t kTimes = 6;      // of local time, from about 22 hours in steps of four
constexpr std::size_t kLatitudes = 8;  // 80 to 90 degrees, 70 to 80 ... and 0 to 20

/// Per cent of the median, [season][time][latitude].
using DecileTable = std::array<std::array<std::array<std::uint8_t, kLatitudes>, kTimes>, kSeasons>;

constexpr DecileTable kLowerDecile = {{
    {{{66, 72, 78, 82, 83, 81, 77, 77},
      {71, 75, 79, 80, 80, 75, 69, 72},
      {70, 75, 80, 83, 86, 87, 87, 88},
      {69, 73, 78, 84, 88, 86, 82, 87},
      {65, 73, 80, 84, 87, 86, 83, 87},
      {70, 74, 77, 80, 81, 81, 79, 80}}},
    {{{66, 68, 71, 74, 77, 79, 78, 78},
      {67, 72, 76, 78, 80, 79, 75, 71},
      {74, 75, 77, 77, 79, 84, 85, 86},
      {71, 73, 73, 74, 78, 83, 87, 89},
      {75, 77, 77, 77, 79, 82, 85, 87},
      {68, 70, 73, 75, 79, 77, 74, 79}}},
    {{{74, 76, 77, 78, 79, 79, 78, 78},
      {78, 79, 81, 81, 80, 77, 75, 72},
      {83, 80, 78, 77, 77, 78, 80, 83},
      {85, 83, 80, 78, 78, 80, 82, 86},
      {81, 83, 83, 82, 80, 79, 79, 83},
      {77, 79, 81, 83, 82, 79, 75, 75}}},
}};

constexpr DecileTable kUpperDecile = {{
    {{{142, 136, 130, 125, 122, 127, 133, 122},
      {133, 128, 124, 120, 117, 129, 137, 130},
      {143, 136, 125, 115, 113, 114, 116, 115},
      {138, 128, 118, 113, 111, 115, 118, 114},
      {135, 123, 117, 112, 111, 115, 121, 115},
      {143, 137, 130, 125, 122, 124, 131, 121}}},
    {{{144, 140, 132, 124, 120, 123, 131, 121},
      {133, 126, 121, 118, 117, 122, 131, 134},
      {130, 126, 123, 121, 117, 114, 113, 111},
      {131, 127, 122, 120, 117, 114, 113, 115},
      {134, 128, 121, 115, 113, 114, 116, 118},
      {147, 138, 128, 121, 119, 122, 130, 121}}},
    {{{128, 122, 118, 116, 116, 118, 122, 124},
      {125, 120, 118, 118, 120, 125, 131, 134},
      {117, 118, 120, 122, 123, 121, 116, 112},
      {117, 117, 118, 120, 121, 120, 121, 125},
      {123, 118, 116, 116, 117, 118, 121, 126},
      {123, 120, 118, 116, 116, 118, 123, 122}}},
}};

std::size_t SeasonIndex(int month, double latitude) {
  std::size_t season = 1;
  if (month == 12 || month <= 2) season = 0;
  if (month >= 6 && month <= 8) season = 2;
  return latitude <= 0 ? 2 - season : season;
}

std::size_t TimeIndex(double local_time) {
  return (static_cast<std::size_t>(local_time / 4.0 + 1.55) - 1) % kTimes;
}

std::size_t LatitudeIndex(double latitude) {
  const int column = static_cast<int>(9.5 - std::abs(Degrees(latitude)) / 10.0);
  return static_cast<std::size_t>(std::clamp(column, 1, 8) - 1);
}

}  // namespace

MufSpread F2MufSpread(const GeoPosition& position, int month, double local_time) {
  const std::size_t season = SeasonIndex(month, position.latitude);
  const std::size_t time = TimeIndex(local_time);
  const std::size_t latitude = LatitudeIndex(position.latitude);
  return {(1.0 - kLowerDecile[season][time][latitude] / 100.0) / kDecile,
          (kUpperDecile[season][time][latitude] / 100.0 - 1.0) / kDecile};
}

}  // namespace skyhop::estimate
