#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "engine/results_table.h"
#include "ui/drawing/surface.h"

namespace skyhop {

/// A bar of an open band and what its thickness says.
struct BarMeaning {
  Pen pen;
  std::string_view text;
};

/// The bars that the results of `engine` are drawn with.
[[nodiscard]] std::span<const BarMeaning> OpenBandMeanings(EngineChoice engine);

/// Whether a row of the table's frequencies holds any value.
[[nodiscard]] bool IsPredicted(const ResultsTable& table, std::size_t row);

}  // namespace skyhop
