#pragma once

#include <array>
#include <string_view>

#include "engine/results_table.h"
#include "ui/drawing/surface.h"

namespace skyhop {

/// One line of a colour key.
struct ColorKey {
  Color color;
  std::string_view text;
};

/// A line of the key that explains the curves.
struct CurveKey : ColorKey {
  std::size_t row = 0;  ///< the results table's row that the curve shows
};

inline constexpr std::string_view kCurveKeyCaption = "Critical Frequency Colors";

/// Top to bottom. The green is darker than the curve's own: a small square of pure green glares.
inline constexpr std::array<CurveKey, 4> kCurveKeys = {{
    {{{255, 0, 0}, "maximum useable frequency  - 10% confidence"}, rows::kMuf10},
    {{{0, 192, 0}, "maximum useable frequency  - 50% confidence"}, rows::kMuf50},
    {{{0, 0, 255}, "maximum useable frequency  - 90% confidence"}, rows::kMuf90},
    {{{0, 0, 0}, "lowest useable frequency"}, rows::kLuf},
}};

inline constexpr std::string_view kSolarKeyCaption = "Solar Colors";

inline constexpr std::array<ColorKey, 3> kSolarKeys = {{
    {{255, 255, 0}, "day"},
    {{128, 128, 128}, "twilight"},
    {{0, 0, 0}, "night"},
}};

}  // namespace skyhop
