#include "estimate/short_path.h"

#include <algorithm>
#include <cmath>

#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

/// Tolerance for the rounding of a ray that leaves exactly at the minimum angle.
constexpr double kAngleSlack = 1e-9;

/// The sum includes rays with up to this many hops more than the fewest possible.
constexpr int kExtraHops = 2;

/// Extra loss of a ray that no layer reflects, dB.
double ScatterLoss(double days) {
  if (days >= 1e-4) return 0.0;
  return -8.0 * (std::max(-7.0, std::log10(std::max(days, 1e-9))) + 4.0);
}

}  // namespace

ShortPath::ShortPath(const PathHour& hour) : hour_(&hour) {
  const LayerMuf& e = hour.E();
  const LayerMuf& f2 = hour.F2();
  const int most = std::max(f2.hops, e.hops) + 4;
  hops_.reserve(static_cast<std::size_t>(most) - static_cast<std::size_t>(f2.hops) + 1);
  for (int count = f2.hops; count <= most; ++count) {
    const HalfHop half(hour.Of().Angle() / (2.0 * count));
    hops_.push_back({count, half, EHopMuf(hour.Controlling(), half), hour.F2Hops().For(half)});
  }
}

bool ShortPath::Leaves(const Ray& ray) const {
  return ray.elevation.Angle() >= hour_->Of().MinElevation().Angle() - kAngleSlack;
}

Ray ShortPath::TraceE(double frequency, const Hops& hops) const {
  static constexpr int kRounds = 6;
  const ReflectionArea& area = hour_->Controlling();
  Ray ray{{}, kELayerAtMuf, 0};
  for (int round = 0;; ++round) {
    const double cosine = hops.half.TakeOffCosine(ray.heights.apparent);
    ray.vertical_frequency = frequency * IncidenceCosine(cosine, ray.heights.actual);
    if (round == kRounds) break;
    ray.heights = area.EHeights(ray.vertical_frequency);
  }
  ray.elevation = hops.half.TakeOff(ray.heights.apparent);
  return ray;
}

Ray ShortPath::TraceF2(double frequency, const Hops& hops) const {
  static constexpr int kRounds = 8;
  const ReflectionArea& area = hour_->Controlling();
  const double critical = hour_->F2Hops().CriticalFrequency();
  Ray ray{{}, {area.ApparentHeight(), area.FirstGuess()}, 0};
  for (int round = 0;; ++round) {
    const double cosine = hops.half.TakeOffCosine(ray.heights.apparent);
    ray.vertical_frequency =
        std::min(frequency * IncidenceCosine(cosine, ray.heights.actual), critical);
    if (round == kRounds) break;
    Heights next = area.F2Heights(std::max(ray.vertical_frequency, 1.05 * area.FoE()));
    next.apparent += area.CurvatureCorrection(next, frequency, ray.vertical_frequency);
    // Halfway only: the full step would overshoot near the layer's peak.
    ray.heights = {(ray.heights.apparent + next.apparent) / 2.0, next.actual};
  }
  ray.elevation = hops.half.TakeOff(ray.heights.apparent);
  return ray;
}

void ShortPath::AddE(double frequency, const Hops& hops, std::vector<Candidate>& candidates) const {
  static constexpr double kScatterReach = 1.5;
  if (hops.count < hour_->E().hops) return;
  if (frequency <= hops.e.frequency) {
    const Ray ray = TraceE(frequency, hops);
    if (Leaves(ray)) candidates.push_back({&hops, Layer::kE, ray, true});
  } else if (hops.count == hour_->E().hops && frequency < kScatterReach * hops.e.frequency) {
    candidates.push_back({&hops, Layer::kE, hops.e.ray, false});
  }
}

void ShortPath::AddF2(double frequency, const Hops& hops,
                      std::vector<Candidate>& candidates) const {
  static constexpr double kScreening = 1.02;
  if (frequency > hops.f2.frequency) {
    candidates.push_back({&hops, Layer::kF2, hops.f2.ray, false});
    return;
  }
  const Ray ray = TraceF2(frequency, hops);
  const bool screened = ray.vertical_frequency <= kScreening * hour_->Controlling().FoE();
  if (Leaves(ray) && !screened) candidates.push_back({&hops, Layer::kF2, ray, true});
}

std::vector<ShortPath::Candidate> ShortPath::Candidates(double frequency) const {
  std::vector<Candidate> candidates;
  candidates.reserve(8);
  int least_real = 0;
  for (const Hops& hops : hops_) {
    const std::size_t known = candidates.size();
    AddE(frequency, hops, candidates);
    AddF2(frequency, hops, candidates);
    const auto real = [](const Candidate& candidate) { return candidate.real; };
    if (least_real == 0 && std::any_of(candidates.begin() + static_cast<std::ptrdiff_t>(known),
                                       candidates.end(), real)) {
      least_real = hops.count;
    }
    if (least_real != 0 && hops.count >= least_real + kExtraHops) break;
  }
  const int least = least_real != 0 ? least_real : hour_->F2().hops;
  std::erase_if(candidates, [least](const Candidate& candidate) {
    return candidate.hops->count > least + kExtraHops;
  });
  if (candidates.empty()) {
    candidates.push_back({&hops_.front(), Layer::kF2, hops_.front().f2.ray, false});
  }
  return candidates;
}

RaySignal ShortPath::SignalOf(double frequency, const Candidate& candidate) const {
  const bool by_e = candidate.layer == Layer::kE;
  const LayerMuf& layer = by_e ? hour_->E() : hour_->F2();
  const HopMuf& hop_muf = by_e ? candidate.hops->e : candidate.hops->f2;
  const Ray& ray = candidate.ray;
  const int hops = candidate.hops->count;
  const ReflectionArea& area = hour_->Controlling();
  const double secant = Secant(ray.elevation, ray.heights.actual);

  // Loss from the days on which the layer does not carry this ray; `level` is the MUF, FOT or HPF.
  const auto over_muf = [&](double level) {
    const double median = layer.critical_frequency / layer.muf * level * secant;
    return SupportLoss(SupportedDays(frequency, median, layer.spread), 1e-6) * secant;
  };
  const double at_muf = over_muf(layer.muf);
  const double days = SupportedDays(frequency, hop_muf.frequency, layer.spread);
  const double length = hops * candidate.hops->half.RayLength(ray.elevation, ray.heights.apparent);
  const Absorption& absorption = hour_->Absorbing();

  double loss = 32.45 + 20.0 * std::log10(length * frequency);
  loss += hops * absorption.HopLoss(absorption.MeanIndex(),
                                    Absorption::FrequencyTerm(area, frequency), area, ray);
  if (hops > 1) loss += (hops - 1) * hour_->Of().Ground().Loss(frequency, ray.elevation);
  loss += hour_->Excess().median + hops * at_muf + ScatterLoss(days);

  RaySignal signal;
  signal.level.power = -loss;
  signal.level.lower_decile =
      std::min(kWidestDecile, hour_->Excess().lower_decile + hops * (over_muf(layer.fot) - at_muf));
  signal.level.upper_decile =
      std::min(kWidestDecile, hour_->Excess().upper_decile + hops * (at_muf - over_muf(layer.hpf)));
  signal.elevation = ray.elevation.Angle();
  signal.days = days;
  signal.hops = hops;
  signal.first = signal.last = candidate.layer;
  return signal;
}

std::vector<RaySignal> ShortPath::Rays(double frequency) const {
  const std::vector<Candidate> candidates = Candidates(frequency);
  std::vector<RaySignal> rays;
  rays.reserve(candidates.size());
  for (const Candidate& candidate : candidates) rays.push_back(SignalOf(frequency, candidate));
  return rays;
}

}  // namespace skyhop::estimate
