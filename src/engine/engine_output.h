#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace skyhop {

/// The lines of `output` that an engine has printed: without those that only the closing lines of
/// its batch file cause, and without the blank ones around them.
[[nodiscard]] std::vector<std::string> EngineOutputLines(std::string_view output);

}  // namespace skyhop
