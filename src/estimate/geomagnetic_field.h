#pragma once

#include "estimate/great_circle.h"

namespace skyhop::estimate {

/// The quantities of the Earth's magnetic field, 300 km above a position, that the ionospheric maps
/// and the absorption formula need.
struct MagneticField {
  double modified_dip = 0;   ///< Rawer's modified magnetic dip, radians, positive in the north
  double gyrofrequency = 0;  ///< of the electron, MHz
};

/// The field by the spherical harmonics of Jensen and Cain (J. Geophys. Res. 67 (1962) 3568, epoch
/// 1960) up to the fourth degree. The old epoch is right here: the ionospheric maps are tied to it.
/// Latitudes beyond 89.9 degrees count as 89.9.
[[nodiscard]] MagneticField MagneticFieldAt(const GeoPosition& position);

/// Latitude in radians in the coordinates of the dipole whose north pole is at 79.5 N, 69.0 W.
[[nodiscard]] double GeomagneticLatitude(const GeoPosition& position);

}  // namespace skyhop::estimate
