#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace skyhop::platform {

/// A file that comes with the program and the place it takes in the program folder.
struct ShippedFile {
  std::filesystem::path source;
  std::filesystem::path target;  ///< relative to the program folder
  bool executable = false;
};

/// Places the files as FillProgramFolder says. A record of what was placed is kept in the program
/// folder as "installed-files.txt".
[[nodiscard]] std::vector<std::string> PlaceFiles(const std::filesystem::path& folder,
                                                  const std::vector<ShippedFile>& files);

}  // namespace skyhop::platform
