#pragma once

#include <filesystem>
#include <string>

#include "engine/antenna.h"
#include "engine/engine_search.h"

namespace skyhop {

/// What was found for each engine choice and which one is automatic: lines for people, or JSON.
[[nodiscard]] std::string EngineList(const EngineHost& host,
                                     const std::filesystem::path& program_folder, bool json);

/// Why an antenna that was asked for has no effect with the engine, behind the words "your
/// antenna"; empty when it counts. `estimate`: whether the finding is the estimate engine.
[[nodiscard]] std::string AntennaNote(const Antenna& antenna, EngineChoice engine,
                                      const EngineFinding& finding, bool estimate);

}  // namespace skyhop
