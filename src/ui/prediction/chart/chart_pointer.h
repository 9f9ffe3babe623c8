#pragma once

#include <cstdint>
#include <string>

#include "ui/drawing/surface.h"
#include "ui/prediction/chart/chart_layout.h"
#include "ui/prediction/chart/chart_model.h"

namespace skyhop {

// What a pointer finds at a place of a chart, and the texts for it.

/// The time index can be grabbed at this distance, in pixels.
inline constexpr double kGrabDistance = 5;

/// x of the time index on the surface.
[[nodiscard]] double TimeLineX(const ChartModel& model, const ChartLayout& layout);

/// Whether the time index can be grabbed at a place.
[[nodiscard]] bool OnTimeLine(const ChartModel& model, const ChartLayout& layout, Point at);

/// Index of the band at a height of the chart or in a row of the table; -1 for none.
[[nodiscard]] std::int16_t BandAt(const ChartModel& model, const ChartLayout& layout, Point at);

/// Time, frequency, band, LUF and MUFs at a place of the plot. Results with reliabilities yield the
/// prediction for the band there instead. Empty outside the plot.
[[nodiscard]] std::string ReadoutAt(const ChartModel& model, const ChartLayout& layout, Point at);

/// Time, LUF, MUFs and open bands at the time index; empty without a result.
[[nodiscard]] std::string ReadoutAtTimeIndex(const ChartModel& model);

/// The tool tip at a place; empty for none.
[[nodiscard]] std::string ToolTipAt(const ChartModel& model, const ChartLayout& layout, Point at);

}  // namespace skyhop
