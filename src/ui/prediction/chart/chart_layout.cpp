#include "ui/prediction/chart/chart_layout.h"

#include <algorithm>

namespace skyhop {
namespace {

/// Beside its keys, a plot must not become smaller than this, in heights of the text.
constexpr double kLeastPlotHeight = 15;
constexpr double kLeastPlotWidth = 20;
/// A plot with keys below it must not become lower than this.
constexpr double kPlotHeightForKeys = 6;

/// Estimated width of the longest line of the keys with its swatch and frame, in heights of the
/// text.
constexpr double kKeyWidth = 24;

}  // namespace

ChartLayout EvenLayout(const Rectangle& plot, double band_label_height) {
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

ChartLayout ArrangeChart(const ChartModel& model, double width, double height, double text_size) {
  const ChartLayout text{.text_size = text_size};
  const double header =
      ((model.title.empty() ? 0 : 1) + (model.provenance.empty() ? 0 : 1)) * text.CaptionHeight();
  const double left = std::ceil(text_size * 4.4);
  // A table has a caption above it.
  const double top =
      header + std::ceil(text_size * 1.9) + (model.TableShown() ? text.CaptionHeight() : 0);
  const double hour_labels = std::ceil(text_size * 2.1);
  const double sun_height = std::ceil(text_size * 0.9);
  double plot_width = width - left - std::ceil(text_size * kBandLabelRoom);
  double plot_height = height - top - hour_labels - 2 * sun_height - std::ceil(text_size * 0.6);

  const double key_rows = model.HasUnreachedHours() ? 6 : 5;
  const double key_height = key_rows * text.RowHeight() + std::ceil(text_size * 1.2);
  const double key_width = std::ceil(text_size * kKeyWidth);
  // The keys explain the chart, not the table.
  const bool keys_wanted = model.color_keys && !model.TableShown();
  // A low window has more spare width than height.
  const bool keys_beside = keys_wanted && plot_height - key_height < text_size * kLeastPlotHeight &&
                           plot_width - key_width > text_size * kLeastPlotWidth;
  const bool keys_below =
      keys_wanted && !keys_beside && plot_height - key_height >= text_size * kPlotHeightForKeys;
  if (keys_beside) plot_width -= key_width;
  if (keys_below) plot_height -= key_height;

  // Lines are sharp and hours are equally wide only in whole pixels.
  const double hour = std::max(4.0, std::floor(plot_width / 24));
  const double division = std::max(8.0, std::floor(plot_height / 5));
  const Rectangle plot{left, top, 24 * hour, 5 * division};
  ChartLayout layout = EvenLayout(plot, std::ceil(text_size * 1.15));
  layout.width = width;
  layout.height = height;
  layout.text_size = text_size;
  layout.header_height = header;
  layout.xmit_sun = {left, plot.Bottom() + hour_labels, plot.width, sun_height};
  layout.rcv_sun = {left, layout.xmit_sun.Bottom() + 3, plot.width, sun_height};
  layout.keys_beside = keys_beside;
  layout.key_rows = key_rows;
  if (keys_beside || keys_below) {
    const double keys_left = keys_beside ? std::floor(width - key_width) : left;
    const double keys_top =
        keys_beside ? top : layout.rcv_sun.Bottom() + std::round(text_size * 0.7);
    layout.keys = {keys_left, keys_top, width - keys_left, height - keys_top};
  }
  return layout;
}

}  // namespace skyhop
