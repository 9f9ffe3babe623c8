#include "estimate/long_path.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>

#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

/// The take-off angles that are tried, degrees.
constexpr std::array<double, 19> kElevations = {0,  .5, 1,  2,  3,  4,  5,  6,  8, 10,
                                                12, 14, 16, 18, 20, 22, 24, 26, 28};

/// The highest of them for a path of `length` km: the longer the path, the flatter the rays.
double HighestElevation(double length, double min_elevation) {
  double top = 8;
  if (length < 14000.0) top = 14;
  if (length < 12000.0) top = 18;
  if (length < 10000.0) top = 28;
  if (top - 10.0 >= min_elevation) return top;
  const auto* const found =
      std::lower_bound(kElevations.begin(), kElevations.end(), min_elevation + 8.5);
  return found == kElevations.end() ? kElevations.back() : *found;
}

std::optional<Ray> TraceE(double frequency, const ReflectionArea& area,
                          const Elevation& elevation) {
  static constexpr int kRounds = 4;
  static constexpr double kTopOfTable = 107.19;
  const double at_top = frequency * IncidenceCosine(elevation.Cosine(), kTopOfTable);
  if (at_top > 0.99 * area.FoE()) return std::nullopt;
  Ray ray{elevation, {125.3, 104.2}, 0};
  for (int round = 0; round < kRounds; ++round) {
    ray.vertical_frequency = frequency * IncidenceCosine(elevation.Cosine(), ray.heights.actual);
    ray.heights = area.EHeights(ray.vertical_frequency);
  }
  ray.vertical_frequency = std::min(ray.vertical_frequency, area.FoE());
  return ray;
}

std::optional<Ray> TraceF2(double frequency, const ReflectionArea& area,
                           const Elevation& elevation) {
  static constexpr int kRounds = 6;
  const double lowest = 1.05 * area.FoE();
  const double highest = 0.99 * area.F2();
  Ray ray{elevation, {0, area.FirstGuess()}, 0};
  double reflected = 0;
  for (int round = 0; round < kRounds; ++round) {
    ray.vertical_frequency = frequency * IncidenceCosine(elevation.Cosine(), ray.heights.actual);
    // The F2 layer cannot reflect this frequency: each further round would raise the ray.
    if (ray.vertical_frequency > highest) return std::nullopt;
    reflected = std::min(std::max(ray.vertical_frequency, lowest), highest);
    ray.heights.actual = area.F2ActualHeight(reflected);
  }
  ray.heights = area.F2Heights(reflected);
  ray.vertical_frequency = std::max(ray.vertical_frequency, lowest);
  ray.heights.apparent += area.CurvatureCorrection(ray.heights, frequency, ray.vertical_frequency);
  return ray;
}

/// The criteria for choosing one of the rays that an end could use.
struct Merit {
  double gain;       // dB over the first 4000 km, negative
  double misfit;     // distance of the number of hops from a whole one
  double steepness;  // distance from the angle of 3 degrees, radians

  [[nodiscard]] bool Beats(const Merit& best) const {
    if (std::abs(gain - best.gain) > 3.0) return gain > best.gain;
    if (std::abs(misfit - best.misfit) > 0.1) return misfit < best.misfit;
    return steepness < best.steepness;
  }
};

double DistanceFromWhole(double number) {
  const double fraction = number - std::floor(number);
  return fraction > 0.5 ? 1.0 - fraction : fraction;
}

}  // namespace

LongPath::LongPath(const PathHour& hour) : hour_(&hour) {
  // Subtract a little: conversion to radians may have rounded up a minimum that equals one of the
  // angles.
  const double least = Degrees(hour.Of().MinElevation().Angle()) - 1e-9;
  const double top = HighestElevation(hour.Of().Length(), least);
  for (const double elevation : kElevations) {
    if (elevation < least || elevation > top) continue;
    elevations_.emplace_back(Radians(elevation));
  }
}

LongPath::End LongPath::MufEnd() const {
  const LayerMuf& muf = hour_->Muf();
  return {muf.ray, hour_->MufLayer(), hour_->Of().Angle() / muf.hops, 0};
}

LongPath::End LongPath::BestEnd(double frequency, const ReflectionArea& area) const {
  const LayerMuf& muf = hour_->Muf();
  const double over_muf = SupportLoss(SupportedDays(frequency, muf.muf, muf.spread), 1e-6);
  const double index = Absorption::IndexOf(area);
  const double frequency_term = Absorption::FrequencyTerm(area, frequency);
  const auto end_loss = [&](const Ray& ray) {
    return hour_->Absorbing().HopLoss(index, frequency_term, area, ray) +
           over_muf * Secant(ray.elevation, ray.heights.actual);
  };

  const double judged_length = std::min(4000.0, hour_->Of().Length());
  std::optional<End> best;
  Merit best_merit{};
  for (const Elevation& elevation : elevations_) {
    End end;
    std::optional<Ray> ray = TraceE(frequency, area, elevation);
    end.layer = ray ? Layer::kE : Layer::kF2;
    if (!ray) ray = TraceF2(frequency, area, elevation);
    if (!ray) continue;
    end.ray = *ray;
    end.hop = 2.0 * HalfHopAngle(elevation, end.ray.heights.apparent);
    const double hops = judged_length / (end.hop * kEarthRadius);
    if (hops < 0.9) continue;
    end.loss = end_loss(end.ray);
    const Merit merit = {-hops * end.loss, DistanceFromWhole(hops),
                         std::abs(elevation.Angle() - Radians(3.0))};
    if (best && !merit.Beats(best_merit)) continue;
    best = end;
    best_merit = merit;
  }
  if (best) return *best;
  End end = MufEnd();
  end.loss = end_loss(end.ray);
  return end;
}

double LongPath::Ducted(double frequency, double middle) const {
  const auto e_muf = [](const ReflectionArea& area) {
    return area.FoE() * Secant(Elevation(Radians(3.0)), 110.0);
  };
  const double first = e_muf(hour_->Areas().front());
  const double last = e_muf(hour_->Areas().back());
  const double low = std::min(first, last);
  const double high = std::max(first, last);
  const double between = e_muf(hour_->Middle());
  if (high >= between || frequency <= high || frequency >= between) return 0;
  const double length = middle * kEarthRadius;
  const double ducted =
      0.5 * length * (between - frequency) * (1.0 / (between - high) + 1.0 / (between - low));
  return ducted >= 1000.0 && length - ducted >= 1000.0 ? ducted / kEarthRadius : 0;
}

double LongPath::Loss(double frequency, const End& transmitter, const End& receiver) const {
  const double path_angle = hour_->Of().Angle();
  const Elevation elevation((transmitter.ray.elevation.Angle() + receiver.ray.elevation.Angle()) /
                            2.0);
  const double height = (transmitter.ray.heights.apparent + receiver.ray.heights.apparent) / 2.0;
  const double incidence = std::asin(kEarthRadius * elevation.Cosine() / (kEarthRadius + height));
  const double half_hop = std::numbers::pi / 2 - elevation.Angle() - incidence;

  const double slant = kEarthRadius * std::sin(half_hop) / std::sin(incidence);
  const double length =
      2.0 * slant + (kEarthRadius + height) * std::max(0.001, path_angle - 2.0 * half_hop);
  const double focus = std::min(15.0, Decibels(length / kEarthRadius * elevation.Cosine() /
                                               std::max(1e-6, std::abs(std::sin(path_angle)))));

  const double ends = (transmitter.hop + receiver.hop) / 2.0;
  double middle = std::max(0.0, path_angle - ends);
  const double ducted = Ducted(frequency, middle);
  middle -= ducted;
  const double index = hour_->Absorbing().MeanIndex() * middle + 0.1 * ducted;
  const double frequency_term = Absorption::FrequencyTerm(hour_->Middle(), frequency);
  const double absorption =
      Absorption::Vertical(frequency_term) * index * 0.5 / half_hop * Secant(elevation, 100.0);

  const GroundReflection& ground = hour_->Of().Ground();
  const double reflection = (ground.Loss(frequency, transmitter.ray.elevation) +
                             ground.Loss(frequency, receiver.ray.elevation)) /
                            2.0;
  return 36.58 + 20.0 * std::log10(0.6214 * length * frequency) - focus +
         (transmitter.loss + receiver.loss) / 2.0 + absorption +
         (std::max(1.0, middle / ends) - 1.0) * reflection + hour_->Excess().median;
}

RaySignal LongPath::Signal(double frequency) const {
  const End transmitter = BestEnd(frequency, hour_->Areas().front());
  const End receiver = BestEnd(frequency, hour_->Areas().back());

  const LayerMuf& muf = hour_->Muf();
  const auto over_muf = [&](double median) {
    return SupportLoss(SupportedDays(frequency, median, muf.spread), 1e-6);
  };
  const double hops =
      std::max(1.0, 0.5 * hour_->Of().Angle() / ((transmitter.hop + receiver.hop) / 2.0));
  const double weight = hops * muf.muf / muf.critical_frequency;

  RaySignal signal;
  signal.level.power = -Loss(frequency, transmitter, receiver);
  signal.level.lower_decile =
      std::min(kWidestDecile,
               hour_->Excess().lower_decile + weight * (over_muf(muf.fot) - over_muf(muf.muf)));
  signal.level.upper_decile =
      std::min(kWidestDecile,
               hour_->Excess().upper_decile + weight * (over_muf(muf.muf) - over_muf(muf.hpf)));
  signal.elevation = transmitter.ray.elevation.Angle();
  signal.days = SupportedDays(frequency, muf.muf, muf.spread);
  signal.first = transmitter.layer;
  signal.last = receiver.layer;
  return signal;
}

}  // namespace skyhop::estimate
