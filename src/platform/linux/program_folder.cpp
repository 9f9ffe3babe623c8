#include "platform/linux/program_folder.h"

#include <sys/stat.h>

#include <cstdint>
#include <map>
#include <optional>
#include <sstream>

#include "common/errors.h"
#include "common/files.h"
#include "platform/linux/atomic_file.h"
#include "platform/linux/user_folders.h"
#include "platform/platform.h"

namespace skyhop::platform {
namespace {

constexpr const char* kRecordName = "installed-files.txt";
constexpr std::size_t kLargestFile = std::size_t{64} << 20U;

/// Size and time of a file: enough to tell whether it is still the one that was placed.
struct Stamp {
  std::uintmax_t size = 0;
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;

  friend bool operator==(const Stamp&, const Stamp&) = default;
};

std::optional<Stamp> StampOf(const std::filesystem::path& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return Stamp{static_cast<std::uintmax_t>(status.st_size), status.st_mtim.tv_sec,
               status.st_mtim.tv_nsec};
}

/// For each placed file, the stamps of the installed original and of the copy.
struct Placed {
  Stamp source;
  Stamp copy;
};
using Record = std::map<std::string, Placed>;

std::istream& operator>>(std::istream& in, Stamp& stamp) {
  return in >> stamp.size >> stamp.seconds >> stamp.nanoseconds;
}

std::ostream& operator<<(std::ostream& out, const Stamp& stamp) {
  return out << stamp.size << ' ' << stamp.seconds << ' ' << stamp.nanoseconds;
}

/// A record that is missing or damaged is an empty one: every file then counts as the user's own.
Record ReadRecord(const std::filesystem::path& path) {
  Record record;
  std::string content;
  try {
    content = ReadFile(path, kLargestFile);
  } catch (const Error&) {
    return record;
  }
  std::istringstream lines(content);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    Placed placed;
    std::string name;
    if (fields >> placed.source >> placed.copy >> name) record[name] = placed;
  }
  return record;
}

void WriteRecord(const std::filesystem::path& path, const Record& record) {
  std::ostringstream text;
  for (const auto& [name, placed] : record) {
    text << placed.source << ' ' << placed.copy << ' ' << name << '\n';
  }
  ReplaceFile(path, text.str(), 0644);
}

/// The folder above the one that holds the executable.
std::filesystem::path InstallationPrefix() {
  return ExecutablePath().parent_path().parent_path();
}

/// Places one file if it is missing or was placed by us and is out of date. Returns whether the
/// record changed.
bool PlaceFile(const std::filesystem::path& folder, const ShippedFile& file, Record& record) {
  const std::filesystem::path target = folder / file.target;
  const auto known = record.find(file.target.string());
  const std::optional<Stamp> present = StampOf(target);
  const bool ours = present && known != record.end() && known->second.copy == *present;
  if (present && !ours) return false;

  const std::optional<Stamp> source = StampOf(file.source);
  if (!source) {
    throw Error(errors::kFileNotFound, "the installation lacks " + PathText(file.source) +
                                           ", needed for " + PathText(target));
  }
  if (ours && known->second.source == *source) return false;
  std::error_code error;
  std::filesystem::create_directories(target.parent_path(), error);
  if (error) throw FileError(error, "cannot create " + PathText(target.parent_path()));
  ReplaceFile(target, ReadFile(file.source, kLargestFile), file.executable ? 0755 : 0644);
  record[file.target.string()] = {*source, StampOf(target).value_or(Stamp{})};
  return true;
}

}  // namespace

std::vector<std::string> PlaceFiles(const std::filesystem::path& folder,
                                    const std::vector<ShippedFile>& files) {
  std::vector<std::string> problems;
  const std::filesystem::path record_path = folder / kRecordName;
  Record record = ReadRecord(record_path);
  bool changed = false;
  const auto attempt = [&](auto action) {
    try {
      action();
    } catch (const Error& error) {
      problems.emplace_back(error.what());
    }
  };
  for (const ShippedFile& file : files) {
    attempt([&] { changed = PlaceFile(folder, file, record) || changed; });
  }
  if (changed) attempt([&] { WriteRecord(record_path, record); });
  return problems;
}

std::filesystem::path ProgramFolder() {
  std::filesystem::path folder;
  if (const char* home = std::getenv("SKYHOP_HOME"); home != nullptr && *home != '\0') {
    folder = std::filesystem::absolute(home);
  } else {
    folder = UserFolder("XDG_DATA_HOME", ".local/share") / "skyhop";
  }
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw FileError(error, "cannot create the program folder " + PathText(folder));
  return folder;
}

std::vector<std::string> FillProgramFolder(const std::filesystem::path& folder) {
  const std::filesystem::path prefix = InstallationPrefix();
  return PlaceFiles(folder,
                    {{prefix / SKYHOP_DATA_FOLDER / "DefaultBands.txt", "DefaultBands.txt", false},
                     {prefix / SKYHOP_ENGINE_FOLDER / "skyhop-estimate",
                      std::filesystem::path("IonCap") / "ioncap.exe", true}});
}

std::filesystem::path DataFile(const std::filesystem::path& name) {
  return InstallationPrefix() / SKYHOP_DATA_FOLDER / name;
}

std::filesystem::path HelpFile(const std::filesystem::path& program_folder) {
  std::filesystem::path own = program_folder / "index.htm";
  std::error_code ignored;
  if (std::filesystem::is_regular_file(own, ignored)) return own;
  return DataFile(std::filesystem::path("help") / "index.htm");
}

}  // namespace skyhop::platform
