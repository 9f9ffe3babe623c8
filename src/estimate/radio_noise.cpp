#include "estimate/radio_noise.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <span>

#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

/// Thermal noise in 1 Hz at the reference temperature, dB below 1 W.
constexpr double kThermalNoise = 204.0;

/// Standard deviations between the median and a decile, as precisely as the noise sum takes it.
constexpr double kNormalDecile = 1.282;

/// One term of the map of atmospheric noise: the index of its basis function in each of the
/// families time of day, latitude, season, longitude and frequency, and the coefficient in dB.
struct NoiseTerm {
  std::uint8_t time;
  std::uint8_t latitude;
  std::uint8_t season;
  std::uint8_t longitude;
  std::uint8_t order;
  double coefficient;
};

constexpr std::array<NoiseTerm, 48> kAtmosphericMap = {{
    {0, 0, 0, 0, 0, 45.60},  {0, 0, 0, 0, 3, -21.02}, {1, 0, 0, 0, 0, 11.41},
    {1, 0, 0, 0, 1, -35.90}, {0, 2, 0, 0, 0, -17.57}, {0, 0, 0, 0, 1, -25.05},
    {0, 0, 0, 0, 2, -25.38}, {0, 2, 0, 0, 1, 21.11},  {3, 0, 0, 0, 0, -2.65},
    {1, 0, 0, 0, 3, 65.50},  {2, 0, 0, 0, 0, -0.86},  {0, 0, 0, 6, 0, 1.21},
    {1, 0, 0, 0, 2, -14.56}, {3, 0, 0, 0, 1, 3.15},   {0, 0, 0, 1, 0, 1.08},
    {0, 0, 0, 3, 0, -1.06},  {1, 4, 0, 0, 0, -6.66},  {0, 1, 0, 3, 0, -4.19},
    {2, 0, 0, 1, 0, -1.33},  {0, 4, 1, 0, 0, -5.40},  {2, 0, 0, 0, 1, -9.42},
    {2, 0, 0, 0, 3, 36.38},  {0, 0, 1, 3, 0, 1.11},   {0, 1, 0, 5, 0, 3.45},
    {1, 1, 1, 0, 0, -1.73},  {2, 0, 0, 0, 2, -7.82},  {0, 4, 0, 2, 0, 5.17},
    {0, 0, 0, 2, 0, 2.26},   {0, 2, 0, 2, 0, -8.78},  {0, 0, 1, 1, 0, -0.86},
    {0, 3, 0, 1, 0, 2.03},   {1, 4, 0, 0, 3, 36.23},  {0, 3, 0, 4, 0, 6.31},
    {3, 4, 0, 0, 0, 3.29},   {0, 3, 0, 3, 0, 4.94},   {0, 0, 1, 0, 0, 0.70},
    {0, 1, 0, 4, 0, -2.63},  {0, 0, 0, 4, 0, -1.60},  {0, 2, 0, 4, 0, 3.62},
    {0, 3, 1, 0, 0, 7.71},   {0, 1, 1, 0, 0, -3.57},  {0, 3, 1, 0, 1, -11.78},
    {0, 0, 0, 6, 1, -1.52},  {0, 3, 0, 5, 0, -4.04},  {0, 1, 1, 6, 0, -1.32},
    {0, 1, 0, 0, 0, 0.65},   {0, 1, 1, 0, 3, 17.50},  {0, 1, 1, 1, 0, 1.27},
}};

/// A source of noise: its median factor in dB above thermal noise and the distances of its deciles.
struct Source {
  double median;
  double upper;
  double lower;
};

struct LogNormal {
  double log_mean;  // natural logarithm of the mean power
  double variance;  // of the natural logarithm
};

/// The log-normal power with the mean and the variance of the sum of the sources, which are taken
/// to be symmetric with the given decile.
LogNormal Sum(std::span<const Source> sources, double Source::*decile) {
  double mean = 0;
  double variance = 0;
  for (const Source& source : sources) {
    const double sigma = source.*decile / (kNormalDecile * kDecibelsPerNeper);
    const double power = std::exp(Square(sigma) / 2.0 + source.median / kDecibelsPerNeper);
    mean += power;
    variance += Square(power) * std::expm1(Square(sigma));
  }
  return {std::log(mean), std::log1p(variance / Square(mean))};
}

double DecileOf(const LogNormal& sum) {
  return kNormalDecile * kDecibelsPerNeper * std::sqrt(sum.variance);
}

}  // namespace

NoiseLevel HourNoise::At(double frequency, double screening_frequency) const {
  const double log_frequency = std::log10(frequency);
  const double log_hf = std::min(log_frequency, 1.301);
  const double x = std::log10(std::min(frequency, 30.0)) - 0.8;
  const double atmospheric =
      atmospheric_[0] + x * (atmospheric_[1] + x * (atmospheric_[2] + x * atmospheric_[3]));
  const std::array<Source, 3> sources = {
      {{atmospheric, 14.3 - 6.8 * log_hf, 12.1 - 6.1 * log_hf},
       {kThermalNoise - man_made_ + 13.22 - 27.7 * log_frequency, 9.7, 6.0},
       {52.0 - 23.0 * log_frequency, 2.0, 2.0}}};
  // The ionosphere keeps galactic noise of lower frequencies out.
  const std::size_t count = frequency > screening_frequency ? 3 : 2;
  const std::span<const Source> heard = std::span(sources).first(count);
  const LogNormal upper = Sum(heard, &Source::upper);
  const LogNormal lower = Sum(heard, &Source::lower);
  return {kDecibelsPerNeper * (upper.log_mean - upper.variance / 2.0) - kThermalNoise,
          DecileOf(upper), DecileOf(lower)};
}

RadioNoise::RadioNoise(const GeoPosition& receiver, int month, double man_made)
    : longitude_(receiver.longitude), man_made_(man_made) {
  const double sl = std::sin(receiver.latitude);
  const double season = 2.0 * std::numbers::pi * (month - 1) / 12.0;
  const double lon = receiver.longitude;
  const std::array<double, 5> latitudes = {1.0, sl, sl * sl, sl * sl * sl, Square(sl * sl)};
  const std::array<double, 3> seasons = {1.0, std::cos(season), std::sin(season)};
  const std::array<double, 7> longitudes = {1.0,
                                            std::cos(lon),
                                            std::sin(lon),
                                            std::cos(2 * lon),
                                            std::sin(2 * lon),
                                            std::cos(3 * lon),
                                            std::sin(3 * lon)};
  for (const NoiseTerm& term : kAtmosphericMap) {
    atmospheric_[term.time][term.order] += term.coefficient * latitudes[term.latitude] *
                                           seasons[term.season] * longitudes[term.longitude];
  }
}

HourNoise RadioNoise::At(double utc_hour) const {
  const double t = HourAngle(LocalTime(utc_hour, longitude_));
  const std::array<double, kHarmonics> harmonics = {1.0, std::cos(t), std::sin(t), std::cos(2 * t),
                                                    std::sin(2 * t)};
  std::array<double, HourNoise::kOrders> orders{};
  for (std::size_t h = 0; h < kHarmonics; ++h) {
    for (std::size_t o = 0; o < orders.size(); ++o) {
      orders[o] += harmonics[h] * atmospheric_[h][o];
    }
  }
  return {orders, man_made_};
}

}  // namespace skyhop::estimate
