#pragma once

#include <filesystem>

namespace skyhop::platform {

/// The full path of the running executable.
[[nodiscard]] std::filesystem::path ExecutablePath();

}  // namespace skyhop::platform
