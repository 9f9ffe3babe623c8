#include "estimate/reflection_area.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

constexpr double kESemiThickness = 20.0;

/// What the passage through the E layer adds to the apparent height of a ray, km, whose vertical
/// frequency is `ratio` times foE; `ratio` > 1.
double EDelay(double ratio) {
  return kESemiThickness * (ratio * std::log((ratio + 1.0) / (ratio - 1.0)) - 2.0);
}

struct EHeightsAt {
  double ratio;
  Heights heights;
};

constexpr std::array<EHeightsAt, 10> kEHeights = {{{0, {70, 70}},
                                                   {.18, {87.40, 84.51}},
                                                   {.35, {94.00, 88.52}},
                                                   {.527, {98.68, 93.00}},
                                                   {.613, {100.20, 94.26}},
                                                   {.699, {102.65, 95.71}},
                                                   {.785, {107.15, 97.68}},
                                                   {.871, {113.74, 100.27}},
                                                   {.957, {125.25, 104.22}},
                                                   {.99, {140.03, 107.19}}}};

}  // namespace

ReflectionArea::ReflectionArea(const IonosphereState& e, double gyrofrequency,
                               const IonosphereState& f2)
    : foe_(e.foe),
      gyrofrequency_(gyrofrequency),
      f2_(f2.f2),
      apparent_height_(1490.0 / f2.m3000 - 176.0),
      peak_height_(apparent_height_ - EDelay(std::max(1.1, 0.834 * f2.f2 / f2.foe))),
      semi_thickness_(std::min(peak_height_ / f2.height_ratio, peak_height_ - 112.0)) {}

Heights ReflectionArea::F2Heights(double vertical_frequency) const {
  const double x = std::min(vertical_frequency / f2_, kNearlyCritical);
  const double delay = EDelay(std::max(vertical_frequency / foe_, 1.05));
  return {peak_height_ - semi_thickness_ +
              0.5 * x * semi_thickness_ * std::log((1.0 + x) / (1.0 - x)) + delay,
          F2ActualHeight(vertical_frequency)};
}

Heights ReflectionArea::EHeights(double vertical_frequency) const {
  const double x = std::clamp(vertical_frequency / foe_, 0.0, kEHeights.back().ratio);
  std::size_t above = 1;
  while (above + 1 < kEHeights.size() && kEHeights[above].ratio < x) ++above;
  const EHeightsAt& low = kEHeights[above - 1];
  const EHeightsAt& high = kEHeights[above];
  const double share = (x - low.ratio) / (high.ratio - low.ratio);
  return {std::lerp(low.heights.apparent, high.heights.apparent, share),
          std::lerp(low.heights.actual, high.heights.actual, share)};
}

double ReflectionArea::CurvatureCorrection(const Heights& heights, double frequency,
                                           double vertical_frequency) const {
  const double excess = (heights.apparent - heights.actual) / kEarthRadius;
  return (Square(frequency) - Square(vertical_frequency)) / Square(f2_) * excess *
         (heights.actual + 2.0 * (kEarthRadius + heights.actual) * excess);
}

}  // namespace skyhop::estimate
