#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "beacon/beacon_location.h"
#include "beacon/separated_values.h"

namespace skyhop::BeaconModule {

/// Who transmits when: a cycle of slots of equal length, in each of which every frequency has one
/// beacon or is silent.
struct SlotTable {
  /// Of a file that does not say otherwise.
  static constexpr std::chrono::milliseconds kUsualSlot{10'000};

  std::chrono::milliseconds slot{kUsualSlot};  ///< above 0
  std::vector<double> frequencies;             ///< kHz, in the order of the file
  /// Calls in capitals by slot and frequency; empty where nobody transmits.
  std::vector<std::vector<std::string>> slots;

  [[nodiscard]] std::chrono::milliseconds Cycle() const {
    return slot * static_cast<int>(slots.size());
  }
};

struct ScheduleFile {
  /// Nothing when the file does not tell a schedule.
  std::optional<SlotTable> table;
  std::vector<FileProblem> problems;
};

/// Reads the content of a schedule file, see SplitRecords for its lines:
///  - "slot" and the length of a slot in seconds, 0.5 to 3600; 10 where the line is missing,
///  - "frequencies" and up to ten frequencies in kHz,
///  - then one line for each slot of the cycle. Either each has one call: the beacon that begins
///    on the first frequency in that slot and goes on to the next frequency with each slot. Or each
///    has as many fields as there are frequencies: who transmits on each of them in that slot.
///    "-" is nobody.
///
/// The form is the one that most of the lines have. A slot that cannot be read stays in the cycle,
/// silent, so that the others keep their times; a line before the frequencies is no slot. A
/// frequency that cannot be read, or is one too many, is left out of the table. A call that is not
/// among `known` is told but kept. A schedule whose slot length or frequencies cannot be read at
/// all, in which nobody transmits, or whose cycle is longer than a day, is none.
[[nodiscard]] ScheduleFile ReadBeaconSchedule(std::string_view content, const std::string& file,
                                              const BeaconLocations& known);

}  // namespace skyhop::BeaconModule
