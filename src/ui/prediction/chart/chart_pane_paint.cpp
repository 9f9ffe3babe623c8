// How the chart's pane looks.

#include <algorithm>
#include <cmath>
#include <vector>

#include "bands/bands.h"
#include "ui/drawing/label_spread.h"
#include "ui/drawing/surface_views.h"
#include "ui/drawing/text_width.h"
#include "ui/prediction/chart/chart_pane.h"
#include "ui/prediction/chart/color_key.h"
#include "ui/prediction/chart/picture_key.h"
#include "ui/prediction/chart/reliability_table.h"

namespace skyhop {
namespace {

constexpr double kPaneTick = 4;
constexpr double kPaneLabelGap = 4;
constexpr double kPaneLeader = 10;  ///< from the plot's edge to a band label
constexpr double kSampleLength = 30;

constexpr std::string_view kOldCaption = "Previous prediction";
constexpr std::string_view kUnreachedKey = "required reliability not reached";

constexpr Color SunColor(SunState state) {
  switch (state) {
    case SunState::kDay:
      return kSolarKeys[0].color;
    case SunState::kTwilight:
      return kSolarKeys[1].color;
    case SunState::kNight:
      break;
  }
  return kSolarKeys[2].color;
}

void PaintFrame(Surface& surface, const Rectangle& area, Color color) {
  const Pen pen{color};
  const Point corners[] = {{area.left, area.top},
                           {area.Right(), area.top},
                           {area.Right(), area.Bottom()},
                           {area.left, area.Bottom()}};
  for (std::size_t i = 0; i < 4; ++i) surface.Line(corners[i], corners[(i + 1) % 4], pen);
}

/// A line as far as `width` has room for it. The surface knows the width of a text better than the
/// guess that shortens it.
std::string Fitting(Surface& surface, std::string_view text, double width, const TextStyle& style) {
  if (surface.TextExtent(text, style) <= width) return std::string(text);
  return Shortened(text, width, style.size, style.weight);
}

/// Framed groups of lines, each with a sample of what it explains, side by side or one below the
/// other.
class KeyPainter {
 public:
  KeyPainter(Surface& surface, const ChartPalette& palette, const Rectangle& room, double text_size,
             double row_height, double rows, bool downward)
      : surface_(&surface),
        palette_(&palette),
        room_(room),
        at_{room.left, room.top},
        size_(text_size),
        row_(row_height),
        rows_(rows),
        downward_(downward) {}

  /// Draws a frame; `paint_sample` draws the sample of a line from a point on.
  template <class Lines, class PaintSample>
  void Frame(std::string_view caption, const Lines& lines, double sample_width,
             PaintSample paint_sample) {
    double text_width = surface_->TextExtent(caption, {.size = size_, .weight = FontWeight::kBold});
    for (const auto& line : lines) {
      text_width = std::max(
          text_width, sample_width + size_ / 2 + surface_->TextExtent(line.text, {.size = size_}));
    }
    const double padding = std::round(size_ * 0.7);
    const auto rows = downward_ ? static_cast<double>(lines.size() + 1) : rows_;
    const Rectangle area{at_.x, at_.y, std::ceil(text_width) + 2 * padding,
                         rows * row_ + std::round(size_ / 2)};
    // Half a frame would be worse than none.
    if (area.Right() > room_.Right() || area.Bottom() > room_.Bottom()) return;
    PaintFrame(*surface_, area, palette_->band);
    Point line_start{area.left + padding, area.top + std::round(row_ * 0.5 + size_ / 4)};
    surface_->Text(line_start, caption,
                   {.size = size_, .color = palette_->ink, .weight = FontWeight::kBold});
    for (const auto& line : lines) {
      line_start.y += row_;
      paint_sample(line, line_start);
      surface_->Text({line_start.x + sample_width + size_ / 2, line_start.y}, line.text,
                     {.size = size_, .color = palette_->text});
    }
    if (downward_) {
      at_.y = area.Bottom() + std::round(size_ * 0.7);
    } else {
      at_.x = area.Right() + std::round(size_);
    }
  }

  template <class Lines>
  void Swatches(std::string_view caption, const Lines& lines) {
    const double side = std::round(size_ * 0.85);
    Frame(caption, lines, side, [&](const ColorKey& key, Point at) {
      const Rectangle swatch{at.x, at.y - std::floor(side / 2), side, side};
      surface_->FillRectangle(swatch, key.color);
      PaintFrame(*surface_, swatch, palette_->axis);
    });
  }

  /// The bars of open bands and, with `unreached`, the hatching of hours.
  void Bars(std::string_view caption, std::span<const BarMeaning> bars, bool unreached) {
    const double height = std::round(row_ * 0.8);
    std::vector<BarMeaning> lines(bars.begin(), bars.end());
    if (unreached) lines.push_back({{.width = 0}, kUnreachedKey});
    Frame(caption, lines, kSampleLength, [&](const BarMeaning& bar, Point at) {
      const Rectangle sample{at.x, std::round(at.y - height / 2), kSampleLength, height};
      // Thin bars are seen on the paper only, which is light on a dark desktop too.
      surface_->FillRectangle(sample, palette_->paper);
      if (bar.pen.width > 0) {
        surface_->Line(at, {at.x + kSampleLength, at.y}, bar.pen);
      } else {
        PaintHatching(*surface_, sample, *palette_, size_);
      }
    });
  }

 private:
  Surface* surface_;
  const ChartPalette* palette_;
  Rectangle room_;
  Point at_;
  double size_;
  double row_;
  double rows_;  ///< of each frame that stands beside others
  bool downward_;
};

}  // namespace

void ChartPane::Paint(Surface& surface) {
  surface.Clear(palette_.background);
  surface.FillRectangle(plot_, old_ ? palette_.old_paper : palette_.paper);
  PaintHeader(surface);
  if (TableShown()) {
    PaintTable(surface);
  } else {
    PaintChart(surface);
  }
  PaintTimeAxis(surface);
  PaintSunRow(surface, xmit_sun_, sun_.xmit_sun, "You");
  PaintSunRow(surface, rcv_sun_, sun_.rcv_sun, "DX");
  if (KeysShown()) PaintKeys(surface);
}

void ChartPane::PaintHeader(Surface& surface) const {
  const double middle = std::round(CaptionHeight() / 2);
  const double room = width_ - plot_.left;
  if (!title_.empty()) {
    const TextStyle style{.size = text_size_, .color = palette_.ink, .weight = FontWeight::kBold};
    surface.Text({plot_.left, middle}, Fitting(surface, title_, room, style), style);
  }
  if (provenance_.empty()) return;
  const TextStyle style{.size = text_size_, .color = palette_.text};
  surface.Text({plot_.left, middle + (title_.empty() ? 0 : CaptionHeight())},
               Fitting(surface, provenance_, room, style), style);
}

/// Hatches the hours that do not reach the required reliability. The curves' points stand at full
/// hours, so each hour reaches half an hour to both sides.
void ChartPane::PaintUnreachedHours(Surface& surface) const {
  if (!HasResult()) return;
  PartSurface plot(surface, plot_);
  // The paper of an old chart shows through.
  ChartPalette palette = palette_;
  if (old_) palette.shade = palette_.old_paper;
  const double width = plot_.width / static_cast<double>(kHourCount - 1);
  for (std::size_t hour = 0; hour < kHourCount;) {
    std::size_t end = hour;
    while (end < kHourCount && !shown_.reached.at(end)) ++end;
    const double left = std::max(0.0, std::round((static_cast<double>(hour) - 0.5) * width));
    const double right =
        std::min(plot_.width, std::round((static_cast<double>(end) - 0.5) * width));
    if (end > hour) PaintHatching(plot, {left, 0, right - left, plot_.height}, palette, text_size_);
    hour = end + 1;
  }
}

void ChartPane::PaintChart(Surface& surface) {
  PaintUnreachedHours(surface);
  for (std::size_t hour = 1; hour + 1 < kHourCount; ++hour) {
    const double x = plot_.left + chart_.XDataScale(hour);
    surface.Line({x, plot_.top}, {x, plot_.Bottom()}, {palette_.grid});
  }
  if (HasResult()) {
    PaintPlot(surface);
  } else {
    PaintEmpty(surface);
  }
  PaintFrequencyAxis(surface);
}

void ChartPane::PaintPlot(Surface& surface) {
  PaintCurvesAndBands(surface);
  if (!old_) return;
  surface.Text({plot_.left + text_size_, plot_.top + text_size_},
               Shortened(kOldCaption, plot_.width, text_size_, FontWeight::kBold),
               {.size = text_size_, .color = palette_.old_text, .weight = FontWeight::kBold});
}

void ChartPane::PaintCurvesAndBands(Surface& surface) {
  if (!chart_.HasAxis()) {
    surface.Text({plot_.left + plot_.width / 2, plot_.top + plot_.height / 2},
                 "The results hold no frequencies",
                 {.size = text_size_ * 1.2,
                  .color = palette_.paper_text,
                  .horizontal = HorizontalAlign::kCenter});
    return;
  }
  PartSurface plot(surface, plot_);
  // Where the bands lie is needed in both cases; their lines are drawn while their openings are
  // not.
  chart_.PaintBandLines();
  if (open_band_enable_) {
    chart_.PaintOpenings(plot);
  } else {
    for (const IONCAPModule::BandLine& line : chart_.BandLines()) {
      if (!line.visible) continue;
      const auto y = static_cast<double>(line.y);
      plot.Line({0, y}, {plot_.width, y}, {palette_.band});
    }
  }
  PaintBandLabels(surface);
  if (plot_enable_) chart_.PaintPlot(plot);
}

/// The cells leave no paper to be coloured, so an old table is told by its caption.
void ChartPane::PaintTable(Surface& surface) const {
  PaintBandTable(surface, Day(), plot_, text_size_, palette_);
  const double top = HeaderHeight();
  const double middle = top + std::round(CaptionHeight() / 2);
  double left = plot_.left;
  if (old_) {
    const TextStyle style{
        .size = text_size_, .color = palette_.old_text, .weight = FontWeight::kBold};
    const double width = std::ceil(surface.TextExtent(kOldCaption, style) + text_size_);
    surface.FillRectangle({left, top, width, CaptionHeight()}, palette_.old_paper);
    surface.Text({left + text_size_ / 2, middle}, kOldCaption, style);
    left += width + text_size_;
  }
  const TextStyle style{.size = text_size_, .color = palette_.text};
  surface.Text({left, middle}, Fitting(surface, TableCaption(Day()), width_ - left, style), style);
}

void ChartPane::PaintEmpty(Surface& surface) const {
  std::string_view rest = empty_text_;
  const double size = text_size_ * 1.2;
  const auto lines = static_cast<double>(1 + std::count(rest.begin(), rest.end(), '\n'));
  double y = plot_.top + plot_.height / 2 - (lines - 1) * size * 0.8;
  while (!rest.empty()) {
    const std::size_t end = rest.find('\n');
    surface.Text(
        {plot_.left + plot_.width / 2, y},
        Shortened(rest.substr(0, end), plot_.width, size, FontWeight::kNormal),
        {.size = size, .color = palette_.paper_text, .horizontal = HorizontalAlign::kCenter});
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    y += size * 1.6;
  }
}

/// Beside each band line that carries a label the band's name; the indicator beside its band.
void ChartPane::PaintBandLabels(Surface& surface) const {
  std::vector<std::size_t> bands;
  std::vector<double> places;
  for (std::size_t band = kBandCount; band-- > 0;) {
    const bool indicated = band_indicator_ == static_cast<std::int16_t>(band);
    if (!chart_.BandLines()[band].visible) continue;
    if (!chart_.BandLabels()[band].visible && !indicated) continue;
    bands.push_back(band);
    places.push_back(plot_.top + chart_.BandLines()[band].y);
  }
  SpreadApart(places, std::ceil(text_size_ * 1.15), plot_.top, plot_.Bottom());
  if (!bands.empty()) {
    surface.Text({plot_.Right() + std::ceil(text_size_ * kRightMargin), HeaderHeight()},
                 "Prediction",
                 {.size = text_size_,
                  .color = palette_.text,
                  .horizontal = HorizontalAlign::kRight,
                  .vertical = VerticalAlign::kTop,
                  .weight = FontWeight::kBold});
  }
  for (std::size_t i = 0; i < bands.size(); ++i) {
    const std::size_t band = bands[i];
    const double line_y = plot_.top + chart_.BandLines()[band].y;
    const double label_x = plot_.Right() + kPaneLeader + 3;
    const bool open = open_band_enable_ && chart_.BandLabels()[band].visible;
    surface.Line({plot_.Right(), line_y}, {plot_.Right() + kPaneLeader, std::round(places[i])},
                 {palette_.band});
    surface.Text({label_x, places[i]}, kBandLabelTexts[band],
                 {.size = text_size_,
                  .color = open ? palette_.open_text : palette_.text,
                  .weight = open ? FontWeight::kBold : FontWeight::kNormal});
    if (band_indicator_ != static_cast<std::int16_t>(band)) continue;
    const double side = std::round(text_size_ * 0.55);
    surface.FillRectangle(
        {plot_.Right() + std::ceil(text_size_ * 3.9), std::round(places[i] - side / 2), side, side},
        palette_.time);
  }
}

void ChartPane::PaintTimeAxis(Surface& surface) const {
  const double y = plot_.Bottom();
  surface.Line({plot_.left, y}, {plot_.Right(), y}, {palette_.axis});
  TextStyle style{.size = text_size_,
                  .color = palette_.text,
                  .horizontal = HorizontalAlign::kCenter,
                  .vertical = VerticalAlign::kTop};
  // As many labels as there is room for two digits and a gap.
  const double hour_width = plot_.width / 24;
  const std::size_t every = hour_width > text_size_ * 1.6 ? 1 : hour_width > text_size_ ? 2 : 3;
  for (std::size_t hour = 0; hour < kHourCount; ++hour) {
    const double x = plot_.left + chart_.XDataScale(hour);
    surface.Line({x, y}, {x, y + kPaneTick}, {palette_.axis});
    if (hour % every == 0) surface.Text({x, y + kPaneTick + 2}, std::to_string(hour), style);
  }
  style.horizontal = HorizontalAlign::kRight;
  style.weight = FontWeight::kBold;
  surface.Text({plot_.left - kPaneTick - kPaneLabelGap, y + kPaneTick + 2}, "UTC", style);
}

void ChartPane::PaintFrequencyAxis(Surface& surface) const {
  const double x = plot_.left;
  surface.Line({x, plot_.top}, {x, plot_.Bottom()}, {palette_.axis});
  if (!chart_.HasAxis()) return;
  TextStyle style{
      .size = text_size_, .color = palette_.text, .horizontal = HorizontalAlign::kRight};
  for (std::size_t tick = 0; tick < kTickCount; ++tick) {
    const double y = chart_.Layout().y_tick[tick];
    surface.Line({x - kPaneTick, y}, {x, y}, {palette_.axis});
    surface.Text({x - kPaneTick - kPaneLabelGap, y}, chart_.YLabels()[tick], style);
  }
  style.vertical = VerticalAlign::kTop;
  style.weight = FontWeight::kBold;
  surface.Text({x - kPaneTick - kPaneLabelGap, HeaderHeight()}, "MHz", style);
}

void ChartPane::PaintSunRow(Surface& surface, const Rectangle& area, const SunRow& row,
                            std::string_view caption) const {
  surface.Text({area.left - kPaneTick - kPaneLabelGap, area.top + area.height / 2}, caption,
               {.size = text_size_, .color = palette_.text, .horizontal = HorizontalAlign::kRight});
  if (row.known) {
    for (std::size_t hour = 0; hour < row.states.size(); ++hour) {
      const double left = area.left + chart_.XDataScale(hour);
      const double width = chart_.XDataScale(hour + 1) - chart_.XDataScale(hour);
      surface.FillRectangle({left + 1, area.top, width - 1, area.height},
                            SunColor(row.states[hour]));
    }
  }
  PaintFrame(surface, area, palette_.axis);
}

void ChartPane::PaintKeys(Surface& surface) const {
  Rectangle room{plot_.left, rcv_sun_.Bottom() + std::round(text_size_ * 0.7), 0, 0};
  if (keys_beside_) room = {std::floor(width_ - KeyWidth()), plot_.top, 0, 0};
  room.width = width_ - room.left;
  room.height = height_ - room.top;
  const double rows = HasUnreachedHours() ? 6 : 5;
  KeyPainter keys(surface, palette_, room, text_size_, RowHeight(), rows, keys_beside_);
  keys.Swatches(kCurveKeyCaption, kCurveKeys);
  keys.Swatches(kSolarKeyCaption, kSolarKeys);
  keys.Bars("Open Bands", OpenBandMeanings(engine_), HasUnreachedHours());
}

void ChartPane::PaintOverlay(Surface& surface) const {
  if (!(plot_.width > 0)) return;
  const double x = std::round(TimeLineX());
  const double head = std::round(text_size_ * 0.35);
  surface.Line({x, plot_.top - head}, {x, rcv_sun_.Bottom()}, {palette_.time});
  surface.FillRectangle({x - head + 1, plot_.top - head, 2 * head - 1, head}, palette_.time);
  TextStyle style{.size = text_size_,
                  .color = palette_.time_text,
                  .horizontal = HorizontalAlign::kCenter,
                  .vertical = VerticalAlign::kBottom,
                  .weight = FontWeight::kBold};
  // At the ends of the day stand "MHz" and the heading of the bands.
  if (x - plot_.left < text_size_ * 1.6) style.horizontal = HorizontalAlign::kLeft;
  if (plot_.Right() - x < text_size_ * 2.4) style.horizontal = HorizontalAlign::kRight;
  surface.Text({x, plot_.top - head - 1}, ClockText(TimeIndex()), style);
}

}  // namespace skyhop
