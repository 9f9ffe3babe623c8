#include "estimate/ionosphere.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

#include "estimate/ionosphere_tables.h"
#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

double SunspotFactor(double sunspot_number) {
  return std::clamp(sunspot_number, 0.0, 200.0) / 100.0;
}

/// Position of the month's middle in the year, from the winter solstice.
double SolarYearAngle(int month) {
  return 2.0 * std::numbers::pi * ((month - 0.5) * 30.4 + 10.0) / 365.25;
}

/// 1, cos, sin of the angle and of its double.
std::array<double, 5> SecondHarmonics(double angle) {
  return {1.0, std::cos(angle), std::sin(angle), std::cos(2 * angle), std::sin(2 * angle)};
}

/// Powers of the sine of the modified dip, latitude, and bells over the magnetic equator and the
/// crests on both sides of it.
std::array<double, 14> DipFunctions(double modified_dip, double latitude) {
  const double x = std::sin(modified_dip);
  const double sl = std::sin(latitude);
  const auto bell = [degrees = Degrees(modified_dip)](double centre, double width) {
    return std::exp(-Square((degrees - centre) / width));
  };
  const double x2 = x * x;
  const double x4 = x2 * x2;
  return {1.0, x,       x2,     x2 * x,      x4,           x4 * x,        x4 * x2,
          sl,  sl * sl, sl * x, bell(0, 12), bell(28, 12), bell(-28, 12), bell(0, 30)};
}

std::array<double, 6> LatitudeFunctions(double latitude, double declination_factor) {
  const double sl = std::sin(latitude);
  return {1.0,
          sl * sl,
          std::abs(sl),
          sl * declination_factor,
          declination_factor,
          Square(declination_factor)};
}

/// A smooth step from night (0) to day (1).
double Daylight(double steepness, double cosine_of_zenith) {
  return 1.0 / (1.0 + std::exp(-steepness * cosine_of_zenith));
}

template <class Sums, class Times, class Zeniths>
double Evaluate(const Sums& sums, const Times& times, const Zeniths& zeniths) {
  double total = 0;
  for (std::size_t t = 0; t < times.size(); ++t) {
    double row = 0;
    for (std::size_t z = 0; z < zeniths.size(); ++z) row += sums[t][z] * zeniths[z];
    total += row * times[t];
  }
  return total;
}

template <std::size_t N>
double Product(const std::array<double, N>& a, const std::array<double, N>& b) {
  double sum = 0;
  for (std::size_t i = 0; i < N; ++i) sum += a[i] * b[i];
  return sum;
}

}  // namespace

Ionosphere::Ionosphere(const GeoPosition& position, const MagneticField& field, int month,
                       double sunspot_number)
    : longitude_(position.longitude) {
  const double declination_factor = -std::cos(SolarYearAngle(month));
  const double declination = Radians(23.44) * declination_factor;
  zenith_constant_ = std::sin(position.latitude) * std::sin(declination);
  zenith_amplitude_ = std::cos(position.latitude) * std::cos(declination);

  const double activity = SunspotFactor(sunspot_number);
  least_foe_ = 0.36 * std::sqrt(1.0 + 0.98 * activity);

  const auto season = SecondHarmonics(2.0 * std::numbers::pi * (month - 1) / 12.0);
  const auto longitude = SecondHarmonics(position.longitude);
  const auto dip = DipFunctions(field.modified_dip, position.latitude);
  const std::array<double, 2> centred_activity = {1.0, activity - 0.85};
  const auto fold_f2 = [&](std::span<const F2Term> map, F2Sums& sums) {
    for (const F2Term& term : map) {
      sums[term.time][term.zenith] += term.coefficient * season[term.season] * dip[term.dip] *
                                      centred_activity[term.activity] * longitude[term.longitude];
    }
  };
  fold_f2(kF2Map, log_f2_);
  fold_f2(kM3000Map, m3000_);

  const auto latitude = LatitudeFunctions(position.latitude, declination_factor);
  const auto fold_solar = [&](std::span<const SolarTerm> map, std::array<double, kDays>& sums) {
    for (const SolarTerm& term : map) {
      sums[term.day] +=
          term.coefficient * (term.activity == 1 ? activity : 1.0) * latitude[term.latitude];
    }
  };
  fold_solar(kFoEMap, foe_);
  fold_solar(kHeightRatioMap, height_ratio_);
}

double Ionosphere::CosineOfZenith(double hour_angle) const {
  return zenith_constant_ - zenith_amplitude_ * std::cos(hour_angle);
}

IonosphereState Ionosphere::At(double utc_hour) const {
  IonosphereState state;
  state.local_time = LocalTime(utc_hour, longitude_);
  const double t = HourAngle(state.local_time);
  const double cosine = std::cos(t);
  const double sine = std::sin(t);
  const double zenith = CosineOfZenith(t);
  // The F2 layer follows the sun with a delay.
  const double earlier_zenith = CosineOfZenith(t - HourAngle(2.0));

  const std::array<double, kTimes> times = {
      1.0, cosine, sine, std::cos(2 * t), std::sin(2 * t), std::cos(3 * t), std::sin(3 * t)};
  const std::array<double, kZeniths> zeniths = {1.0, zenith, Daylight(8.0, zenith),
                                                Daylight(6.0, earlier_zenith)};
  state.f2 = std::clamp(std::exp(Evaluate(log_f2_, times, zeniths)), 1.2, 25.0);
  state.m3000 = std::clamp(Evaluate(m3000_, times, zeniths), 1.8, 4.2);

  const double sunlight = std::sqrt(std::log1p(std::exp(8.0 * zenith)) / 8.0);
  const std::array<double, kDays> days = {1.0, sunlight, zenith, zenith * zenith, cosine, sine};
  state.foe = std::max(Product(foe_, days), least_foe_);
  state.height_ratio = std::clamp(Product(height_ratio_, days), 2.0, 5.3);
  return state;
}

}  // namespace skyhop::estimate
