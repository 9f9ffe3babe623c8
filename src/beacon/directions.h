#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "common/diagnostics.h"
#include "geo/lat_lon.h"

namespace skyhop::BeaconModule {

/// Eighths of the compass, each 45 degrees wide around the direction that names it.
enum class Octant { kN, kNE, kE, kSE, kS, kSW, kW, kNW };
inline constexpr int kOctantCount = 8;
inline constexpr std::array<std::string_view, kOctantCount> kOctantNames = {"N", "NE", "E", "SE",
                                                                            "S", "SW", "W", "NW"};

/// The octant that a bearing lies in; an edge, such as 22.5 degrees, belongs to the next one
/// clockwise. Bearings may be beyond 0 to 360.
[[nodiscard]] Octant OctantOf(double bearing);

/// The way from a station to a beacon along the great circle, in whole degrees and whole kilometres
/// or miles.
struct Way {
  int short_bearing = 0;
  int short_distance = 0;
  /// The other way round; a short path of exactly 180 degrees has a long one of 360.
  int long_bearing = 0;
  int long_distance = 0;
  /// The short path's bearing with its fraction.
  double azimuth = 0;

  friend bool operator==(const Way&, const Way&) = default;
};

/// Nothing when one of the positions is undefined.
[[nodiscard]] std::optional<Way> WayTo(const Position& station, const Position& beacon,
                                       bool distance_miles, Diagnostics& diagnostics);

}  // namespace skyhop::BeaconModule
