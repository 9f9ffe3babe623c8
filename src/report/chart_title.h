#pragma once

#include <string>

#include "common/diagnostics.h"
#include "engine/parameters.h"
#include "engine/prediction_panel.h"

namespace skyhop {

/// What a title names beside the engine's inputs.
struct TitleNames {
  std::string local_grid;  ///< as the user writes it; empty: of six characters
  std::string dx_grid;     ///< the same of the DX station
  std::string mode;        ///< whose SNR is required; empty for none
};

/// The circuit of a prediction in one line, from the inputs that were handed to the engine:
/// "FN20 → IO91wm (G) · 51° · 3480 miles · short path · 1500 W · CW, 24 dB · reliability 10 % ·
/// 15-Nov-26". Your station comes first; the arrow is the signal's direction.
[[nodiscard]] std::string ChartTitle(const PredictionPanel& panel,
                                     const IONCAPModule::Parameters& parameters,
                                     const TitleNames& names, Diagnostics& diagnostics);

}  // namespace skyhop
