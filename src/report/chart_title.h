#pragma once

#include <string>

#include "common/diagnostics.h"
#include "engine/prediction_inputs.h"

namespace skyhop {

/// What a title names beside the parameter set.
struct TitleNames {
  std::string local_grid;  ///< as typed; empty: computed with six characters
  std::string dx_grid;     ///< the same for the DX station
  std::string mode;        ///< the mode whose SNR is required; empty for none
};

/// The circuit of a prediction in one line: "FN20 → IO91wm (G) · 51° · 3480 miles · short path ·
/// 1500 W · CW, 24 dB · reliability 10 % · 15-Nov-26". Your station comes first; the arrow is the
/// signal's direction. Distances are in statute miles, or in kilometres without `miles`.
[[nodiscard]] std::string ChartTitle(const ParameterSet& set, bool miles, const TitleNames& names,
                                     Diagnostics& diagnostics);

/// The prediction in one line: path, SNR, distance, direction, place, date and, unless it is empty,
/// the name of the settings in use: "SP 24 db 3480 mi  propagation to DX 51 30' 0" N 0 7' 0" W on
/// 15-Nov-26 (20M settings)".
[[nodiscard]] std::string SummaryLine(const ParameterSet& set, bool miles,
                                      const std::string& settings_name, Diagnostics& diagnostics);

}  // namespace skyhop
