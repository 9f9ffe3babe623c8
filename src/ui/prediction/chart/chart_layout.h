#pragma once

#include <array>
#include <cstddef>

#include "engine/results_table.h"
#include "ui/drawing/surface.h"

namespace skyhop {

/// Number of tick marks, frequency labels and therefore divisions plus one of the frequency axis.
inline constexpr std::size_t kTickCount = 6;

/// Where a form has the marks that the chart is measured by, in the form's pixels.
struct ChartLayout {
  std::array<double, kHourCount> x_hash{};  ///< x of the hour marks `XHash`, evenly spaced
  std::array<double, kTickCount> y_tick{};  ///< y of the marks `YTick`; 0 is the lowest one
  Rectangle ionprop;                        ///< the plotting surface `Ionprop`
  std::array<double, kBandCount> band_label_height{};  ///< heights of the labels `BandLabel`
};

/// The layout in which the axes run along the left and lower edge of `plot`, which is the plotting
/// surface too. A surface that is to show a line on its lower or right edge has to be larger by
/// that line's width.
[[nodiscard]] constexpr ChartLayout EvenLayout(const Rectangle& plot, double band_label_height) {
  ChartLayout layout;
  layout.ionprop = plot;
  for (std::size_t hour = 0; hour < kHourCount; ++hour) {
    layout.x_hash[hour] =
        plot.left + plot.width * static_cast<double>(hour) / static_cast<double>(kHourCount - 1);
  }
  for (std::size_t tick = 0; tick < kTickCount; ++tick) {
    layout.y_tick[tick] = plot.Bottom() - plot.height * static_cast<double>(tick) /
                                              static_cast<double>(kTickCount - 1);
  }
  layout.band_label_height.fill(band_label_height);
  return layout;
}

}  // namespace skyhop
