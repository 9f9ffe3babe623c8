#pragma once

#include <span>

#include "estimate/great_circle.h"
#include "estimate/propagation_math.h"

namespace skyhop::estimate {

/// Whether a position is on land, by squares of ten degrees.
[[nodiscard]] bool IsLand(const GeoPosition& position);

/// The loss where hops meet the ground, averaged over the surfaces along a path.
class GroundReflection {
 public:
  /// `points` lie along the path; at least one.
  explicit GroundReflection(std::span<const GeoPosition> points);

  /// Loss in dB, 0 or more, of one reflection at `frequency` MHz of a ray that arrives at
  /// `elevation`, both polarisations alike. Fresnel's formula with a relative permittivity of 4 and
  /// a conductivity of 0.001 S/m for land, 80 and 5 S/m for sea.
  [[nodiscard]] double Loss(double frequency, const Elevation& elevation) const;

 private:
  double land_share_;
};

}  // namespace skyhop::estimate
