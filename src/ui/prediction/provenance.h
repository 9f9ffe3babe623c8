#pragma once

#include <string>

#include "common/clock.h"
#include "engine/results_parser.h"
#include "engine/results_table.h"

namespace skyhop {

/// What a prediction was asked for.
struct AskedPrediction {
  std::string date;          ///< as the parameter set holds it, "dd-mmm-yy"
  float sunspot_number = 0;  ///< as used
  bool from_flux = false;    ///< whether that was derived from the solar flux
  std::string solar_flux;    ///< as typed
  double power = 0;          ///< watts
  bool by_peer = false;      ///< another program asked for it
};

/// Where the numbers of a chart come from.
struct Provenance {
  /// "VOACAP 16.1207W · sunspot number 79 (from flux 120) · computed 21-Nov-26 12:04 UTC",
  /// and at the end " · requested by a peer" when it was.
  std::string note;
  /// "Results are for Oct 2026, not Nov 2026; for sunspot number 100, not 79"; empty when the
  /// results are what was asked for.
  std::string difference;

  friend bool operator==(const Provenance&, const Provenance&) = default;
};

/// An engine's name for a reader: as its results name it, by the chosen `engine` when they don't.
/// The estimate engine that comes with the program is told apart from the others in plain words.
[[nodiscard]] std::string EngineName(const std::string& named, EngineChoice engine);

/// Whether results name the estimate engine as theirs.
[[nodiscard]] bool IsEstimate(const std::string& named);

/// The provenance of results that bear `heading`. The engine is named as EngineName does.
///
/// A value counts as different when rounding, to the digits of the script's card and then to those
/// that the heading shows, does not explain it. What the heading does not tell is no difference.
[[nodiscard]] Provenance ProvenanceOf(const IONCAPModule::ResultsHeading& heading,
                                      EngineChoice engine, const AskedPrediction& asked,
                                      UtcTime computed);

}  // namespace skyhop
