#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace skyhop::platform {

/// A file that comes with the program and the place it takes in the program folder.
struct ShippedFile {
  std::filesystem::path source;
  std::filesystem::path target;  ///< relative to the program folder
  bool executable = false;
};

/// The texts among the shipped files; each takes the same name in the program folder.
inline constexpr std::array<const char*, 3> kShippedTexts = {
    "BeaconLocation.txt", "BeaconSchedule.txt", "DefaultBands.txt"};

/// Places the files as FillProgramFolder says. A record of what was placed is kept in the program
/// folder as "installed-files.txt".
[[nodiscard]] std::vector<std::string> PlaceFiles(const std::filesystem::path& folder,
                                                  const std::vector<ShippedFile>& files);

// Each back end has its own of these two.

/// Size and time of a file: enough to tell whether it is still the one that was placed.
struct FileStamp {
  std::uintmax_t size = 0;
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;

  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// The stamp of a file, nothing when there is none.
[[nodiscard]] std::optional<FileStamp> StampOf(const std::filesystem::path& path);

/// Writes a file so that at every moment either the old or the new content is there as a whole.
/// Throws the Errors of FileError; the old file is untouched then.
void PutFile(const std::filesystem::path& path, std::string_view content, bool executable);

}  // namespace skyhop::platform
