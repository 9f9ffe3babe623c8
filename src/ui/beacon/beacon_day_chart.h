#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ui/drawing/chart_palette.h"
#include "ui/drawing/surface.h"

namespace skyhop {

/// A mark of the user's in a row of the day.
struct DayMark {
  double hour = 0;  ///< 0 to 24, UTC
  bool heard = true;
};

/// One beacon on one frequency through the day.
struct DayRow {
  std::string label;
  /// How open the frequency is predicted to be, 0 to 4 by hour; nothing where that is not known.
  std::array<std::optional<std::int16_t>, 24> levels;
  std::vector<DayMark> marks;
  bool now = false;  ///< the beacon to listen for
};

struct DayChart {
  std::string title;
  std::vector<DayRow> rows;
  std::string empty_text;      ///< shown where there are no rows
  std::optional<double> hour;  ///< the time now; nothing on another day
  ChartPalette palette = kLightPalette;
};

/// The words for a level, 0 to 4.
[[nodiscard]] const char* LevelText(std::int16_t level);

/// Draws the day on a surface of that size in pixels; `text_size` is the height of its font. Rows
/// become as low as the surface makes them, their labels no smaller than they can be read.
void PaintDayChart(const DayChart& day, double width, double height, double text_size,
                   Surface& surface);

}  // namespace skyhop
