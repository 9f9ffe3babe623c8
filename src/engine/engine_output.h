#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/engine_search.h"

namespace skyhop {

/// The lines of `output` that an engine has printed: without those that only the closing lines of
/// its batch file cause, and without the blank ones around them.
[[nodiscard]] std::vector<std::string> EngineOutputLines(std::string_view output);

/// The first of these lines that explains why an engine has ended: not a line of a backtrace, and a
/// run-time error rather than the place in the engine's source. Empty when there is none.
[[nodiscard]] std::string FirstMeaningfulLine(std::string_view output);

/// Why an engine that was found so has ended without results, sentences with a blank before each:
/// what it needs and does not find, and what it printed. Empty when neither is known.
[[nodiscard]] std::string EngineFailureText(EngineChoice engine, const EngineFinding& finding,
                                            std::string_view output);

}  // namespace skyhop
