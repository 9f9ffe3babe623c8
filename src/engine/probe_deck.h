#pragma once

#include <string>

#include "engine/deck_parameters.h"
#include "engine/results_table.h"

namespace skyhop {

/// The deck of a circuit that every engine is known to answer: New York to London, 1500 W, in
/// November 2026 at a sunspot number of 105. Lines end with CR LF.
/// Throws Error 5 for kNone.
[[nodiscard]] std::string ProbeDeck(EngineChoice engine);

/// What these decks ask for.
[[nodiscard]] IONCAPModule::DeckParameters ProbeQuestion();

}  // namespace skyhop
