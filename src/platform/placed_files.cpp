#include "platform/placed_files.h"

#include <map>
#include <sstream>

#include "common/errors.h"
#include "common/files.h"
#include "platform/platform.h"

namespace skyhop::platform {
namespace {

constexpr const char* kRecordName = "installed-files.txt";
constexpr std::size_t kLargestFile = std::size_t{64} << 20U;

using std::filesystem::perms;
constexpr perms kReadable =
    perms::owner_read | perms::owner_write | perms::group_read | perms::others_read;
constexpr perms kExecutable =
    kReadable | perms::owner_exec | perms::group_exec | perms::others_exec;

/// For each placed file, the stamps of the installed original and of the copy.
struct Placed {
  FileStamp source;
  FileStamp copy;
};
using Record = std::map<std::string, Placed>;

std::istream& operator>>(std::istream& in, FileStamp& stamp) {
  return in >> stamp.size >> stamp.seconds >> stamp.nanoseconds;
}

std::ostream& operator<<(std::ostream& out, const FileStamp& stamp) {
  return out << stamp.size << ' ' << stamp.seconds << ' ' << stamp.nanoseconds;
}

/// A missing or damaged record is empty: every file is then treated as the user's own.
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
  WriteFileAtOnce(path, text.str(), kReadable, SyncFile);
}

/// Places one file if it is missing or was placed by us and is out of date. Returns whether the
/// record changed.
bool PlaceFile(const std::filesystem::path& folder, const ShippedFile& file, Record& record) {
  const std::filesystem::path target = folder / file.target;
  const std::string name = file.target.generic_string();
  const auto known = record.find(name);
  const std::optional<FileStamp> present = StampOf(target);
  const bool ours = present && known != record.end() && known->second.copy == *present;
  if (present && !ours) return false;

  const std::optional<FileStamp> source = StampOf(file.source);
  if (!source) {
    throw Error(errors::kFileNotFound, "the installation lacks " + PathText(file.source) +
                                           ", needed for " + PathText(target));
  }
  if (ours && known->second.source == *source) return false;
  CreateFolder(target.parent_path());
  WriteFileAtOnce(target, ReadFile(file.source, kLargestFile),
                  file.executable ? kExecutable : kReadable, SyncFile);
  record[name] = {*source, StampOf(target).value_or(FileStamp{})};
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

std::vector<std::string> FillProgramFolder(const std::filesystem::path& folder) {
  std::vector<ShippedFile> files;
  for (const char* name : {"BeaconLocation.txt", "BeaconSchedule.txt", "DefaultBands.txt"}) {
    files.push_back({DataFile(name), name, false});
  }
  files.push_back({EstimateEngineFile(), std::filesystem::path("IonCap") / "ioncap.exe", true});
  return PlaceFiles(folder, files);
}

std::filesystem::path HelpFile(const std::filesystem::path& program_folder) {
  std::filesystem::path own = program_folder / "index.htm";
  std::error_code ignored;
  if (std::filesystem::is_regular_file(own, ignored)) return own;
  return DataFile(std::filesystem::path("help") / "index.htm");
}

}  // namespace skyhop::platform
