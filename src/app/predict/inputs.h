#pragma once

#include <iosfwd>
#include <string>

#include "app/predict/options.h"
#include "app/predict/prediction_program.h"

namespace skyhop {

/// Puts the stored settings or the defaults into the panel and what the command line gave over
/// them, and hands all of it to the engine interface. Returns an empty text, or what is wrong.
[[nodiscard]] std::string HandInputs(const PredictOptions& options, PredictionProgram& program);

}  // namespace skyhop
