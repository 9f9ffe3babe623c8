#pragma once

#include <cstdint>

namespace skyhop {

/// Roles of the suite's applications by their index.
namespace role {
inline constexpr std::int16_t kTransceiverControl = 0;
inline constexpr std::int16_t kLog = 1;
inline constexpr std::int16_t kQslInfo = 2;
inline constexpr std::int16_t kTessera = 3;
inline constexpr std::int16_t kSpots = 4;
inline constexpr std::int16_t kPropagation = 5;  ///< this program
inline constexpr std::int16_t kModes = 6;
}  // namespace role

/// Names under which the applications serve their topics.
namespace application {
inline constexpr const char* kGleaner = "Gleaner";
inline constexpr const char* kTessera = "Tessera";
inline constexpr const char* kTuneward = "TunewardClassic";
inline constexpr const char* kLauncher = "MarloLauncher";
inline constexpr const char* kArchivo = "Archivo";
inline constexpr const char* kQuester = "Quester";
inline constexpr const char* kChirpa = "Chirpa";
inline constexpr const char* kSkyhop = "Skyhop";
}  // namespace application

/// Topics that take commands and announcements, in every application.
namespace topic {
inline constexpr const char* kServer = "DDEServer";
inline constexpr const char* kClient = "DDEClient";
}  // namespace topic

}  // namespace skyhop
