#pragma once

#include <string_view>

#include "common/diagnostics.h"
#include "geo/lat_lon.h"

namespace skyhop {

/// The way from one place to another on the surface of the earth.
struct Vector {
  float azimuth = -1;  ///< degrees clockwise from true north, 0 to 360; -1: nothing was computed
  float distance = 0;  ///< kilometres or statute miles

  friend bool operator==(const Vector&, const Vector&) = default;
};

// Everything here works on a sphere of 6371 km radius. Each written expression is evaluated in
// double precision and stored in single precision, so results are the same on every platform.

namespace LatLonModule {

/// The angle in radians; north and west are negative.
[[nodiscard]] float ToRadians(const Angle& angle);

/// Arc sine in radians. Outside -1 to 1 it is that of the nearer end. Not-a-number throws Error 5.
[[nodiscard]] float arcsin(float x);

/// Arc cosine in radians, limited as arcsin is. An argument beyond pi or minus pi is first brought
/// back by one turn, also in the caller's variable. Not-a-number throws Error 5.
[[nodiscard]] float arccos(float& x);

/// The great-circle way from `qth` to `dx` on the short ("S") or the long ("L") path, by the
/// spherical law of cosines. Any other path yields azimuth -1, distance 0.
///
/// The same place yields azimuth 0, distance 0 and antipodes azimuth 0, half the circumference,
/// both whatever the path; places within about 1.5 km of each other, or of each other's antipodes,
/// count as such. From 1000 km on the azimuth is good to a tenth of a degree near due north and due
/// south and to a hundredth elsewhere; closer by, or next to a pole, single precision makes it less
/// accurate, and at a pole it has no meaning. A short path of exactly 180 degrees has a long path
/// of 360.
[[nodiscard]] Vector ComputePositionVector(const Position& qth, const Position& dx,
                                           std::string_view path, bool distance_miles,
                                           Diagnostics& diagnostics);

/// The same from coordinates as the user typed them. Azimuth -1, distance 0 when ParseAngle cannot
/// read one of them.
[[nodiscard]] Vector ComputeVector(std::string_view qth_latitude, std::string_view qth_longitude,
                                   const Position& dx, std::string_view path, bool distance_miles,
                                   Diagnostics& diagnostics);

}  // namespace LatLonModule

namespace BeaconModule {

/// The short path in whole degrees and whole kilometres or miles, both rounded down. Coarser than
/// LatLonModule::ComputePositionVector: places within 9 km count as the same, and ways within a
/// tenth of a degree of due north or south as such. `distance_miles` is the configured unit.
[[nodiscard]] Vector ComputeVector(const Position& qth, const Position& dx, bool distance_miles,
                                   Diagnostics& diagnostics);

}  // namespace BeaconModule
}  // namespace skyhop
