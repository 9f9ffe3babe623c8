#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "engine/results_table.h"
#include "report/csv_report.h"
#include "ui/drawing/chart_palette.h"
#include "ui/drawing/surface.h"

namespace skyhop {

// A prediction as a table: a row for each band that is predicted, the highest at the top, a column
// for each hour. A cell shows the reliability in percent or, of engines that predict frequencies,
// how open the band is.

/// The meaning of the table's numbers.
[[nodiscard]] std::string TableCaption(const PredictedDay& day);

/// The colors of a cell with a reliability in percent. Their steps are the levels of open bands.
[[nodiscard]] TextColors ReliabilityColors(int percent);

/// The reliability of a cell in whole percent, which is how engines tell it; nothing where it is
/// not known.
[[nodiscard]] std::optional<int> ReliabilityPercent(const ResultsTable& table, std::size_t band,
                                                    std::size_t hour);

/// The band whose row is at `y` of a table in `area`; nothing above and below it.
[[nodiscard]] std::optional<std::size_t> BandOfRow(const PredictedDay& day, const Rectangle& area,
                                                   double y);

/// Fills an area with the hatching of an hour that does not reach the required reliability.
/// `text_size` is the size of the texts around it, which the distance of the lines follows.
void PaintHatching(Surface& surface, const Rectangle& area, const ChartPalette& palette,
                   double text_size);

/// Draws cells and, at the left, the names of the bands. Numbers are left out where a cell has no
/// room for them.
void PaintBandTable(Surface& surface, const PredictedDay& day, const Rectangle& area,
                    double text_size, const ChartPalette& palette);

/// A cell of an engine that predicts frequencies in words: "open on 50 % of the days or more".
[[nodiscard]] std::string CellWords(const PredictedDay& day, std::size_t band, std::size_t hour);

/// What is predicted of a band at an hour: "20 m   96 % of days   SNR 50 dB   2F2   -87 dBm, S6".
[[nodiscard]] std::string BandReadout(const ResultsTable& table, std::size_t band,
                                      std::size_t hour);

}  // namespace skyhop
