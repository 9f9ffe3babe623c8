#pragma once

#include <algorithm>
#include <cmath>

#include "estimate/ionosphere.h"

namespace skyhop::estimate {

enum class Layer { kE, kF2 };

/// Where a layer seems to reflect and where it really does, km.
struct Heights {
  double apparent = 0;
  double actual = 0;
};

/// The E layer at its critical frequency, as the MUF of the layer needs it.
inline constexpr Heights kELayerAtMuf = {125.3, 104.25};

/// A stretch of the path over which rays are reflected: a parabolic F2 layer over an E layer of
/// fixed height (110 km) and semi-thickness (20 km).
class ReflectionArea {
 public:
  /// The E layer is that of one position, the F2 layer that of another or the same.
  /// `gyrofrequency`, MHz, belongs to the first. The F2 layer's height follows from M(3000)F2 by
  /// Shimazaki (1955), less the delay in the E layer below.
  ReflectionArea(const IonosphereState& e, double gyrofrequency, const IonosphereState& f2);

  [[nodiscard]] double FoE() const { return foe_; }
  [[nodiscard]] double Gyrofrequency() const { return gyrofrequency_; }
  /// foF2 plus half the gyrofrequency, MHz.
  [[nodiscard]] double F2() const { return f2_; }
  /// Apparent height of the F2 layer for 0.834 of its critical frequency, km.
  [[nodiscard]] double ApparentHeight() const { return apparent_height_; }
  /// Height of the F2 peak, km.
  [[nodiscard]] double PeakHeight() const { return peak_height_; }
  [[nodiscard]] double SemiThickness() const { return semi_thickness_; }

  /// Height within the F2 layer from which the search for a ray starts, km.
  [[nodiscard]] double FirstGuess() const { return peak_height_ - 0.6 * semi_thickness_; }

  /// Height at which the F2 layer really reflects a vertical ray of `vertical_frequency`, km.
  [[nodiscard]] double F2ActualHeight(double vertical_frequency) const {
    const double x = std::min(vertical_frequency / f2_, kNearlyCritical);
    return peak_height_ - semi_thickness_ * std::sqrt(1.0 - x * x);
  }

  /// Both heights of that reflection.
  [[nodiscard]] Heights F2Heights(double vertical_frequency) const;

  /// The same for the E layer.
  [[nodiscard]] Heights EHeights(double vertical_frequency) const;

  /// What the Earth's curvature adds to the apparent height, km, of an oblique ray of `frequency`
  /// reflected like a vertical one of `vertical_frequency`.
  [[nodiscard]] double CurvatureCorrection(const Heights& heights, double frequency,
                                           double vertical_frequency) const;

 private:
  /// The share of the critical frequency beyond which the delay in the F2 layer would grow without
  /// bounds.
  static constexpr double kNearlyCritical = 0.999;

  double foe_;
  double gyrofrequency_;
  double f2_;
  double apparent_height_;
  double peak_height_;
  double semi_thickness_;
};

}  // namespace skyhop::estimate
