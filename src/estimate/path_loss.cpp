#include "estimate/path_loss.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

/// Rows for a tenth, half and nine tenths of the observations, columns for the geomagnetic
/// latitudes up to 40, 45, 50 ... 80 degrees.
using LossTable = std::array<std::array<double, 9>, 3>;

constexpr LossTable kShortPathLoss = {{{5.1, 5.9, 6.7, 7.5, 8.3, 11.8, 11.2, 9.4, 8.1},
                                       {9.0, 9.8, 10.7, 11.6, 13.0, 17.8, 16.6, 13.5, 11.8},
                                       {9.9, 11.6, 13.3, 15.2, 17.9, 27.0, 25.9, 19.5, 15.8}}};
constexpr LossTable kLongPathLoss = {{{5.1, 5.5, 5.9, 6.4, 7.0, 8.8, 8.5, 7.2, 6.7},
                                      {9.0, 9.5, 10.1, 10.7, 11.6, 14.8, 14.0, 11.9, 10.7},
                                      {9.8, 10.8, 11.9, 13.0, 14.0, 17.6, 16.6, 14.1, 13.0}}};

/// Absorption at the vertical for an index and a divisor of 1, dB.
constexpr double kAbsorption = 677.2;

/// What collisions add to the frequency term of a ray that passes the whole absorbing region.
constexpr double kCollisions = 10.2;

std::size_t LatitudeColumn(double geomagnetic_latitude) {
  const long column = std::lround((geomagnetic_latitude - 40.0) / 5.0);
  return static_cast<std::size_t>(std::clamp(column, 0L, 8L));
}

/// The frequency that the F2 layer carries on 90 % of the days, brought down to 10 MHz at high
/// geomagnetic latitudes.
double DependableFrequency(double fot, double geomagnetic_latitude) {
  const double weight = std::clamp((geomagnetic_latitude - 40.0) / 10.0, 0.0, 1.0);
  return fot - weight * (fot - 10.0);
}

/// What collisions add to the frequency term of a ray that turns back at `height`, km.
double CollisionTerm(double height) {
  if (height >= 88.0) return kCollisions;
  return 63.07 * std::exp(-2.0 * (1.0 + 3.0 * (height - 70.0) / 18.0) / 4.39);
}

}  // namespace

ExcessLoss ExcessLossOf(std::span<const GeoPosition> points, double path_length) {
  const LossTable& table = path_length <= 2500.0 ? kShortPathLoss : kLongPathLoss;
  const double weight = 1.0 / static_cast<double>(points.size());
  ExcessLoss mean;
  for (const GeoPosition& point : points) {
    const double latitude = std::abs(Degrees(GeomagneticLatitude(point)));
    const std::size_t column = LatitudeColumn(latitude);
    mean.least_tenth += weight * table[0][column];
    mean.median += weight * table[1][column];
    mean.greatest_tenth += weight * table[2][column];
    mean.geomagnetic_latitude += weight * latitude;
  }
  return mean;
}

SystemLoss SystemLossOf(const ExcessLoss& excess, const LayerMuf& f2) {
  const double frequency = DependableFrequency(f2.fot, excess.geomagnetic_latitude);
  const auto counted = [&](double median) {
    return SupportLoss(SupportedDays(frequency, median, f2.spread), 0.1);
  };
  const double at_muf = counted(f2.muf);
  return {.median = std::max(0.0, excess.median - at_muf),
          .lower_decile = std::max(1.0, excess.greatest_tenth - counted(f2.fot) + at_muf),
          .upper_decile = std::max(0.5, excess.least_tenth + counted(f2.hpf) - at_muf)};
}

Absorption::Absorption(std::span<const ReflectionArea> areas) {
  double foe = 0;
  for (const ReflectionArea& area : areas) {
    mean_index_ += IndexOf(area);
    foe += area.FoE();
  }
  const auto count = static_cast<double>(areas.size());
  mean_index_ /= count;
  const double weight = std::clamp((foe / count - 0.5) / 1.5, 0.0, 1.0);
  e_constant_ = 1.359 * weight;
  e_slope_ = 8.617 * weight;
}

double Absorption::IndexOf(const ReflectionArea& area) {
  return std::max(0.1, -0.04 + std::exp(-2.937 + 0.8445 * area.FoE()));
}

double Absorption::FrequencyTerm(const ReflectionArea& area, double frequency) {
  return std::pow(frequency + area.Gyrofrequency(), 1.98);
}

double Absorption::Vertical(double frequency_term) {
  return kAbsorption / (frequency_term + kCollisions);
}

double Absorption::HopLoss(double index, double frequency_term, const ReflectionArea& area,
                           const Ray& ray) const {
  const double ratio = ray.vertical_frequency / area.FoE();
  if (ratio > 1.0) return Vertical(frequency_term) * index * Secant(ray.elevation, 100.0);
  const double height = ray.heights.actual;
  return kAbsorption * index * Secant(ray.elevation, std::min(100.0, height)) /
             (frequency_term + CollisionTerm(height)) +
         e_constant_ + e_slope_ * std::log(std::max(ratio, 0.41));
}

}  // namespace skyhop::estimate
