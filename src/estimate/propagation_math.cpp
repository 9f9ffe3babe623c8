#include "estimate/propagation_math.h"

namespace skyhop::estimate {

double LocalTime(double utc_hour, double longitude) {
  const double hours = std::fmod(utc_hour + Degrees(longitude) / 15.0, 24.0);
  // A tiny negative number plus 24 rounds to 24 itself.
  const double wrapped = hours < 0 ? hours + 24.0 : hours;
  return wrapped < 24.0 ? wrapped : 0.0;
}

double HalfHopAngle(const Elevation& elevation, double height) {
  const double sine = kEarthRadius * elevation.Cosine() / (kEarthRadius + height);
  return std::numbers::pi / 2 - elevation.Angle() - std::asin(sine);
}

Elevation HalfHop::TakeOff(double height) const {
  const double angle =
      std::numbers::pi / 2 - angle_ - std::atan(sine_ / (versine_ + height / kEarthRadius));
  return {angle, TakeOffCosine(height)};
}

double HalfHop::TakeOffCosine(double height) const {
  // The law of sines in the triangle of the Earth's centre, the take-off and the mirror, whose
  // third side follows from the two legs.
  const double relative = height / kEarthRadius;
  return sine_ * (1.0 + relative) / std::sqrt(Square(versine_ + relative) + sine_ * sine_);
}

double HalfHop::RayLength(const Elevation& elevation, double height) const {
  return std::abs(2.0 * (height + kEarthRadius * versine_) /
                  std::cos(std::numbers::pi / 2 - angle_ - elevation.Angle()));
}

double UpperTail(double z) {
  const double y = std::min(5.0, std::abs(z));
  const double polynomial = 1.0 + y * (0.196854 + y * (0.115194 + y * (0.000344 + y * 0.019527)));
  const double tail = 0.5 / Square(Square(polynomial));
  return z < 0 ? 1.0 - tail : tail;
}

double SupportedDays(double frequency, double median, const MufSpread& spread) {
  const double relative = frequency <= median ? spread.lower : spread.upper;
  return UpperTail((frequency - median) / std::max(0.001, median * relative));
}

double SupportLoss(double fraction_of_days, double least_fraction) {
  return -Decibels(std::max(least_fraction, fraction_of_days));
}

}  // namespace skyhop::estimate
