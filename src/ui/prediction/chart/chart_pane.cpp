#include "ui/prediction/chart/chart_pane.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "bands/bands.h"
#include "common/numbers.h"
#include "ui/drawing/text_width.h"
#include "ui/prediction/chart/picture_key.h"
#include "ui/prediction/chart/reliability_table.h"

namespace skyhop {
namespace {

/// The time index is grabbed from this far away, so that it takes no steady hand.
constexpr double kGrabRoom = 5;

/// Half of the room that the label above the time index takes, as a part of its font size.
constexpr double kTimeLabelReach = 2.2;

/// A plot smaller than this, as a multiple of the labels' font size, tells little.
constexpr double kLeastPlotHeight = 15;
constexpr double kLeastPlotWidth = 20;
/// Keys below a plot that would be lower than this are left out.
constexpr double kPlotHeightForKeys = 6;

constexpr std::string_view kNotReached = "required reliability not reached";
constexpr std::string_view kTimeLineToolTip = "Vertical Time Index (drag to desired time)";

bool Contains(const Rectangle& area, Point at) {
  return at.x >= area.left && at.x <= area.Right() && at.y >= area.top && at.y <= area.Bottom();
}

Rectangle Union(const Rectangle& a, const Rectangle& b) {
  const double left = std::min(a.left, b.left);
  const double top = std::min(a.top, b.top);
  return {left, top, std::max(a.Right(), b.Right()) - left, std::max(a.Bottom(), b.Bottom()) - top};
}

std::string Megahertz(float value) {
  return value > 0 ? FixedText(value, 1) : "\u2013";
}

/// The hour that a time of day is in; the day's end belongs to its last one.
std::size_t HourOf(double time) {
  return std::min(static_cast<std::size_t>(time), kHourCount - 2);
}

/// The full hour, 0 to 24, that is nearest to a time of day.
std::size_t NearestHour(double time) {
  return std::min(static_cast<std::size_t>(std::lround(std::max(time, 0.0))), kHourCount - 1);
}

}  // namespace

ChartPane::ChartPane(const ResultsTable& table, Diagnostics& diagnostics, const Clock& clock)
    : table_(&table),
      shown_(table),
      diagnostics_(&diagnostics),
      chart_(shown_, EvenLayout({0, 0, 240, 100}, 14), diagnostics, clock) {}

void ChartPane::SetPalette(const ChartPalette& palette) {
  if (palette == palette_) return;
  palette_ = palette;
  Changed();
}

void ChartPane::Resize(double width, double height, double text_size) {
  if (width == width_ && height == height_ && text_size == text_size_) return;
  width_ = width;
  height_ = height;
  text_size_ = text_size;
  Arrange();
}

double ChartPane::RowHeight() const {
  return std::ceil(text_size_ * 1.22);
}

double ChartPane::CaptionHeight() const {
  return std::ceil(text_size_ * 1.6);
}

/// Room for title and provenance.
double ChartPane::HeaderHeight() const {
  return (title_.empty() ? 0 : CaptionHeight()) + (provenance_.empty() ? 0 : CaptionHeight());
}

bool ChartPane::HasUnreachedHours() const {
  return HasResult() && shown_.ReachedHours() < static_cast<std::ptrdiff_t>(kHourCount - 1);
}

double ChartPane::KeyHeight() const {
  return (HasUnreachedHours() ? 6 : 5) * RowHeight() + std::ceil(text_size_ * 1.2);
}

/// About what the longest line of the keys takes with its swatch and the frame.
double ChartPane::KeyWidth() const {
  return std::ceil(text_size_ * 24);
}

/// Whole pixels for every hour and every division of the frequency axis, so that all lines are
/// sharp and the hours are equally wide.
void ChartPane::Arrange() {
  const double sun_height = std::ceil(text_size_ * 0.9);
  const double left = std::ceil(text_size_ * 4.4);
  const double right = std::ceil(text_size_ * kRightMargin);
  // Leave room for the table's caption above it.
  const double top =
      HeaderHeight() + std::ceil(text_size_ * 1.9) + (TableShown() ? CaptionHeight() : 0);
  const double hour_labels = std::ceil(text_size_ * 2.1);
  const double below = hour_labels + 2 * sun_height + std::ceil(text_size_ * 0.6);
  double width = width_ - left - right;
  double height = height_ - top - below;
  // A low window has more width than height to spare for the keys.
  keys_fit_ = true;
  keys_beside_ = KeysShown() && height - KeyHeight() < text_size_ * kLeastPlotHeight &&
                 width - KeyWidth() > text_size_ * kLeastPlotWidth;
  // The smallest windows have room for the chart alone.
  keys_fit_ = keys_beside_ || height - KeyHeight() >= text_size_ * kPlotHeightForKeys;
  if (KeysShown() && keys_beside_) width -= KeyWidth();
  if (KeysShown() && !keys_beside_) height -= KeyHeight();
  const double hour = std::max(4.0, std::floor(width / 24));
  const double division = std::max(8.0, std::floor(height / 5));
  plot_ = {left, top, 24 * hour, 5 * division};
  xmit_sun_ = {left, plot_.Bottom() + hour_labels, plot_.width, sun_height};
  rcv_sun_ = {left, xmit_sun_.Bottom() + 3, plot_.width, sun_height};
  chart_.SetLayout(EvenLayout(plot_, std::ceil(text_size_ * 1.15)));
  Changed();
}

void ChartPane::Changed() {
  if (host_ != nullptr) host_->ChartChanged();
}

void ChartPane::DisplayTable(EngineChoice engine) {
  engine_ = engine;
  shown_ = *table_;
  chart_.SetPlotted(true);
  chart_.ComputeAxis(engine);
  // The keys may come or go.
  Arrange();
  if (!chart_.Dragging()) chart_.UpdateVerticalTimeBar();
  Changed();
  Leave();
}

void ChartPane::SetOld(bool old) {
  if (old == old_) return;
  old_ = old;
  Changed();
}

void ChartPane::SetTitle(const std::string& title) {
  if (title == title_) return;
  title_ = title;
  Arrange();
}

void ChartPane::SetProvenance(const std::string& provenance) {
  if (provenance == provenance_) return;
  provenance_ = provenance;
  Arrange();
}

void ChartPane::ShowLike(const ChartPane& other) {
  engine_ = other.engine_;
  shown_ = other.shown_;
  chart_.SetPlotted(other.HasResult());
  chart_.ComputeAxis(engine_);
  open_band_enable_ = other.open_band_enable_;
  plot_enable_ = other.plot_enable_;
  color_keys_ = other.color_keys_;
  table_view_ = other.table_view_;
  old_ = other.old_;
  title_ = other.title_;
  provenance_ = other.provenance_;
  sun_ = other.sun_;
  Arrange();
  chart_.SetTimeIndex(other.TimeIndex());
}

void ChartPane::SetEmptyText(const std::string& text) {
  if (text == empty_text_) return;
  empty_text_ = text;
  Changed();
}

void ChartPane::SetOpenBandEnable(bool on) {
  open_band_enable_ = on;
  Changed();
}

void ChartPane::SetPlotEnable(bool on) {
  plot_enable_ = on;
  Changed();
}

void ChartPane::ShowColorKeys(bool show) {
  color_keys_ = show;
  Arrange();
}

void ChartPane::SetTableView(bool on) {
  table_view_ = on;
  Arrange();
}

void ChartPane::SetSolarBars(const SolarBars& bars) {
  if (bars == sun_) return;
  sun_ = bars;
  Changed();
}

void ChartPane::SetBandIndicator(std::int16_t band) {
  if (band == band_indicator_) return;
  band_indicator_ = band;
  Changed();
}

/// Line, handle and label of the time index.
Rectangle ChartPane::OverlayArea() const {
  const double reach = std::ceil(std::max(kGrabRoom, text_size_ * kTimeLabelReach)) + 2;
  const double x = TimeLineX();
  return {x - reach, 0, 2 * reach, rcv_sun_.Bottom() + 2};
}

template <class MoveIndex>
void ChartPane::MovingTimeIndex(MoveIndex&& move) {
  const Rectangle before = OverlayArea();
  const double x = chart_.TimeLineX();
  std::forward<MoveIndex>(move)();
  if (chart_.TimeLineX() == x || host_ == nullptr) return;
  host_->OverlayChanged(Union(before, OverlayArea()));
  host_->ShowReadout(ReadoutAtTimeIndex());
}

void ChartPane::UpdateVerticalTimeBar() {
  if (chart_.Dragging()) return;
  MovingTimeIndex([&] { chart_.UpdateVerticalTimeBar(); });
}

void ChartPane::StepTimeIndex(int hours) {
  if (on_time_index_) on_time_index_();
  MovingTimeIndex([&] { chart_.SetTimeIndex(TimeIndex() + hours); });
}

bool ChartPane::OnTimeLine(Point at) const {
  return std::abs(at.x - TimeLineX()) <= kGrabRoom && at.y >= 0 && at.y <= rcv_sun_.Bottom();
}

void ChartPane::Press(Point at) {
  if (OnTimeLine(at)) {
    chart_.Timeline_MouseDown(at.x - plot_.left);
    return;
  }
  if (!HasResult() || !on_band_ || at.x < plot_.left) return;
  // The labels beside the plot belong to their bands too.
  if (at.y < plot_.top || at.y > plot_.Bottom()) return;
  on_band_(BandAt(at));
}

std::int16_t ChartPane::BandAt(Point at) const {
  if (!TableShown()) return chart_.GetBandForY(static_cast<float>(at.y - plot_.top));
  const auto band = BandOfRow(Day(), plot_, at.y);
  return band ? static_cast<std::int16_t>(*band) : std::int16_t{-1};
}

void ChartPane::Move(Point at) {
  if (chart_.Dragging()) {
    if (on_time_index_) on_time_index_();
    MovingTimeIndex([&] { chart_.Timeline_MouseMove(at.x - plot_.left); });
    return;
  }
  if (host_ == nullptr) return;
  const std::string readout = Readout(at);
  host_->ShowReadout(readout.empty() ? ReadoutAtTimeIndex() : readout);
}

void ChartPane::Release() {
  chart_.Timeline_MouseUp();
}

void ChartPane::Leave() {
  if (host_ != nullptr && !chart_.Dragging()) host_->ShowReadout(ReadoutAtTimeIndex());
}

std::string ChartPane::Readout(Point at) const {
  if (!HasResult() || !Contains(plot_, at)) return {};
  if (!chart_.HasAxis() && !TableShown()) return {};
  const double time = chart_.TimeForX(at.x - plot_.left);
  const std::string clock = ClockText(time) + " UTC   ";
  const std::int16_t band = BandAt(at);
  if (PredictsReliability() && band > 0) {
    return clock + BandReadout(shown_, static_cast<std::size_t>(band), HourOf(time));
  }
  if (TableShown()) {
    return band < 0 ? std::string() : clock + CellReadout(static_cast<std::size_t>(band), time);
  }
  const double part = (plot_.Bottom() - at.y) / plot_.height;
  const double frequency = chart_.FMin() + part * (double{chart_.FMax()} - chart_.FMin());
  std::string text = clock + FixedText(frequency, 1) + " MHz";
  if (band >= 0) text.append("   ").append(kBandLabelTexts.at(static_cast<std::size_t>(band)));
  text += Values(time);
  return shown_.reached.at(NearestHour(time)) ? text : text + "   " + std::string(kNotReached);
}

/// What the table holds of a band, for engines that predict frequencies.
std::string ChartPane::CellReadout(std::size_t band, double time) const {
  return std::string(kBandLabelTexts.at(band)) + "   " + CellWords(Day(), band, HourOf(time)) +
         Values(time);
}

/// The curves' values where a line through their hourly points crosses `time`, those of them that
/// are predicted.
std::string ChartPane::Values(double time) const {
  const std::size_t before = HourOf(time);
  const auto part = static_cast<float>(time - static_cast<double>(before));
  const auto value = [&](std::size_t row) {
    const auto& hours = shown_.frequencies[row];
    if (!(hours[before] > 0 && hours[before + 1] > 0)) return Megahertz(0);
    // The amount of a LUF that is not reached is another frequency.
    const bool reached = shown_.reached[before] && shown_.reached[before + 1];
    if (row == rows::kLuf && !reached) return Megahertz(0);
    return Megahertz(hours[before] + part * (hours[before + 1] - hours[before]));
  };
  std::string text;
  if (IsPredicted(shown_, rows::kLuf)) text += "   LUF " + value(rows::kLuf);
  const char* name = "   MUF ";
  for (const auto& [row, confidence] :
       {std::pair(rows::kMuf90, "90% "), {rows::kMuf50, "50% "}, {rows::kMuf10, "10% "}}) {
    if (!IsPredicted(shown_, row)) continue;
    text.append(std::exchange(name, "   ")).append(confidence).append(value(row));
  }
  return text.empty() ? text : text + " MHz";
}

std::string ChartPane::ReadoutAtTimeIndex() const {
  if (!HasResult()) return {};
  const double time = TimeIndex();
  std::string text = ClockText(time) + " UTC" + Values(time);
  // A reliability holds for the hour that begins with it; of the curves' points the nearest counts.
  const auto hour =
      static_cast<std::int16_t>(PredictsReliability() ? HourOf(time) : NearestHour(time));
  if (!shown_.reached.at(static_cast<std::size_t>(hour))) {
    return text + "   " + std::string(kNotReached);
  }
  text += "   open:";
  bool any = false;
  for (std::size_t band = 0; band < kBandCount; ++band) {
    if (chart_.FreqOpen(kBandLineFrequencies[band], hour) == 0) continue;
    text.append(any ? ", " : " ").append(kBandLabelTexts[band]);
    any = true;
  }
  return any ? text : text + " no band";
}

std::string ChartPane::ToolTipAt(Point at) const {
  // The pane may be too narrow for the whole line.
  if (!title_.empty() && at.y < CaptionHeight()) return title_;
  if (Contains(xmit_sun_, at) && !sun_.xmit_sun.tool_tip.empty()) {
    return "Your Station: " + sun_.xmit_sun.tool_tip;
  }
  if (Contains(rcv_sun_, at) && !sun_.rcv_sun.tool_tip.empty()) {
    return "DX Station: " + sun_.rcv_sun.tool_tip;
  }
  if (OnTimeLine(at)) return std::string(kTimeLineToolTip);
  if (!HasResult() || !Contains(plot_, at)) return {};
  // A low window has no room for the key of the hatching.
  const double time = chart_.TimeForX(at.x - plot_.left);
  const std::size_t hour = TableShown() ? HourOf(time) : NearestHour(time);
  return shown_.reached.at(hour) ? std::string() : std::string(kNotReached);
}

}  // namespace skyhop
