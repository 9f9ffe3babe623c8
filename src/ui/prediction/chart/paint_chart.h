#pragma once

#include <array>
#include <cstdint>

#include "engine/results_table.h"
#include "ui/drawing/surface.h"
#include "ui/prediction/chart/chart_layout.h"
#include "ui/prediction/chart/chart_model.h"

namespace skyhop {

// The painter of the chart for window, picture files and print. Painting changes neither model nor
// layout; it only writes to the surface and to the model's diagnostics.

/// Paints the whole chart but the time index.
void PaintChart(const ChartModel& model, const ChartLayout& layout, Surface& surface);

/// Paints the time index over a chart.
void PaintTimeIndex(const ChartModel& model, const ChartLayout& layout, Surface& surface);

namespace IONCAPModule {

/// State of a `BandLine`, a level line across the plotting surface.
struct BandLine {
  std::int16_t y = 0;  ///< on the plotting surface
  bool visible = false;
};

/// State of a `BandLabel`.
struct BandLabel {
  double top = 0;  ///< on the form
  bool visible = false;
};

/// Lines and labels by band index.
struct BandMarks {
  std::array<BandLine, kBandCount> lines;
  std::array<BandLabel, kBandCount> labels;
};

// The procedures below paint on the plotting surface, whose origin is its upper left corner. They
// paint nothing unless the model is plotted. Each reports its own failures.

/// Paints a line for each band that the axis covers and shows the labels of these bands.
BandMarks PaintBandLines(const ChartModel& model, const ChartLayout& layout, Surface& ionprop);

/// Paints a bar along each band for the hours in which it is open; a thicker bar is more reliable.
/// Shows the labels of the bands that are open at some hour.
BandMarks PaintOpenings(const ChartModel& model, const ChartLayout& layout, Surface& ionprop);

/// Paints the four curves hour by hour. Results with reliabilities have gaps where they contain no
/// value.
void PaintPlot(const ChartModel& model, const ChartLayout& layout, Surface& ionprop);

}  // namespace IONCAPModule
}  // namespace skyhop
