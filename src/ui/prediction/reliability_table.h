#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "engine/results_table.h"
#include "ui/prediction/chart_palette.h"
#include "ui/prediction/surface.h"

namespace skyhop {

// Reliability as a table: a row for each band from 6 m at the top to 80 m at the bottom, a column
// for each hour.

/// What the numbers of the table are.
inline constexpr std::string_view kReliabilityCaption =
    "Reliability: percent of the days that reach the required SNR";

/// The colours of a cell.
struct CellColors {
  Color fill{};
  Color ink{};
};

/// The colours for a reliability in percent: five steps of one hue from light to dark, which people
/// who cannot tell hues apart can tell by their lightness. The steps are those of the open bands.
[[nodiscard]] CellColors ReliabilityColors(int percent);

/// The reliability of a cell in whole percent, which is how engines tell it; nothing where it is
/// not known.
[[nodiscard]] std::optional<int> ReliabilityPercent(const ResultsTable& table, std::size_t band,
                                                    std::size_t hour);

/// The band whose row is at `y` of a table in `area`; nothing above and below it.
[[nodiscard]] std::optional<std::size_t> BandOfRow(const Rectangle& area, double y);

/// Draws cells and, at the left, the names of the bands. Numbers are left out where a cell has no
/// room for them.
void PaintReliabilityTable(Surface& surface, const ResultsTable& table, const Rectangle& area,
                           double text_size, const ChartPalette& palette);

/// What is predicted of a band at an hour: "20 m   96 % of days   SNR 50 dB   2F2   -87 dBm, S6".
[[nodiscard]] std::string BandReadout(const ResultsTable& table, std::size_t band,
                                      std::size_t hour);

}  // namespace skyhop
