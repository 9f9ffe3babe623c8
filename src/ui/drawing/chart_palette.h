#pragma once

#include "ui/drawing/surface.h"

namespace skyhop {

/// Colours of the chart's surroundings, for a light or a dark desktop. The colours of the curves,
/// the open bands and the solar bars are the same on both.
struct ChartPalette {
  Color background{};  ///< around the plot
  Color paper{};       ///< of the plot; light on both, since the LUF is black
  Color ink{};         ///< headings
  Color text{};        ///< labels
  Color muted{};       ///< what is not in the prediction
  Color axis{};
  Color band{};        ///< band lines
  Color grid{};        ///< hour lines
  Color open_text{};   ///< labels of open bands
  Color time{};        ///< time index and band indicator
  Color time_text{};   ///< label of the time index
  Color old_paper{};   ///< of the plot when the chart is an earlier prediction's
  Color old_text{};    ///< what says so
  Color paper_text{};  ///< on the paper
  Color shade{};       ///< behind hours that do not reach the required reliability
  Color hatch{};       ///< the hatching on it

  friend constexpr bool operator==(const ChartPalette&, const ChartPalette&) = default;
};

inline constexpr ChartPalette kLightPalette{
    .background = {250, 250, 251},
    .paper = {255, 255, 255},
    .ink = {32, 36, 44},
    .text = {62, 68, 80},
    .muted = {128, 134, 145},
    .axis = {110, 116, 128},
    .band = {204, 209, 217},
    .grid = {238, 240, 244},
    .open_text = {168, 0, 168},
    .time = {214, 122, 0},
    .time_text = {160, 86, 0},
    .old_paper = {255, 243, 214},
    .old_text = {130, 70, 0},
    .paper_text = {72, 78, 90},
    .shade = {235, 237, 240},
    .hatch = {182, 187, 196},
};

inline constexpr ChartPalette kDarkPalette{
    .background = {45, 45, 48},
    .paper = {226, 228, 232},
    .ink = {240, 240, 242},
    .text = {206, 209, 214},
    .muted = {140, 145, 153},
    .axis = {150, 155, 163},
    .band = {182, 187, 196},
    .grid = {210, 213, 219},
    .open_text = {255, 150, 255},
    .time = {232, 132, 0},
    .time_text = {255, 178, 82},
    .old_paper = {236, 224, 196},
    .old_text = {110, 58, 0},
    .paper_text = {72, 78, 90},
    .shade = {200, 203, 209},
    .hatch = {150, 155, 164},
};

}  // namespace skyhop
