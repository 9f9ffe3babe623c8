#include "estimate/ground.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstddef>
#include <string_view>

namespace skyhop::estimate {
namespace {

// From 90 N down to 90 S, each row from 180 W; "1" is land.
constexpr std::array<std::string_view, 18> kLand = {
    "111111111111111111111111111111111111", "111111111111111111111111111111111111",
    "111111111111111110111111111111111111", "000011111111000001111111111111111100",
    "000001111111000001111111111111100000", "000000111110000001111111111111100000",
    "000000011000000011111111111111000000", "000000000100000001111110000110000000",
    "000000000011100000111110000111000000", "000000000011110000011100000011000000",
    "000000000011110000011100000000111000", "000000000011110000001000000001111000",
    "000000000001100000000000000000111000", "000000000000000000000000000000000000",
    "000000000000000000000000000000000000", "000000000000000000000000000000000000",
    "000111111111000111111111111111111110", "111111111111111111111111111111111111",
};

struct Surface {
  double permittivity;
  double conductivity;  // S/m
};

constexpr Surface kLandSurface = {4.0, 0.001};
constexpr Surface kSeaSurface = {80.0, 5.0};

double ReflectionLoss(const Surface& surface, double frequency, const Elevation& elevation) {
  const std::complex<double> z(surface.permittivity, -18000.0 * surface.conductivity / frequency);
  const double sine = std::sin(elevation.Angle());
  const std::complex<double> root = std::sqrt(z - Square(elevation.Cosine()));
  // norm() is the square of the magnitude.
  const double horizontal = std::norm(sine - root) / std::norm(sine + root);
  const double vertical = std::norm(z * sine - root) / std::norm(z * sine + root);
  return std::abs(Decibels(std::max(1e-9, (horizontal + vertical) / 2.0)));
}

}  // namespace

bool IsLand(const GeoPosition& position) {
  const auto row = std::min<std::size_t>(
      17, static_cast<std::size_t>(std::max(0.0, (90.0 - Degrees(position.latitude)) / 10.0)));
  const auto column =
      static_cast<std::size_t>(std::max(0.0, (Degrees(position.longitude) + 180.0) / 10.0)) %
      kLand[row].size();
  return kLand[row][column] == '1';
}

GroundReflection::GroundReflection(std::span<const GeoPosition> points)
    : land_share_(static_cast<double>(std::count_if(points.begin(), points.end(), IsLand)) /
                  static_cast<double>(points.size())) {}

double GroundReflection::Loss(double frequency, const Elevation& elevation) const {
  double loss = 0;
  if (land_share_ > 0) loss += land_share_ * ReflectionLoss(kLandSurface, frequency, elevation);
  if (land_share_ < 1) {
    loss += (1.0 - land_share_) * ReflectionLoss(kSeaSurface, frequency, elevation);
  }
  return loss;
}

}  // namespace skyhop::estimate
