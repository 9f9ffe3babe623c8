#pragma once

#include <string>

#include "common/clock.h"
#include "engine/results_parser.h"
#include "engine/results_table.h"

namespace skyhop {

/// The inputs of a prediction that its results do not repeat.
struct AskedPrediction {
  float sunspot_number = 0;  ///< as used
  bool from_flux = false;    ///< whether it was derived from the solar flux
  std::string solar_flux;    ///< as typed
  bool by_peer = false;      ///< another program asked for it
};

/// An engine's name for the user: as in its results, or the name of the chosen `engine` if they
/// have none. For the built-in estimate engine, plain words distinguish it from the others.
[[nodiscard]] std::string EngineName(const std::string& named, EngineChoice engine);

/// Whether `named`, the engine's name in results, is that of the estimate engine.
[[nodiscard]] bool IsEstimate(const std::string& named);

/// The origin of the numbers of a chart with `heading`: "VOACAP 16.1207W · sunspot number 79 (from
/// flux 120) · computed 21-Nov-26 12:04 UTC", followed by " · requested by a peer" if a peer
/// requested it. EngineName supplies the engine's name.
[[nodiscard]] std::string Provenance(const IONCAPModule::ResultsHeading& heading,
                                     EngineChoice engine, const AskedPrediction& asked,
                                     UtcTime computed);

}  // namespace skyhop
