#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "beacon/beacon_location.h"
#include "beacon/separated_values.h"

namespace skyhop::BeaconModule {

/// A cycle of slots of equal length. In each slot every frequency has one beacon or is silent.
struct SlotTable {
  /// The slot length if the file contains none.
  static constexpr std::chrono::milliseconds kUsualSlot{10'000};

  std::chrono::milliseconds slot{kUsualSlot};  ///< above 0
  std::vector<double> frequencies;             ///< kHz, in the order of the file
  /// Calls in capitals by slot and frequency; empty for a silent frequency.
  std::vector<std::vector<std::string>> slots;

  [[nodiscard]] std::chrono::milliseconds Cycle() const {
    return slot * static_cast<int>(slots.size());
  }
};

struct ScheduleFile {
  /// Nothing if the file holds no schedule.
  std::optional<SlotTable> table;
  std::vector<FileProblem> problems;
};

/// Reads the content of a schedule file, see SplitRecords for its lines:
///  - "slot" and the length of a slot in seconds, 0.5 to 3600; 10 where the line is missing,
///  - "frequencies" and up to ten frequencies in kHz,
///  - then one line for each slot of the cycle. Either each has one call: the beacon that begins
///    on the first frequency in that slot and goes on to the next frequency with each slot. Or each
///    has as many fields as there are frequencies: the beacon that transmits on each of them in
///    that slot.
///    "-" means no beacon.
///
/// Most of the lines determine the form. A slot that cannot be read stays in the cycle, silent, so
/// that the others keep their times; a line before the frequencies is not a slot. A frequency that
/// cannot be read, or exceeds the ten, is not in the table. A call that is not in `known` is
/// reported but kept. A file holds no schedule if its slot length or all its frequencies cannot be
/// read, if no beacon transmits, or if its cycle is longer than a day.
[[nodiscard]] ScheduleFile ReadBeaconSchedule(std::string_view content, const std::string& file,
                                              const BeaconLocations& known);

}  // namespace skyhop::BeaconModule
