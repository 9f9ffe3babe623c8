#pragma once

#include <filesystem>

namespace skyhop::platform {

/// The folder that `variable` names if it holds an absolute path, else `fallback` below the user's
/// home folder. Throws Error 76 when the user has no home folder.
[[nodiscard]] std::filesystem::path UserFolder(const char* variable, const char* fallback);

/// The full path of the running executable; empty when the system does not tell.
[[nodiscard]] std::filesystem::path ExecutablePath();

}  // namespace skyhop::platform
