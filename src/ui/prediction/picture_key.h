#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "engine/results_table.h"
#include "ui/prediction/surface.h"

namespace skyhop {

/// Colours of a picture's own elements, dark to light.
namespace palette {
inline constexpr Color kInk{32, 36, 44};        ///< title, headings
inline constexpr Color kText{72, 78, 90};       ///< labels
inline constexpr Color kMuted{128, 134, 145};   ///< what is not in the prediction
inline constexpr Color kAxis{110, 116, 128};    ///< axes and ticks
inline constexpr Color kBand{204, 209, 217};    ///< band lines
inline constexpr Color kGrid{238, 240, 244};    ///< hour lines
inline constexpr Color kOpenText{168, 0, 168};  ///< labels of open bands
inline constexpr Color kTime{214, 122, 0};      ///< time index
}  // namespace palette

inline constexpr double kKeyRowHeight = 19;

/// Height of a picture's key: a heading and four lines.
inline constexpr double kKeyHeight = 24 + 4 * kKeyRowHeight;

/// A bar of an open band and what its thickness says.
struct BarMeaning {
  Pen pen;
  std::string_view text;
};

/// The bars that the results of `engine` are drawn with.
[[nodiscard]] std::span<const BarMeaning> OpenBandMeanings(EngineChoice engine);

/// Whether a row of the table's frequencies holds any value.
[[nodiscard]] bool IsPredicted(const ResultsTable& table, std::size_t row);

/// Draws the key of the curves with its upper left corner at `corner`. Curves of which the table
/// holds no value are marked as such.
void PaintCurveKey(Surface& surface, Point corner, const ResultsTable& table);

/// Draws what the thickness of the open bands' bars means. `engine` made the prediction.
void PaintOpenBandKey(Surface& surface, Point corner, EngineChoice engine);

}  // namespace skyhop
