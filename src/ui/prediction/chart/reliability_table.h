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

// A prediction as a table: a row for each predicted band, the highest at the top, and a column for
// each hour. A cell shows the reliability in percent. For LUF/MUF results it shows the open level.

/// The meaning of the table's numbers.
[[nodiscard]] std::string TableCaption(const PredictedDay& day);

/// The colours of a cell with a reliability in percent. Their steps are the levels of open bands.
[[nodiscard]] TextColors ReliabilityColors(int percent);

/// The reliability of a cell in whole percent, the precision of the engines; nothing if unknown.
[[nodiscard]] std::optional<int> ReliabilityPercent(const ResultsTable& table, std::size_t band,
                                                    std::size_t hour);

/// The band whose row is at `y` of a table in `area`; nothing above and below it.
[[nodiscard]] std::optional<std::size_t> BandOfRow(const PredictedDay& day, const Rectangle& area,
                                                   double y);

/// Fills an area with the hatching of an hour that does not reach the required reliability. The
/// distance of the lines depends on `text_size`, the size of the texts around the area.
void PaintHatching(Surface& surface, const Rectangle& area, const ChartPalette& palette,
                   double text_size);

/// Paints cells and, at the left, the names of the bands. Cells too small for numbers have none.
void PaintBandTable(Surface& surface, const PredictedDay& day, const Rectangle& area,
                    double text_size, const ChartPalette& palette);

/// A cell of LUF/MUF results in words: "open on 50 % of the days or more".
[[nodiscard]] std::string CellWords(const PredictedDay& day, std::size_t band, std::size_t hour);

/// The prediction for a band and hour: "20 m   96 % of days   SNR 50 dB   2F2   -87 dBm, S6".
[[nodiscard]] std::string BandReadout(const ResultsTable& table, std::size_t band,
                                      std::size_t hour);

}  // namespace skyhop
