#pragma once

#include <string>

namespace skyhop {

/// The product's name: title of its message boxes, application name of its settings.
inline constexpr const char* kProductName = "Skyhop";

/// The version of this build.
struct ProgramVersion {
  int major_number = 0;
  int minor_number = 0;
  int revision = 0;
};

/// The version that the build was configured with.
[[nodiscard]] ProgramVersion Version();

/// "1.2.3".
[[nodiscard]] std::string VersionText();

}  // namespace skyhop
