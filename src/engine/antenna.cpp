#include "engine/antenna.h"

#include <algorithm>

#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {
namespace {

/// Whether a card can hold the name: a bracket ends the name, and engines count bytes.
bool FitsCard(std::string_view file) {
  return file.size() <= kLongestAntennaFile && std::all_of(file.begin(), file.end(), [](char c) {
           return c > ' ' && c <= '~' && c != '[' && c != ']';
         });
}

bool NumberWithin(const std::string& text, double least, double greatest) {
  const auto value = WholeNumberText(text);
  return value && *value >= least && *value <= greatest;
}

}  // namespace

std::string AntennaProblem(const Antenna& antenna) {
  if (!FitsCard(antenna.file)) {
    return "the antenna file's name \"" + antenna.file + "\" is longer than " +
           std::to_string(kLongestAntennaFile) +
           " characters or has one that the engines cannot read";
  }
  if (!Trim(antenna.gain).empty() && !NumberWithin(antenna.gain, -30, 60)) {
    return "the antenna gain \"" + antenna.gain + "\" is no number from -30 to 60 dBi";
  }
  if (!Trim(antenna.azimuth).empty() && !NumberWithin(antenna.azimuth, 0, 360)) {
    return "the antenna azimuth \"" + antenna.azimuth + "\" is no number from 0 to 360 degrees";
  }
  return {};
}

std::vector<std::string> ListAntennas(const std::filesystem::path& antennas) {
  std::vector<std::string> files;
  std::error_code error;
  for (std::filesystem::directory_iterator folder(antennas, error), end; folder != end && !error;
       folder.increment(error)) {
    std::error_code inner;
    for (std::filesystem::directory_iterator file(folder->path(), inner); file != end && !inner;
         file.increment(inner)) {
      std::error_code ignored;
      if (!file->is_regular_file(ignored)) continue;
      // The deck uses a slash on every system.
      const std::string name =
          PathText(folder->path().filename()) + "/" + PathText(file->path().filename());
      if (FitsCard(name)) files.push_back(name);
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace skyhop
