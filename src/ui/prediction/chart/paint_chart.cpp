#include "ui/prediction/chart/paint_chart.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "bands/bands.h"
#include "ui/drawing/surface_views.h"
#include "ui/drawing/text_width.h"
#include "ui/prediction/chart/chart_scale.h"
#include "ui/prediction/chart/color_keys.h"
#include "ui/prediction/chart/reliability_table.h"

namespace skyhop {
namespace {

using IONCAPModule::BandMarks;
using IONCAPModule::ChartScale;

constexpr double kTickLength = 4;
constexpr double kLabelGap = 4;
constexpr double kLeaderLength = 10;  ///< from the plot's edge to a band label

constexpr std::string_view kOldCaption = "Previous prediction";

Color SunColor(SunState state) {
  if (state == SunState::kDay) return colors::kDay;
  return state == SunState::kTwilight ? colors::kTwilight : colors::kNight;
}

/// Paints the parts of a chart.
class ChartPainter {
 public:
  ChartPainter(const ChartModel& model, const ChartLayout& layout, Surface& surface)
      : model_(model),
        palette_(model.palette),
        layout_(layout),
        plot_(layout.ionprop),
        size_(layout.text_size),
        scale_(model, layout),
        surface_(surface) {}

  void Paint() {
    surface_.Clear(palette_.background);
    surface_.FillRectangle(plot_, model_.old ? palette_.old_paper : palette_.paper);
    PaintHeader();
    if (model_.TableShown()) {
      PaintTable();
    } else {
      PaintPlotArea();
    }
    PaintTimeAxis();
    PaintSunRow(layout_.xmit_sun, model_.sun.xmit_sun, "You");
    PaintSunRow(layout_.rcv_sun, model_.sun.rcv_sun, "DX");
    if (layout_.keys.width > 0) PaintColorKeys(model_, layout_, surface_);
  }

  void PaintTimeIndex() {
    // A time on half a pixel rounds up, whatever the error of its representation.
    const double x = std::round(plot_.left + scale_.XForTime(model_.time_index) + 1e-6);
    const double head = std::round(size_ * 0.35);
    surface_.Line({x, plot_.top - head}, {x, layout_.rcv_sun.Bottom()}, {palette_.time});
    surface_.FillRectangle({x - head + 1, plot_.top - head, 2 * head - 1, head}, palette_.time);
    TextStyle style = Bold(palette_.time_text);
    style.vertical = VerticalAlign::kBottom;
    style.horizontal = HorizontalAlign::kCenter;
    // The ends of the day belong to "MHz" and the heading of the bands.
    if (x - plot_.left < size_ * 1.6) style.horizontal = HorizontalAlign::kLeft;
    if (plot_.Right() - x < size_ * 2.4) style.horizontal = HorizontalAlign::kRight;
    surface_.Text({x, plot_.top - head - 1}, ClockText(model_.time_index), style);
  }

 private:
  [[nodiscard]] TextStyle Normal(Color color) const { return {.size = size_, .color = color}; }
  [[nodiscard]] TextStyle Bold(Color color) const {
    return {.size = size_, .color = color, .weight = FontWeight::kBold};
  }

  /// Writes as much of a line as the surface has room for. The surface measures a text better than
  /// the estimate that shortens it.
  void WriteLine(Point at, std::string_view text, const TextStyle& style) {
    const double room = layout_.width - at.x;
    if (surface_.TextExtent(text, style) <= room) {
      surface_.Text(at, text, style);
    } else {
      surface_.Text(at, Shortened(text, room, style.size, style.weight), style);
    }
  }

  void PaintHeader() {
    double middle = std::round(layout_.CaptionHeight() / 2);
    if (!model_.title.empty()) {
      WriteLine({plot_.left, middle}, model_.title, Bold(palette_.ink));
      middle += layout_.CaptionHeight();
    }
    if (!model_.provenance.empty()) {
      WriteLine({plot_.left, middle}, model_.provenance, Normal(palette_.text));
    }
  }

  void PaintPlotArea() {
    PaintUnreachedHours();
    for (std::size_t hour = 1; hour + 1 < kHourCount; ++hour) {
      const double x = plot_.left + scale_.XDataScale(hour);
      surface_.Line({x, plot_.top}, {x, plot_.Bottom()}, {palette_.grid});
    }
    if (model_.plotted) {
      PaintCurvesAndBands();
      if (model_.old) {
        surface_.Text({plot_.left + size_, plot_.top + size_},
                      Shortened(kOldCaption, plot_.width, size_, FontWeight::kBold),
                      Bold(palette_.old_text));
      }
    } else {
      PaintEmpty();
    }
    PaintFrequencyAxis();
  }

  /// Hatches the hours that do not reach the required reliability. The points of the curves are at
  /// full hours, so each hour extends half an hour to both sides.
  void PaintUnreachedHours() {
    if (!model_.plotted) return;
    PartSurface plot(surface_, plot_);
    // The paper of an old chart shows through.
    ChartPalette palette = palette_;
    if (model_.old) palette.shade = palette_.old_paper;
    const double width = plot_.width / static_cast<double>(kHourCount - 1);
    for (std::size_t hour = 0; hour < kHourCount;) {
      std::size_t end = hour;
      while (end < kHourCount && !model_.table.reached.at(end)) ++end;
      const double left = std::max(0.0, std::round((static_cast<double>(hour) - 0.5) * width));
      const double right =
          std::min(plot_.width, std::round((static_cast<double>(end) - 0.5) * width));
      if (end > hour) PaintHatching(plot, {left, 0, right - left, plot_.height}, palette, size_);
      hour = end + 1;
    }
  }

  void PaintCurvesAndBands() {
    if (!model_.axis.HasExtent()) {
      WriteOnPaper(plot_.top + plot_.height / 2, "The results hold no frequencies");
      return;
    }
    PartSurface ionprop(surface_, plot_);
    PaintBandLabels(model_.open_band_enable
                        ? IONCAPModule::PaintOpenings(model_, layout_, ionprop)
                        : IONCAPModule::PaintBandLines(model_, layout_, ionprop));
    if (model_.plot_enable) IONCAPModule::PaintPlot(model_, layout_, ionprop);
  }

  /// The cells cover the paper, so a caption marks an old table.
  void PaintTable() {
    PaintBandTable(surface_, model_.Day(), plot_, size_, palette_);
    const double top = layout_.header_height;
    const double middle = top + std::round(layout_.CaptionHeight() / 2);
    double left = plot_.left;
    if (model_.old) {
      const TextStyle style = Bold(palette_.old_text);
      const double width = std::ceil(surface_.TextExtent(kOldCaption, style) + size_);
      surface_.FillRectangle({left, top, width, layout_.CaptionHeight()}, palette_.old_paper);
      surface_.Text({left + size_ / 2, middle}, kOldCaption, style);
      left += width + size_;
    }
    WriteLine({left, middle}, TableCaption(model_.Day()), Normal(palette_.text));
  }

  void WriteOnPaper(double y, std::string_view text) {
    surface_.Text({plot_.left + plot_.width / 2, y}, text,
                  {.size = size_ * 1.2,
                   .color = palette_.paper_text,
                   .horizontal = HorizontalAlign::kCenter});
  }

  void PaintEmpty() {
    std::string_view rest = model_.empty_text;
    const double size = size_ * 1.2;
    const auto lines = static_cast<double>(1 + std::count(rest.begin(), rest.end(), '\n'));
    double y = plot_.top + plot_.height / 2 - (lines - 1) * size * 0.8;
    while (!rest.empty()) {
      const std::size_t end = rest.find('\n');
      WriteOnPaper(y, Shortened(rest.substr(0, end), plot_.width, size, FontWeight::kNormal));
      rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
      y += size * 1.6;
    }
  }

  /// Writes the name of each band with a visible label beside its line. The band with the indicator
  /// has a name too.
  void PaintBandLabels(const BandMarks& marks) {
    std::vector<std::size_t> bands;
    std::vector<double> places;
    for (std::size_t band = kBandCount; band-- > 0;) {
      if (!marks.lines[band].visible || !(marks.labels[band].visible || IsIndicated(band)))
        continue;
      bands.push_back(band);
      places.push_back(plot_.top + marks.lines[band].y);
    }
    SpreadApart(places, std::ceil(size_ * 1.15), plot_.top, plot_.Bottom());
    if (!bands.empty()) {
      TextStyle style = Bold(palette_.text);
      style.horizontal = HorizontalAlign::kRight;
      style.vertical = VerticalAlign::kTop;
      surface_.Text({plot_.Right() + std::ceil(size_ * kBandLabelRoom), layout_.header_height},
                    "Prediction", style);
    }
    for (std::size_t i = 0; i < bands.size(); ++i) {
      const bool open = model_.open_band_enable && marks.labels[bands[i]].visible;
      PaintBandLabel(bands[i], plot_.top + marks.lines[bands[i]].y, places[i], open);
    }
  }

  [[nodiscard]] bool IsIndicated(std::size_t band) const {
    return model_.band_indicator == static_cast<std::int16_t>(band);
  }

  void PaintBandLabel(std::size_t band, double line_y, double label_y, bool open) {
    surface_.Line({plot_.Right(), line_y}, {plot_.Right() + kLeaderLength, std::round(label_y)},
                  {palette_.band});
    surface_.Text({plot_.Right() + kLeaderLength + 3, label_y}, kBandLabelTexts[band],
                  open ? Bold(palette_.open_text) : Normal(palette_.text));
    if (!IsIndicated(band)) return;
    const double side = std::round(size_ * 0.55);
    surface_.FillRectangle(
        {plot_.Right() + std::ceil(size_ * 3.9), std::round(label_y - side / 2), side, side},
        palette_.time);
  }

  void PaintTimeAxis() {
    const double y = plot_.Bottom();
    surface_.Line({plot_.left, y}, {plot_.Right(), y}, {palette_.axis});
    TextStyle style = Normal(palette_.text);
    style.horizontal = HorizontalAlign::kCenter;
    style.vertical = VerticalAlign::kTop;
    // Each label needs room for two digits and a gap.
    const double hour_width = plot_.width / 24;
    const std::size_t every = hour_width > size_ * 1.6 ? 1 : hour_width > size_ ? 2 : 3;
    for (std::size_t hour = 0; hour < kHourCount; ++hour) {
      const double x = plot_.left + scale_.XDataScale(hour);
      surface_.Line({x, y}, {x, y + kTickLength}, {palette_.axis});
      if (hour % every == 0) surface_.Text({x, y + kTickLength + 2}, std::to_string(hour), style);
    }
    style.horizontal = HorizontalAlign::kRight;
    style.weight = FontWeight::kBold;
    surface_.Text({plot_.left - kTickLength - kLabelGap, y + kTickLength + 2}, "UTC", style);
  }

  void PaintFrequencyAxis() {
    const double x = plot_.left;
    surface_.Line({x, plot_.top}, {x, plot_.Bottom()}, {palette_.axis});
    if (!model_.axis.HasExtent()) return;
    TextStyle style = Normal(palette_.text);
    style.horizontal = HorizontalAlign::kRight;
    for (std::size_t tick = 0; tick < kTickCount; ++tick) {
      const double y = layout_.y_tick[tick];
      surface_.Line({x - kTickLength, y}, {x, y}, {palette_.axis});
      surface_.Text({x - kTickLength - kLabelGap, y}, model_.axis.y_labels[tick], style);
    }
    style.vertical = VerticalAlign::kTop;
    style.weight = FontWeight::kBold;
    surface_.Text({x - kTickLength - kLabelGap, layout_.header_height}, "MHz", style);
  }

  void PaintSunRow(const Rectangle& area, const SunRow& row, std::string_view caption) {
    TextStyle style = Normal(palette_.text);
    style.horizontal = HorizontalAlign::kRight;
    surface_.Text({area.left - kTickLength - kLabelGap, area.top + area.height / 2}, caption,
                  style);
    for (std::size_t hour = 0; row.known && hour < row.states.size(); ++hour) {
      const double left = area.left + scale_.XDataScale(hour);
      const double width = scale_.XDataScale(hour + 1) - scale_.XDataScale(hour);
      surface_.FillRectangle({left + 1, area.top, width - 1, area.height},
                             SunColor(row.states[hour]));
    }
    PaintFrame(surface_, area, palette_.axis);
  }

  const ChartModel& model_;
  const ChartPalette& palette_;
  const ChartLayout& layout_;
  const Rectangle& plot_;
  double size_;
  ChartScale scale_;
  Surface& surface_;
};

}  // namespace

void PaintChart(const ChartModel& model, const ChartLayout& layout, Surface& surface) {
  ChartPainter(model, layout, surface).Paint();
}

void PaintTimeIndex(const ChartModel& model, const ChartLayout& layout, Surface& surface) {
  ChartPainter(model, layout, surface).PaintTimeIndex();
}

}  // namespace skyhop
