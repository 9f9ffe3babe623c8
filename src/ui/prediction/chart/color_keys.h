#pragma once

#include <array>
#include <string_view>

#include "ui/drawing/chart_palette.h"
#include "ui/drawing/surface.h"
#include "ui/prediction/chart/chart_layout.h"
#include "ui/prediction/chart/chart_model.h"

namespace skyhop {

/// One line of a colour key.
struct ColorKey {
  Color color;
  std::string_view text;
};

inline constexpr std::string_view kCurveKeyCaption = "Critical Frequency Colors";

/// Top to bottom.
inline constexpr std::array<ColorKey, 4> kCurveKeys = {{
    {colors::kMuf10, "maximum useable frequency  - 10% confidence"},
    {colors::kMuf50Key, "maximum useable frequency  - 50% confidence"},
    {colors::kMuf90, "maximum useable frequency  - 90% confidence"},
    {colors::kLuf, "lowest useable frequency"},
}};

inline constexpr std::string_view kSolarKeyCaption = "Solar Colors";

inline constexpr std::array<ColorKey, 3> kSolarKeys = {{
    {colors::kDay, "day"},
    {colors::kTwilight, "twilight"},
    {colors::kNight, "night"},
}};

/// Paints the outline of an area.
void PaintFrame(Surface& surface, const Rectangle& area, Color color);

/// Paints the keys in their room of the layout. A key that the room cannot hold is left out.
void PaintColorKeys(const ChartModel& model, const ChartLayout& layout, Surface& surface);

}  // namespace skyhop
