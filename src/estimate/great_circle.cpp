#include "estimate/great_circle.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;
constexpr double kLeastAngle = 1e-6;

double CentralAngle(const GeoPosition& from, const GeoPosition& to) {
  const double cosine =
      std::sin(from.latitude) * std::sin(to.latitude) +
      std::cos(from.latitude) * std::cos(to.latitude) * std::cos(to.longitude - from.longitude);
  return std::max(kLeastAngle, std::acos(std::clamp(cosine, -1.0, 1.0)));
}

double InitialAzimuth(const GeoPosition& from, const GeoPosition& to) {
  const double turn = to.longitude - from.longitude;
  return std::atan2(std::sin(turn) * std::cos(to.latitude),
                    std::cos(from.latitude) * std::sin(to.latitude) -
                        std::sin(from.latitude) * std::cos(to.latitude) * std::cos(turn));
}

}  // namespace

GeoPosition PositionFromDegrees(double latitude, double longitude) {
  return {Radians(latitude), Radians(longitude)};
}

GreatCircle::GreatCircle(const GeoPosition& from, const GeoPosition& to, bool long_way)
    : from_(from), angle_(CentralAngle(from, to)), azimuth_(InitialAzimuth(from, to)) {
  if (long_way) {
    angle_ = kTurn - angle_;
    azimuth_ += std::numbers::pi;
  }
  azimuth_ = std::fmod(azimuth_ + kTurn, kTurn);
}

double GreatCircle::Length() const {
  return angle_ * kEarthRadius;
}

GeoPosition GreatCircle::At(double along) const {
  const double sine_from = std::sin(from_.latitude);
  const double cosine_from = std::cos(from_.latitude);
  const double sine = std::clamp(
      sine_from * std::cos(along) + cosine_from * std::sin(along) * std::cos(azimuth_), -1.0, 1.0);
  const double turn = std::atan2(std::sin(azimuth_) * std::sin(along) * cosine_from,
                                 std::cos(along) - sine_from * sine);
  double longitude = std::remainder(from_.longitude + turn, kTurn);
  if (longitude >= std::numbers::pi) longitude -= kTurn;
  return {std::asin(sine), longitude};
}

}  // namespace skyhop::estimate
