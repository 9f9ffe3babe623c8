#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace skyhop::platform {

/// A file that is shipped with the program, and its place in the program folder.
struct ShippedFile {
  std::filesystem::path source;
  std::filesystem::path target;  ///< relative to the program folder
  bool executable = false;
};

/// Places the files as FillProgramFolder describes. "installed-files.txt" in the program folder
/// records the placed files.
[[nodiscard]] std::vector<std::string> PlaceFiles(const std::filesystem::path& folder,
                                                  const std::vector<ShippedFile>& files);

// Each back end implements the following.

/// Size and time of a file. They show whether the file is still the one that was placed.
struct FileStamp {
  std::uintmax_t size = 0;
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;

  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// The stamp of a file, nothing when there is none.
[[nodiscard]] std::optional<FileStamp> StampOf(const std::filesystem::path& path);

/// Makes the system write a file to the disk, for WriteFileAtOnce. Throws the Errors of FileError.
void SyncFile(const std::filesystem::path& path);

/// The full path of the running executable; empty if the system does not provide it.
[[nodiscard]] std::filesystem::path ExecutablePath();

/// The installed estimate engine.
[[nodiscard]] std::filesystem::path EstimateEngineFile();

}  // namespace skyhop::platform
