#pragma once

#include "estimate/propagation_math.h"
#include "estimate/reflection_area.h"

namespace skyhop::estimate {

/// A ray of one hop.
struct Ray {
  Elevation elevation;            ///< take-off angle
  Heights heights;                ///< where it is reflected
  double vertical_frequency = 0;  ///< of the vertical ray that is reflected alike, MHz
};

/// The highest frequency, MHz, that a hop of given length carries, and its ray.
struct HopMuf {
  double frequency = 0;
  Ray ray;
};

/// What a layer carries over the whole path on 50, 90 and 10 % of the days, MHz, with as few hops
/// as the minimum take-off angle allows.
struct LayerMuf {
  double muf = 0;
  double fot = 0;
  double hpf = 0;
  MufSpread spread;
  double critical_frequency = 0;  ///< vertical frequency of the MUF ray, MHz
  int hops = 0;
  Ray ray;
};

/// The smallest number of hops over the ground angle `path_angle` whose rays leave at
/// `min_elevation` or more, for a mirror at `height`. At most 500, which an angle near the vertical
/// may exceed: no signal survives so many hops.
[[nodiscard]] int LeastHops(double path_angle, const Elevation& min_elevation, double height);

/// MUF of single hops by the E layer.
[[nodiscard]] HopMuf EHopMuf(const ReflectionArea& area, const HalfHop& hop);

/// MUF of single hops by the F2 layer.
class F2HopMuf {
 public:
  /// `path_length`, km, below 2000 brings the critical frequency nearer to that of the layer.
  F2HopMuf(const ReflectionArea& area, double path_length);

  /// The highest frequency that the layer reflects vertically, MHz.
  [[nodiscard]] double CriticalFrequency() const { return critical_; }

  /// Heights for that frequency, km.
  [[nodiscard]] const Heights& CriticalHeights() const { return heights_; }

  [[nodiscard]] HopMuf For(const HalfHop& hop) const;

 private:
  double f2_;
  double critical_;
  Heights heights_;
};

/// MUF of the path by the E layer of its controlling area.
[[nodiscard]] LayerMuf EPathMuf(const ReflectionArea& area, double path_angle,
                                const Elevation& min_elevation);

/// MUF of the path by the F2 layer of its controlling area.
[[nodiscard]] LayerMuf F2PathMuf(const F2HopMuf& hops, const MufSpread& spread, double path_angle,
                                 const Elevation& min_elevation);

}  // namespace skyhop::estimate
