#pragma once

#include <iosfwd>
#include <string>

#include "app/predict/options.h"

namespace skyhop {

/// Makes the prediction that the options describe and writes what was asked for to `out`,
/// everything else to `err`. Returns the exit status.
[[nodiscard]] int RunPrediction(const PredictOptions& options, std::ostream& out,
                                std::ostream& err);

}  // namespace skyhop
