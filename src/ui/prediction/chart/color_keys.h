#pragma once

#include <array>
#include <string_view>

#include "ui/drawing/surface.h"
#include "ui/prediction/chart/chart_layout.h"
#include "ui/prediction/chart/chart_model.h"

namespace skyhop {

namespace IONCAPModule {
/// The colour of open stretches.
inline constexpr Color kOpenBandColor{255, 0, 255};
}  // namespace IONCAPModule

/// One line of a color key.
struct ColorKey {
  Color color;
  std::string_view text;
};

inline constexpr std::string_view kCurveKeyCaption = "Critical Frequency Colors";

/// Top to bottom. The green is darker than the curve's own: a small square of pure green glares.
inline constexpr std::array<ColorKey, 4> kCurveKeys = {{
    {{255, 0, 0}, "maximum useable frequency  - 10% confidence"},
    {{0, 192, 0}, "maximum useable frequency  - 50% confidence"},
    {{0, 0, 255}, "maximum useable frequency  - 90% confidence"},
    {{0, 0, 0}, "lowest useable frequency"},
}};

inline constexpr std::string_view kSolarKeyCaption = "Solar Colors";

inline constexpr std::array<ColorKey, 3> kSolarKeys = {{
    {{255, 255, 0}, "day"},
    {{128, 128, 128}, "twilight"},
    {{0, 0, 0}, "night"},
}};

/// The color of the sun's state.
[[nodiscard]] Color SunColor(SunState state);

/// Paints the outline of an area.
void PaintFrame(Surface& surface, const Rectangle& area, Color color);

/// Paints the keys in their room of the layout. A key that the room cannot hold is left out.
void PaintColorKeys(const ChartModel& model, const ChartLayout& layout, Surface& surface);

}  // namespace skyhop
