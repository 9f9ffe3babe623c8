#pragma once

#include <string>

#include "common/clock.h"
#include "engine/results_parser.h"
#include "engine/results_table.h"

namespace skyhop {

/// What a prediction was asked for, as far as its results do not repeat it.
struct AskedPrediction {
  float sunspot_number = 0;  ///< as used
  bool from_flux = false;    ///< whether that was derived from the solar flux
  std::string solar_flux;    ///< as typed
  bool by_peer = false;      ///< another program asked for it
};

/// An engine's name for a reader: as its results name it, by the chosen `engine` when they don't.
/// The estimate engine that comes with the program is told apart from the others in plain words.
[[nodiscard]] std::string EngineName(const std::string& named, EngineChoice engine);

/// Whether results name the estimate engine as theirs.
[[nodiscard]] bool IsEstimate(const std::string& named);

/// Where the numbers of a chart come from that bear `heading`: "VOACAP 16.1207W · sunspot number 79
/// (from flux 120) · computed 21-Nov-26 12:04 UTC", and at the end " · requested by a peer" when a
/// peer did. The engine is named as EngineName does.
[[nodiscard]] std::string Provenance(const IONCAPModule::ResultsHeading& heading,
                                     EngineChoice engine, const AskedPrediction& asked,
                                     UtcTime computed);

}  // namespace skyhop
