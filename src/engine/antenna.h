#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace skyhop {

/// The user's own station or the one to be reached.
enum class Station { kLocal, kDX };

/// The antenna of a station as ICEPAC and VOACAP take it; texts as the user typed them.
struct Antenna {
  /// A file below the engine's "antennas" folder, such as "samples/sample.23"; empty for one that
  /// radiates alike in all directions.
  std::string file;
  /// dBi of the antenna without a file; empty for 0. A file brings its own gain.
  std::string gain;
  /// Degrees from true north into which the main beam points; empty: the bearing of the path.
  std::string azimuth;

  friend bool operator==(const Antenna&, const Antenna&) = default;
};

/// The file that stands in the deck for an antenna without one.
inline constexpr std::string_view kIsotropicFile = "default/isotrope";

/// Columns that a card has for a file's name.
inline constexpr std::size_t kLongestAntennaFile = 21;

/// What is wrong with an antenna, a sentence without its point; empty when nothing is. Gains are
/// from -30 to 60 dBi, azimuths from 0 to 360 degrees. Whether the file exists is not looked at.
[[nodiscard]] std::string AntennaProblem(const Antenna& antenna);

/// The antenna files of an engine, "folder/name", sorted: those in the folders of `antennas` whose
/// names a card can hold. None when the folder cannot be read.
[[nodiscard]] std::vector<std::string> ListAntennas(const std::filesystem::path& antennas);

}  // namespace skyhop
