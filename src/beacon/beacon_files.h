#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "beacon/beacon_location.h"
#include "beacon/beacon_schedule.h"
#include "common/diagnostics.h"

namespace skyhop::BeaconModule {

inline constexpr const char* kLocationFile = "BeaconLocation.txt";
inline constexpr const char* kScheduleFile = "BeaconSchedule.txt";
inline constexpr const char* kCustomScheduleFile = "CustomBeaconSchedule.txt";

/// What the beacon files of the program folder say.
struct BeaconFiles {
  BeaconLocations locations;
  /// Nothing when no schedule can be read.
  std::optional<SlotTable> schedule;
  bool custom = false;  ///< the schedule is the user's own
  /// Everything that is wrong, the locations' problems among them.
  std::vector<FileProblem> problems;
};

/// Reads the files. With `custom` the user's own schedule counts; when it is not there or tells
/// none, the standard one does, and the problems say so. LogProblems writes them to the error log.
[[nodiscard]] BeaconFiles ReadBeaconFiles(const std::filesystem::path& program_folder, bool custom,
                                          Diagnostics& diagnostics);

}  // namespace skyhop::BeaconModule
