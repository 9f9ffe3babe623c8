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

/// The contents of the beacon files in the program folder.
struct BeaconFiles {
  BeaconLocations locations;
  /// Nothing when no schedule can be read.
  std::optional<SlotTable> schedule;
  bool custom = false;  ///< the schedule is the user's own
  /// All problems, including those of the locations.
  std::vector<FileProblem> problems;
};

/// Reads the files. With `custom`, uses the user's own schedule. If that file is missing or holds
/// no schedule, uses the standard one and adds a problem. LogProblems writes the problems to the
/// error log.
[[nodiscard]] BeaconFiles ReadBeaconFiles(const std::filesystem::path& program_folder, bool custom,
                                          Diagnostics& diagnostics);

}  // namespace skyhop::BeaconModule
