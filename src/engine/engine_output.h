#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/engine_search.h"

namespace skyhop {

/// The lines of `output` that an engine printed. Leaves out the lines that the closing lines of its
/// batch file cause, and blank lines at start and end.
[[nodiscard]] std::vector<std::string> EngineOutputLines(std::string_view output);

/// The first of these lines that explains the engine's end: skips lines of a backtrace, and places
/// in the engine's source before a run-time error. Empty if there is none.
[[nodiscard]] std::string FirstMeaningfulLine(std::string_view output);

/// Why an engine with this `finding` ended without results: sentences, each after a blank, about
/// its missing parts and its output. Empty if neither is known.
[[nodiscard]] std::string EngineFailureText(EngineChoice engine, const EngineFinding& finding,
                                            std::string_view output);

}  // namespace skyhop
