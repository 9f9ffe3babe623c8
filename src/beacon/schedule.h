#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "beacon/beacon_schedule.h"
#include "common/clock.h"

namespace skyhop::BeaconModule {

/// A slot of the cycle at its time.
struct Slot {
  std::size_t index = 0;  ///< in the cycle
  UtcTime begin;
  UtcTime end;  ///< the first moment after the slot

  friend bool operator==(const Slot&, const Slot&) = default;
};

/// One beacon on one frequency for one slot.
struct Transmission {
  std::string call;
  std::size_t frequency = 0;  ///< index into the table's
  UtcTime begin;
  UtcTime end;

  friend bool operator==(const Transmission&, const Transmission&) = default;
};

/// A slot table on the clock. Every answer depends on the time alone, so it is right again after a
/// jump of the clock, sleep or a leap second. The cycle begins at 00:00 UTC each day; midnight cuts
/// off a last cycle that is not whole.
class Schedule {
 public:
  explicit Schedule(SlotTable table) : table_(std::move(table)) {}

  [[nodiscard]] const SlotTable& Table() const { return table_; }

  [[nodiscard]] Slot At(UtcTime time) const;

  /// The call of the beacon that transmits on a frequency at that time; empty if none does.
  [[nodiscard]] const std::string& CallOn(std::size_t frequency, UtcTime time) const;

  /// The transmissions on a frequency that begin after `time`, at most `count` of them and within
  /// one cycle more than that.
  [[nodiscard]] std::vector<Transmission> Following(std::size_t frequency, UtcTime time,
                                                    std::size_t count) const;

  /// The transmission of a beacon at `time`, otherwise its first one after `time`. If it has
  /// several at once, the one on the first frequency. Nothing if the beacon is not in the table.
  [[nodiscard]] std::optional<Transmission> NextOf(std::string_view call, UtcTime time) const;

 private:
  SlotTable table_;
};

}  // namespace skyhop::BeaconModule
