#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

// The few formulas that every part of the estimate shares. Angles are in radians, heights and
// distances in kilometres, frequencies in MHz, levels in decibels.

namespace skyhop::estimate {

/// Mean radius of the Earth.
inline constexpr double kEarthRadius = 6370.0;

/// Decibels per unit of natural logarithm of a power, 10 / ln 10.
inline constexpr double kDecibelsPerNeper = 10.0 * std::numbers::log10e;

/// Standard deviations between the median and a decile of a normal distribution, as rounded in the
/// publications that the decile tables come from.
inline constexpr double kDecile = 1.28;

[[nodiscard]] constexpr double Radians(double degrees) {
  return degrees * (std::numbers::pi / 180.0);
}

[[nodiscard]] constexpr double Degrees(double radians) {
  return radians * (180.0 / std::numbers::pi);
}

[[nodiscard]] constexpr double Square(double x) {
  return x * x;
}

/// 10 log10(`ratio`); `ratio` > 0.
[[nodiscard]] inline double Decibels(double ratio) {
  return 10.0 * std::log10(ratio);
}

/// An hour (24 to the day) as the angle of a 24-hour clock.
[[nodiscard]] constexpr double HourAngle(double hours) {
  return hours * (std::numbers::pi / 12.0);
}

/// Mean local time in hours, at least 0 and below 24, `longitude` east of Greenwich.
[[nodiscard]] double LocalTime(double utc_hour, double longitude);

/// A take-off angle with its cosine, which nearly every formula wants.
class Elevation {
 public:
  Elevation() = default;
  /// `angle` in radians.
  explicit Elevation(double angle) : Elevation(angle, std::cos(angle)) {}
  /// Where the cosine is known already.
  Elevation(double angle, double cosine) : angle_(angle), cosine_(cosine) {}

  [[nodiscard]] double Angle() const { return angle_; }
  [[nodiscard]] double Cosine() const { return cosine_; }

 private:
  double angle_ = 0;
  double cosine_ = 1;
};

/// Cosine of the angle of incidence, at `height`, of a ray that leaves the ground at an elevation
/// with the given cosine. At least 0.001. Times the ray's frequency it is the frequency of the
/// vertical ray that is reflected alike.
[[nodiscard]] inline double IncidenceCosine(double cosine_of_elevation, double height) {
  const double sine = kEarthRadius * cosine_of_elevation / (kEarthRadius + height);
  return std::sqrt(std::max(1e-6, 1.0 - sine * sine));
}

/// Secant of that angle.
[[nodiscard]] inline double Secant(const Elevation& elevation, double height) {
  return 1.0 / IncidenceCosine(elevation.Cosine(), height);
}

/// Half of the ground angle that a hop spans which leaves at `elevation` towards a mirror at
/// `height`: zero for a vertical ray.
[[nodiscard]] double HalfHopAngle(const Elevation& elevation, double height);

/// The take-off side of one hop: half the ground angle between its ends, with the functions of it
/// that the ray geometry needs again and again.
class HalfHop {
 public:
  explicit HalfHop(double angle)
      : angle_(angle), sine_(std::sin(angle)), versine_(1.0 - std::cos(angle)) {}

  [[nodiscard]] double Angle() const { return angle_; }

  /// Take-off angle towards a mirror at `height`; `height` > 0.
  [[nodiscard]] Elevation TakeOff(double height) const;

  /// Its cosine alone, for a fraction of the cost.
  [[nodiscard]] double TakeOffCosine(double height) const;

  /// Length of the whole hop's ray, up and down, in km.
  [[nodiscard]] double RayLength(const Elevation& elevation, double height) const;

 private:
  double angle_;
  double sine_;
  double versine_;
};

/// Probability that a standard normal variable exceeds `z`; beyond 5 standard deviations as at 5.
/// Source: Abramowitz and Stegun, Handbook of Mathematical Functions, 26.2.18.
[[nodiscard]] double UpperTail(double z);

/// Day-to-day spread of a maximum usable frequency: its standard deviations below and above the
/// median, relative to the median.
struct MufSpread {
  double lower = 0;
  double upper = 0;
};

/// Fraction of the days, 0 to 1, on which a path whose MUF has the median `median` carries
/// `frequency`.
[[nodiscard]] double SupportedDays(double frequency, double median, const MufSpread& spread);

/// The loss, in dB, that stands for the days without support: -10 log10 of the fraction of days,
/// which counts as `least_fraction` at least.
[[nodiscard]] double SupportLoss(double fraction_of_days, double least_fraction);

}  // namespace skyhop::estimate
