#include "estimate/circuit.h"

#include <algorithm>
#include <cmath>

#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

/// Paths of up to the first length, km, are computed by rays, from the second on without whole
/// hops; between them the two results are blended.
constexpr double kRaysOnly = 7000.0;
constexpr double kNoRays = 10000.0;

/// Sum of powers in dB, each of them `level(ray)`; at least one ray. Relative to the strongest, so
/// that a level of thousands of dB below 1 W does not vanish.
template <class Level>
double PowerSum(const std::vector<RaySignal>& rays, const Level& level) {
  double strongest = level(rays.front().level);
  for (const RaySignal& ray : rays) strongest = std::max(strongest, level(ray.level));
  double sum = 0;
  for (const RaySignal& ray : rays) {
    sum += std::exp((level(ray.level) - strongest) / kDecibelsPerNeper);
  }
  return strongest + kDecibelsPerNeper * std::log(sum);
}

SignalLevel Total(const std::vector<RaySignal>& rays) {
  if (rays.size() == 1) return rays.front().level;
  const auto width = [](double decibels) { return std::clamp(std::abs(decibels), 0.2, 30.0); };
  const double power = PowerSum(rays, [](const SignalLevel& level) { return level.power; });
  const double low =
      PowerSum(rays, [](const SignalLevel& level) { return level.power - level.lower_decile; });
  const double high =
      PowerSum(rays, [](const SignalLevel& level) { return level.power + level.upper_decile; });
  return {power, width(power - low), width(high - power)};
}

const char* LayerName(Layer layer) {
  return layer == Layer::kE ? "E" : "F2";
}

}  // namespace

std::string ModeText(const RaySignal& ray) {
  if (ray.hops > 0) return std::to_string(ray.hops) + LayerName(ray.first);
  return std::string(LayerName(ray.first)) + LayerName(ray.last);
}

CircuitHour::CircuitHour(const CircuitParameters& parameters, const Path& path,
                         const RadioNoise& noise, double utc_hour)
    : parameters_(&parameters),
      radiated_power_(Decibels(1000.0 * parameters.power) + parameters.antenna_gain),
      hour_(path, utc_hour),
      noise_(noise.At(utc_hour)) {
  if (path.Length() < kNoRays) short_path_.emplace(hour_);
  if (path.Length() >= kRaysOnly) long_path_.emplace(hour_);
}

HourMuf CircuitHour::Muf() const {
  const LayerMuf& e = hour_.E();
  const LayerMuf& f2 = hour_.F2();
  return {std::max(e.fot, f2.fot), std::max(e.muf, f2.muf), std::max(e.hpf, f2.hpf)};
}

double CircuitHour::Reliability(double snr, const SignalLevel& signal,
                                const NoiseLevel& noise) const {
  const double lower = std::hypot(noise.upper_decile, signal.lower_decile);
  const double upper = std::hypot(noise.lower_decile, signal.upper_decile);
  const double missing = parameters_->required_snr - snr;
  const double decile = missing <= 0 ? lower : std::clamp(upper, 0.2, 30.0);
  return UpperTail(missing / (decile / kDecile));
}

RaySignal CircuitHour::Reported(const std::vector<RaySignal>& rays, const NoiseLevel& noise) const {
  static constexpr double kAboutAsReliable = 0.05;
  std::vector<double> reliability(rays.size());
  for (std::size_t i = 0; i < rays.size(); ++i) {
    const double snr = radiated_power_ + rays[i].level.power - noise.median;
    reliability[i] = Reliability(snr, rays[i].level, noise);
  }
  auto chosen = static_cast<std::size_t>(std::max_element(reliability.begin(), reliability.end()) -
                                         reliability.begin());
  for (std::size_t i = 0; i < rays.size(); ++i) {
    if (reliability[chosen] - reliability[i] >= kAboutAsReliable) continue;
    const bool simpler = rays[i].hops < rays[chosen].hops;
    const bool stronger =
        rays[i].hops == rays[chosen].hops && rays[i].level.power > rays[chosen].level.power;
    if (simpler || stronger) chosen = i;
  }
  return rays[chosen];
}

Reception CircuitHour::Receive(const RaySignal& reported, const SignalLevel& signal,
                               const NoiseLevel& noise) const {
  Reception reception;
  reception.ray = reported;
  reception.signal_power = radiated_power_ + signal.power;
  reception.noise_power = noise.median;
  reception.snr = reception.signal_power - noise.median;
  reception.reliability = Reliability(reception.snr, signal, noise);
  return reception;
}

Reception CircuitHour::At(double frequency) const {
  const NoiseLevel noise = noise_.At(frequency, hour_.Areas().back().F2());
  if (!short_path_) {
    const RaySignal by_ends = long_path_->Signal(frequency);
    return Receive(by_ends, by_ends.level, noise);
  }
  const std::vector<RaySignal> rays = short_path_->Rays(frequency);
  const SignalLevel total = Total(rays);
  if (!long_path_) return Receive(Reported(rays, noise), total, noise);

  RaySignal by_ends = long_path_->Signal(frequency);
  const double low_by_rays = total.power - total.lower_decile;
  const double gain = by_ends.level.power - by_ends.level.lower_decile - low_by_rays;
  if (gain < 0) return Receive(Reported(rays, noise), total, noise);
  const double weight = (hour_.Of().Length() - kRaysOnly) / (kNoRays - kRaysOnly);
  by_ends.level.power =
      low_by_rays + Decibels(weight * (std::pow(10.0, std::min(gain, 375.0) / 10.0) - 1.0) + 1.0) +
      by_ends.level.lower_decile;
  return Receive(by_ends, by_ends.level, noise);
}

std::optional<double> CircuitHour::Luf() const {
  static constexpr double kLowest = 2.0;
  static constexpr double kStep = 0.5;
  static constexpr double kHighest = 40.0;
  const double last = std::min(kHighest, Muf().hpf);
  double frequency = kLowest;
  double before = 0;
  while (frequency <= last) {
    const double reliability = At(frequency).reliability;
    if (reliability >= parameters_->required_reliability) {
      if (frequency == kLowest) return kLowest;
      const double share = (parameters_->required_reliability - before) / (reliability - before);
      return frequency - kStep + kStep * share;
    }
    before = reliability;
    frequency += kStep;
  }
  return std::nullopt;
}

Circuit::Circuit(const CircuitParameters& parameters)
    : parameters_(parameters),
      route_(parameters.transmitter, parameters.receiver, parameters.long_way),
      path_(route_, parameters.month, parameters.sunspot_number,
            Elevation(parameters.min_elevation)),
      noise_(parameters.receiver, parameters.month, parameters.man_made_noise) {}

CircuitHour Circuit::At(double utc_hour) const {
  return {parameters_, path_, noise_, utc_hour};
}

}  // namespace skyhop::estimate
