#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "engine/results_table.h"
#include "ui/drawing/surface.h"
#include "ui/prediction/chart/chart_model.h"

namespace skyhop {

/// The place of everything that a chart shows, in pixels of the surface that it is painted on.
struct ChartLayout {
  double width = 0;       ///< of the surface
  double height = 0;      ///< of the surface
  double text_size = 12;  ///< height of the labels' font

  std::array<double, kHourCount> x_hash{};  ///< x of the hour marks `XHash`, evenly spaced
  std::array<double, kTickCount> y_tick{};  ///< y of the marks `YTick`; 0 is the lowest one
  Rectangle ionprop{};                      ///< the plotting surface `Ionprop`
  std::array<double, kBandCount> band_label_height{};  ///< heights of the labels `BandLabel`
  Rectangle xmit_sun{};                                ///< the row `XmitSun`
  Rectangle rcv_sun{};                                 ///< the row `RcvSun`

  double header_height = 0;  ///< room for title and provenance
  Rectangle keys{};          ///< room for the colour keys; width 0 if the chart shows none
  bool keys_beside = false;  ///< the keys are at the right of the plot instead of below it
  double key_rows = 0;       ///< lines in the frame of each key below the plot

  /// Height of a line of the keys.
  [[nodiscard]] double RowHeight() const { return std::ceil(text_size * 1.22); }
  /// Height of the title and of other lines above the plot.
  [[nodiscard]] double CaptionHeight() const { return std::ceil(text_size * 1.6); }
};

/// Room for the band labels at the right of the plot, in heights of the text.
inline constexpr double kBandLabelRoom = 4.6;

/// A layout whose axes are the left and lower edges of `plot`, the plotting surface. All other
/// places are empty. A surface needs an extra pixel to show a line on its lower or right edge.
[[nodiscard]] ChartLayout EvenLayout(const Rectangle& plot, double band_label_height);

/// Places what `model` shows on a surface of this size. `text_size` is the height of the font. The
/// keys go below the plot, or beside it where the surface is low, and disappear where the surface
/// is too small for both. Hours and divisions of the frequency axis are whole pixels.
[[nodiscard]] ChartLayout ArrangeChart(const ChartModel& model, double width, double height,
                                       double text_size);

}  // namespace skyhop
