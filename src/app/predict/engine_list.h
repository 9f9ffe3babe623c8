#pragma once

#include <filesystem>
#include <string>

#include "engine/antenna.h"
#include "engine/engine_search.h"

namespace skyhop {

/// Lists the finding for each engine choice and the automatic choice, as lines for people or as
/// JSON.
[[nodiscard]] std::string EngineList(const EngineHost& host,
                                     const std::filesystem::path& program_folder, bool json);

/// Why a requested antenna has no effect with the engine, as a continuation of "your antenna";
/// empty if it has one. `estimate` is whether the finding is the estimate engine.
[[nodiscard]] std::string AntennaNote(const Antenna& antenna, EngineChoice engine,
                                      const EngineFinding& finding, bool estimate);

}  // namespace skyhop
