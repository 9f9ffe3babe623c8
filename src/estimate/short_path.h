#pragma once

#include <vector>

#include "estimate/path.h"
#include "estimate/signal.h"

namespace skyhop::estimate {

/// Signals over a path shorter than 10000 km: the sum of rays with whole numbers of equal hops,
/// each reflected by one layer as it is at the controlling end.
class ShortPath {
 public:
  /// The hour must outlive this object.
  explicit ShortPath(const PathHour& hour);

  /// The rays that carry `frequency`, MHz, at least one. When the layers carry none, a ray over the
  /// MUF, with its scatter loss, stands for it.
  [[nodiscard]] std::vector<RaySignal> Rays(double frequency) const;

 private:
  /// A number of hops and what each layer carries with it.
  struct Hops {
    int count;
    HalfHop half;
    HopMuf e;
    HopMuf f2;
  };

  /// A ray that may carry the signal.
  struct Candidate {
    const Hops* hops;
    Layer layer;
    Ray ray;
    bool real;  // reflected, not scattered above the MUF
  };

  [[nodiscard]] std::vector<Candidate> Candidates(double frequency) const;
  [[nodiscard]] bool Leaves(const Ray& ray) const;
  [[nodiscard]] Ray TraceE(double frequency, const Hops& hops) const;
  [[nodiscard]] Ray TraceF2(double frequency, const Hops& hops) const;
  void AddE(double frequency, const Hops& hops, std::vector<Candidate>& candidates) const;
  void AddF2(double frequency, const Hops& hops, std::vector<Candidate>& candidates) const;
  [[nodiscard]] RaySignal SignalOf(double frequency, const Candidate& candidate) const;

  const PathHour* hour_;
  std::vector<Hops> hops_;
};

}  // namespace skyhop::estimate
