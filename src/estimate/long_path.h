#pragma once

#include <vector>

#include "estimate/path.h"
#include "estimate/propagation_math.h"
#include "estimate/signal.h"

namespace skyhop::estimate {

/// The signal over a path of 7000 km or more: rays leave and arrive in the way that suits the
/// ionosphere at each end best, without a whole number of hops in between.
class LongPath {
 public:
  /// The hour must outlive this object.
  explicit LongPath(const PathHour& hour);

  /// The signal at `frequency`, MHz.
  [[nodiscard]] RaySignal Signal(double frequency) const;

 private:
  /// How the signal gets from the ground into its long way, or back, at one end.
  struct End {
    Ray ray;
    Layer layer = Layer::kF2;
    double hop = 0;   // ground angle of a whole hop
    double loss = 0;  // dB
  };

  [[nodiscard]] End BestEnd(double frequency, const ReflectionArea& area) const;
  [[nodiscard]] End MufEnd() const;
  [[nodiscard]] double Loss(double frequency, const End& transmitter, const End& receiver) const;
  /// How much of the ground angle `middle` rays pass between the layers without a hop.
  [[nodiscard]] double Ducted(double frequency, double middle) const;

  const PathHour* hour_;
  std::vector<Elevation> elevations_;  // candidates, ascending
};

}  // namespace skyhop::estimate
