#include "beacon/beacon_files.h"

#include "common/errors.h"
#include "common/files.h"

namespace skyhop::BeaconModule {
namespace {

/// Larger than any real file, so that a file of another kind is not read whole.
constexpr std::size_t kFileLimit = std::size_t{32} << 20U;

class FileSet {
 public:
  FileSet(const std::filesystem::path& folder, BeaconFiles& files)
      : folder_(&folder), files_(&files) {}

  void ReadLocations() {
    const auto content = Content(kLocationFile);
    if (!content) return;
    files_->locations = ReadBeaconLocations(*content, kLocationFile);
    Add(files_->locations.problems);
  }

  /// Returns whether the file holds a schedule.
  bool ReadSchedule(const char* name) {
    const auto content = Content(name);
    if (!content) return false;
    ScheduleFile schedule = ReadBeaconSchedule(*content, name, files_->locations);
    Add(schedule.problems);
    files_->schedule = std::move(schedule.table);
    return files_->schedule.has_value();
  }

  void Add(const std::vector<FileProblem>& problems) {
    files_->problems.insert(files_->problems.end(), problems.begin(), problems.end());
  }

 private:
  std::optional<std::string> Content(const char* name) {
    try {
      return ReadFile(*folder_ / name, kFileLimit);
    } catch (const Error& error) {
      Add({{name, 0, 0, error.what()}});
    }
    return std::nullopt;
  }

  const std::filesystem::path* folder_;
  BeaconFiles* files_;
};

}  // namespace

BeaconFiles ReadBeaconFiles(const std::filesystem::path& program_folder, bool custom,
                            Diagnostics& diagnostics) {
  BeaconFiles files;
  FileSet set(program_folder, files);
  set.ReadLocations();
  files.custom = custom && set.ReadSchedule(kCustomScheduleFile);
  if (custom && !files.custom) {
    set.Add({{kCustomScheduleFile, 0, 0, "no schedule; the standard one is used"}});
  }
  if (!files.custom) set.ReadSchedule(kScheduleFile);
  LogProblems(files.problems, diagnostics);
  return files;
}

}  // namespace skyhop::BeaconModule
