#include "beacon/selection.h"

#include <algorithm>
#include <vector>

namespace skyhop::BeaconModule {
namespace {

bool IsSelected(const Selection& selection, const std::string& call, std::size_t frequency,
                const BeaconFacts& facts) {
  switch (selection.by) {
    case Selection::By::kBand:
      return frequency == selection.frequency;
    case Selection::By::kCall:
      return call == selection.call;
    case Selection::By::kOctant:
      break;
  }
  return facts.octant(call) == selection.octant && facts.on_air(call);
}

}  // namespace

std::optional<Transmission> TargetAt(const Schedule& schedule, const Selection& selection,
                                     UtcTime time, const BeaconFacts& facts) {
  const Slot slot = schedule.At(time);
  const std::vector<std::string>& calls = schedule.Table().slots[slot.index];
  std::vector<std::size_t> candidates;
  for (std::size_t frequency = 0; frequency < calls.size(); ++frequency) {
    const std::string& call = calls[frequency];
    if (!call.empty() && IsSelected(selection, call, frequency, facts)) {
      candidates.push_back(frequency);
    }
  }
  if (candidates.empty()) return std::nullopt;
  const auto worse = [&](std::size_t a, std::size_t b) {
    const int level_a = facts.open_level(calls[a], a);
    const int level_b = facts.open_level(calls[b], b);
    if (level_a != level_b) return level_a < level_b;
    return schedule.Table().frequencies[a] > schedule.Table().frequencies[b];
  };
  const std::size_t best = *std::max_element(candidates.begin(), candidates.end(), worse);
  return Transmission{calls[best], best, slot.begin, slot.end};
}

}  // namespace skyhop::BeaconModule
