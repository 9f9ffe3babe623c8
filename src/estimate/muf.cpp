#include "estimate/muf.h"

#include <algorithm>
#include <cmath>

#include "estimate/muf_spread.h"

namespace skyhop::estimate {
namespace {

constexpr double kMostHops = 500;

LayerMuf PathMuf(const HopMuf& hop, double critical_frequency, const MufSpread& spread, int hops) {
  return {.muf = hop.frequency,
          .fot = hop.frequency * (1.0 - kDecile * spread.lower),
          .hpf = hop.frequency * (1.0 + kDecile * spread.upper),
          .spread = spread,
          .critical_frequency = critical_frequency,
          .hops = hops,
          .ray = hop.ray};
}

HalfHop HalfHopOf(double path_angle, int hops) {
  return HalfHop(path_angle / (2.0 * hops));
}

}  // namespace

int LeastHops(double path_angle, const Elevation& min_elevation, double height) {
  const double longest = 2.0 * HalfHopAngle(min_elevation, height);
  if (longest * kMostHops <= path_angle) return static_cast<int>(kMostHops);
  return static_cast<int>(path_angle / longest) + 1;
}

HopMuf EHopMuf(const ReflectionArea& area, const HalfHop& hop) {
  // A parabola of 20 km below its peak at 110 km.
  const double critical = area.FoE() / std::sqrt(1.0 + 0.5 / 5.5);
  const Elevation elevation = hop.TakeOff(kELayerAtMuf.apparent);
  return {critical * Secant(elevation, kELayerAtMuf.actual), {elevation, kELayerAtMuf, critical}};
}

F2HopMuf::F2HopMuf(const ReflectionArea& area, double path_length) : f2_(area.F2()) {
  double share = 1.0 / std::sqrt(1.0 + 0.5 * area.SemiThickness() / area.PeakHeight());
  if (path_length < 2000.0) {
    share *= 1.0 + (1.0 / share - 1.0) * std::exp(-9.5 * path_length / 2000.0);
  }
  critical_ = share * f2_;
  heights_ = area.F2Heights(critical_);
}

HopMuf F2HopMuf::For(const HalfHop& hop) const {
  static constexpr int kMostRounds = 4;
  static constexpr double kCloseEnough = 0.1;  // MHz
  const double excess = (heights_.apparent - heights_.actual) / kEarthRadius;
  const double curvature =
      excess * (heights_.actual + 2.0 * (kEarthRadius + heights_.actual) * excess);
  HopMuf muf;
  double cosine = hop.TakeOffCosine(heights_.apparent);
  muf.ray = {{}, heights_, critical_};
  muf.frequency = critical_ / IncidenceCosine(cosine, heights_.actual);
  for (int round = 0; round < kMostRounds; ++round) {
    const double sine = kEarthRadius * cosine / (kEarthRadius + heights_.actual);
    muf.ray.heights.apparent =
        heights_.apparent + Square(muf.frequency / f2_) * Square(sine) * curvature;
    cosine = hop.TakeOffCosine(muf.ray.heights.apparent);
    const double last = muf.frequency;
    muf.frequency = critical_ / IncidenceCosine(cosine, heights_.actual);
    if (std::abs(muf.frequency - last) < kCloseEnough) break;
  }
  muf.ray.elevation = hop.TakeOff(muf.ray.heights.apparent);
  return muf;
}

LayerMuf EPathMuf(const ReflectionArea& area, double path_angle, const Elevation& min_elevation) {
  const int hops = LeastHops(path_angle, min_elevation, kELayerAtMuf.apparent);
  const HopMuf hop = EHopMuf(area, HalfHopOf(path_angle, hops));
  return PathMuf(hop, hop.ray.vertical_frequency, kEMufSpread, hops);
}

LayerMuf F2PathMuf(const F2HopMuf& hops, const MufSpread& spread, double path_angle,
                   const Elevation& min_elevation) {
  const int count = LeastHops(path_angle, min_elevation, hops.CriticalHeights().apparent);
  return PathMuf(hops.For(HalfHopOf(path_angle, count)), hops.CriticalFrequency(), spread, count);
}

}  // namespace skyhop::estimate
