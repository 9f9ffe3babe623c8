#pragma once

#include <string>

#include "engine/prediction_inputs.h"
#include "engine/results_parser.h"

namespace skyhop::IONCAPModule {

/// How the question that `heading` repeats differs from the one that was `asked`, a sentence
/// without its point such as "Results are for Oct 2026, not Nov 2026; for sunspot number 100, not
/// 79"; empty when the heading repeats the question.
///
/// Compares month and year, both positions, the path, sunspot number, transmitter power, noise,
/// minimum take-off angle, required SNR and reliability and, except for IONCAP, the antenna files.
/// A value differs when rounding to the digits of the deck's card and then to those of the heading
/// does not explain it. A value that the heading does not repeat, or not in a readable form, is no
/// difference.
[[nodiscard]] std::string EchoDifference(const ResultsHeading& heading,
                                         const PredictionInputs& asked);

}  // namespace skyhop::IONCAPModule
