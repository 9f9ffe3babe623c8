#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace skyhop {

/// The user's own station or the other one.
enum class Station { kLocal, kDX };

/// The antenna of a station for ICEPAC and VOACAP; texts as typed.
struct Antenna {
  /// A file below the engine's "antennas" folder, such as "samples/sample.23"; empty for an
  /// isotropic antenna.
  std::string file;
  /// Gain in dBi of the antenna without a file; empty for 0. A file contains its own gain.
  std::string gain;
  /// Direction of the main beam in degrees from true north; empty for the bearing of the path.
  std::string azimuth;

  friend bool operator==(const Antenna&, const Antenna&) = default;
};

/// The deck's file name for an antenna without a file.
inline constexpr std::string_view kIsotropicFile = "default/isotrope";

/// Number of columns for a file's name on a card.
inline constexpr std::size_t kLongestAntennaFile = 21;

/// The problem of an antenna, a sentence without its full stop; empty if there is none. Gains must
/// be from -30 to 60 dBi, azimuths from 0 to 360 degrees. Does not check whether the file exists.
[[nodiscard]] std::string AntennaProblem(const Antenna& antenna);

/// The antenna files of an engine, "folder/name", sorted: those in the folders of `antennas` whose
/// names a card can hold. None if the folder cannot be read.
[[nodiscard]] std::vector<std::string> ListAntennas(const std::filesystem::path& antennas);

}  // namespace skyhop
