#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ui/drawing/chart_palette.h"
#include "ui/drawing/surface.h"

namespace skyhop {

/// A mark in a row of the day.
struct DayMark {
  double hour = 0;  ///< 0 to 24, UTC
  bool heard = true;
};

/// One beacon on one frequency through the day.
struct DayRow {
  std::string label;
  /// Predicted level by hour, 0 to 4; nothing if it is unknown.
  std::array<std::optional<std::int16_t>, 24> levels;
  std::vector<DayMark> marks;
  bool now = false;  ///< the beacon to listen for
};

struct DayChart {
  std::string title;
  std::vector<DayRow> rows;
  std::string empty_text;      ///< shown instead of rows if there are none
  std::optional<double> hour;  ///< the present time; nothing on another day
  ChartPalette palette = kLightPalette;
};

/// The word for a level, 0 to 4.
[[nodiscard]] const char* LevelText(std::int16_t level);

/// Draws the day on a surface of that size in pixels; `text_size` is the height of its font. Rows
/// become lower on a small surface. A label that would be too small to read is left out.
void PaintDayChart(const DayChart& day, double width, double height, double text_size,
                   Surface& surface);

}  // namespace skyhop
