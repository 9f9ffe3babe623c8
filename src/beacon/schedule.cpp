#include "beacon/schedule.h"

#include <algorithm>
#include <chrono>

namespace skyhop::BeaconModule {

using std::chrono::days;

Slot Schedule::At(UtcTime time) const {
  const UtcTime midnight = std::chrono::floor<days>(time);
  const auto number = (time - midnight) / table_.slot;
  const UtcTime begin = midnight + number * table_.slot;
  return {static_cast<std::size_t>(number) % table_.slots.size(), begin,
          std::min<UtcTime>(begin + table_.slot, midnight + days(1))};
}

const std::string& Schedule::CallOn(std::size_t frequency, UtcTime time) const {
  return table_.slots.at(At(time).index).at(frequency);
}

std::vector<Transmission> Schedule::Following(std::size_t frequency, UtcTime time,
                                              std::size_t count) const {
  std::vector<Transmission> found;
  // One cycle more, as midnight may cut one off.
  const std::size_t last = (count + 1) * table_.slots.size();
  Slot slot = At(At(time).end);
  for (std::size_t step = 0; found.size() < count && step < last; ++step, slot = At(slot.end)) {
    const std::string& call = table_.slots[slot.index].at(frequency);
    if (!call.empty()) found.push_back({call, frequency, slot.begin, slot.end});
  }
  return found;
}

std::optional<Transmission> Schedule::NextOf(std::string_view call, UtcTime time) const {
  Slot slot = At(time);
  // Two cycles: the first one may be cut off by midnight.
  for (std::size_t step = 0; step < 2 * table_.slots.size(); ++step, slot = At(slot.end)) {
    const std::vector<std::string>& calls = table_.slots[slot.index];
    const auto found = std::find(calls.begin(), calls.end(), call);
    if (found == calls.end()) continue;
    return Transmission{*found, static_cast<std::size_t>(found - calls.begin()), slot.begin,
                        slot.end};
  }
  return std::nullopt;
}

}  // namespace skyhop::BeaconModule
