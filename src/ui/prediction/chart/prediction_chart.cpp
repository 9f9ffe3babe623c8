#include "ui/prediction/chart/prediction_chart.h"

#include <algorithm>
#include <cmath>

#include "common/dates.h"
#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::IONCAPModule {
namespace {

struct Curve {
  std::size_t row;
  Pen pen;
};

/// In the order in which the segments of an hour are painted.
constexpr std::array<Curve, 4> kCurves = {{
    {rows::kMuf90, {{0, 0, 255}, 1}},
    {rows::kMuf10, {{255, 0, 0}, 1}},
    {rows::kMuf50, {{0, 255, 0}, 2}},
    {rows::kLuf, {{0, 0, 0}, 2}},
}};

/// "##.0": one decimal and no zero in front of the point.
std::string AxisLabel(float frequency) {
  std::string text = FixedText(frequency, 1);
  const std::size_t first_digit = text[0] == '-' ? 1 : 0;
  if (text[first_digit] == '0') text.erase(first_digit, 1);
  return text;
}

}  // namespace

PredictionChart::PredictionChart(const ResultsTable& table, const ChartLayout& layout,
                                 Diagnostics& diagnostics, const Clock& clock)
    : table_(&table),
      layout_(layout),
      diagnostics_(&diagnostics),
      clock_(&clock),
      hour_width_(static_cast<float>(layout.x_hash[1] - layout.x_hash[0])) {
  UpdateVerticalTimeBar();
}

void PredictionChart::SetLayout(const ChartLayout& layout) {
  const double time = TimeForX(time_line_x_);
  layout_ = layout;
  hour_width_ = static_cast<float>(XDataScale(1));
  SetTimeIndex(time);
  if (!HasAxis()) return;
  diagnostics_->Trap("IONCAPModule.SetLayout", [&] { MeasureAxis(); });
  PlaceBandLines();
}

void PredictionChart::DisplayResult(EngineChoice engine, ChartOptions options, Surface& ionprop) {
  plotted_ = true;
  ComputeAxis(engine);
  Repaint(options, ionprop);
  UpdateVerticalTimeBar();
}

void PredictionChart::Repaint(ChartOptions options, Surface& ionprop) {
  diagnostics_->Trap("IONCAPModule.Repaint", [&] { ionprop.Clear(colors::kWhite); });
  if (options.open_band_enable) {
    PaintOpenings(ionprop);
  } else {
    PaintBandLines();
  }
  if (options.plot_enable) PaintPlot(ionprop);
}

void PredictionChart::ComputeAxis(EngineChoice engine) {
  engine_ = engine;
  // A failure below must not leave the previous result's axis under the new curves.
  ClearAxis();
  const bool computed = diagnostics_->Trap("IONCAPModule.ComputeAxis", [&] {
    float low = 10000;
    float high = 0;
    if (PredictsReliability()) {
      low = table_->f_min;
      high = table_->f_max;
    } else {
      for (std::size_t hour = 0; hour < kHourCount; ++hour) {
        low = std::min({low, table_->Muf90(hour), table_->Luf(hour)});
        high = std::max({high, table_->Muf10(hour), table_->Luf(hour)});
      }
    }
    low = std::floor(low);
    if (std::floor(high) < high) high = StoreSingle(std::floor(double{high}) + 1);
    // Bounds that no value has touched stand the wrong way round.
    if (high < low) return;
    float step = StoreSingle((double{high} - low) / 5);
    if (std::floor(step) < step) step = StoreSingle(std::floor(double{step}) + 1);
    f_max_ = StoreSingle(low + 5 * double{step});
    f_min_ = low;
    MeasureAxis();
    float frequency = low;
    for (std::string& label : y_labels_) {
      label = AxisLabel(frequency);
      frequency = StoreSingle(double{frequency} + step);
    }
  });
  if (!computed) ClearAxis();
  PlaceBandLines();
}

void PredictionChart::MeasureAxis() {
  y_f_min_ = static_cast<float>(layout_.y_tick.front());
  y_f_max_ = static_cast<float>(layout_.y_tick.back());
  if (y_f_min_ == y_f_max_) {
    throw Error(errors::kDivisionByZero, "Division by zero: the frequency axis has no height");
  }
  f_scale_ = StoreSingle((double{f_max_} - f_min_) / (double{y_f_max_} - y_f_min_));
}

void PredictionChart::ClearAxis() {
  f_min_ = 0;
  f_max_ = 0;
  f_scale_ = 0;
  for (std::string& label : y_labels_) label.clear();
}

void PredictionChart::RequireAxis() const {
  if (f_scale_ == 0) {
    throw Error(errors::kDivisionByZero, "Division by zero: the frequency axis has no extent");
  }
}

double PredictionChart::UnitsAboveFMin(float frequency) const {
  RequireAxis();
  return (double{frequency} - f_min_) / f_scale_;
}

std::int16_t PredictionChart::YDataScale(float frequency) const {
  return diagnostics_->Trap("IONCAPModule.YDataScale", std::int16_t{0}, [&] {
    return RoundToInteger(std::floor(UnitsAboveFMin(frequency)) + y_f_min_ - layout_.ionprop.top);
  });
}

std::int16_t PredictionChart::YLabelScale(float frequency) const {
  return diagnostics_->Trap("IONCAPModule.YLabelScale", std::int16_t{0}, [&] {
    return RoundToInteger(std::trunc(UnitsAboveFMin(frequency)) + y_f_min_);
  });
}

std::int16_t PredictionChart::GetBandForY(float y) const {
  return diagnostics_->Trap("IONCAPModule.GetBandForY", std::int16_t{-1}, [&] {
    if (!HasAxis()) return std::int16_t{-1};
    const float on_form = std::clamp(StoreSingle(y + layout_.ionprop.top),
                                     std::min(y_f_min_, y_f_max_), std::max(y_f_min_, y_f_max_));
    const double part = (double{on_form} - y_f_max_) / (double{y_f_min_} - y_f_max_);
    return RelaxedBandForFreq(StoreSingle(f_max_ - part * (double{f_max_} - f_min_)));
  });
}

void PredictionChart::PaintBandLines() {
  if (!plotted_) return;
  diagnostics_->Trap("IONCAPModule.PaintBandLines", [&] {
    PlaceBandLines();
    for (std::size_t band = 0; band < kBandCount; ++band) {
      const BandLine& line = band_lines_[band];
      BandLabel& label = band_labels_[band];
      label.visible = line.visible;
      if (!line.visible) continue;
      label.top = line.y + layout_.ionprop.top - layout_.band_label_height[band] / 2;
    }
  });
}

void PredictionChart::PlaceBandLines() {
  for (std::size_t band = 0; band < kBandCount; ++band) {
    const float frequency = kBandLineFrequencies[band];
    BandLine& line = band_lines_[band];
    line.visible = f_min_ <= frequency && frequency <= f_max_;
    if (line.visible) line.y = YDataScale(frequency);
  }
}

/// Results with reliabilities have some curves only, and may have gaps in those.
bool PredictionChart::TellsFrequency(std::size_t row, std::size_t hour) const {
  return !PredictsReliability() || table_->frequencies[row][hour] > 0;
}

bool PredictionChart::HasCurves() const {
  return std::any_of(kCurves.begin(), kCurves.end(), [&](const Curve& curve) {
    const auto& values = table_->frequencies[curve.row];
    return std::any_of(values.begin(), values.end(), [](float value) { return value > 0; });
  });
}

void PredictionChart::LogPlotted(std::string_view procedure) {
  if (!diagnostics_->GetDebug()) return;
  diagnostics_->DebugLog(std::string(procedure) + ", Plotted = " + BooleanText(plotted_));
}

void PredictionChart::PaintPlot(Surface& ionprop) {
  diagnostics_->Trap("IONCAPModule.PaintPlot", [&] {
    LogPlotted("IONCAPModule.PaintPlot");
    if (!plotted_ || !HasCurves()) return;
    // One report instead of one for each of a hundred points.
    RequireAxis();
    std::array<std::array<double, kHourCount>, kCurves.size()> heights{};
    for (std::size_t curve = 0; curve < kCurves.size(); ++curve) {
      const auto& values = table_->frequencies[kCurves[curve].row];
      std::transform(values.begin(), values.end(), heights[curve].begin(),
                     [&](float value) { return YDataScale(value); });
    }
    for (std::size_t hour = 1; hour < kHourCount; ++hour) {
      const double from = XDataScale(hour - 1);
      const double to = XDataScale(hour);
      for (std::size_t curve = 0; curve < kCurves.size(); ++curve) {
        const std::size_t row = kCurves[curve].row;
        if (row == rows::kLuf && !(table_->Luf(hour) > 0)) continue;
        if (!TellsFrequency(row, hour - 1) || !TellsFrequency(row, hour)) continue;
        const auto& y = heights[curve];
        ionprop.Line({from, y[hour - 1]}, {to, y[hour]}, kCurves[curve].pen);
      }
    }
  });
}

void PredictionChart::PaintOpenings(Surface& ionprop) {
  diagnostics_->Trap("IONCAPModule.PaintOpenings", [&] {
    LogPlotted("IONCAPModule.PaintOpenings");
    if (!plotted_) return;
    for (BandLabel& label : band_labels_) label.visible = false;
    for (std::size_t band = 0; band < kBandCount; ++band) PaintOpenings(band, ionprop);
  });
}

void PredictionChart::PaintOpenings(std::size_t band, Surface& ionprop) {
  const float frequency = kBandLineFrequencies[band];
  BandLabel& label = band_labels_[band];
  double y = 0;
  for (std::size_t hour = 1; hour < kHourCount; ++hour) {
    Pen pen{kOpenBandColor};
    if (!OpenStretch(frequency, static_cast<std::int16_t>(hour), pen)) continue;
    if (!label.visible) {
      // Only now: a band that is never open needs no place on the axis.
      RequireAxis();
      y = YDataScale(frequency);
      label.top = YLabelScale(frequency) - layout_.band_label_height[band] / 2.0;
      label.visible = true;
    }
    ionprop.Line({XDataScale(hour - 1), y}, {XDataScale(hour), y}, pen);
  }
}

/// Whether anything is drawn for the hour that ends at `hour`, and how.
bool PredictionChart::OpenStretch(float frequency, std::int16_t hour, Pen& pen) const {
  std::int16_t before = FreqOpen(frequency, static_cast<std::int16_t>(hour - 1));
  if (PredictsReliability()) {
    // A reliability holds for the whole hour that begins with it.
    pen.width = before;
    return before > 0;
  }
  std::int16_t after = FreqOpen(frequency, hour);
  if (before + after == 0) return false;
  if (before == 0 || after == 0) {
    // The band opens or closes somewhere in between.
    pen.style = LineStyle::kDotted;
    before = std::max<std::int16_t>(before, 1);
    after = std::max<std::int16_t>(after, 1);
  }
  pen.width = std::min(before, after);
  return true;
}

void PredictionChart::UpdateVerticalTimeBar() {
  diagnostics_->Trap("IONCAPModule.UpdateVerticalTimeBar", [&] {
    const HourMinute now = UtcHourMinute(clock_->UtcNow());
    time_line_x_ =
        XDataScale(static_cast<std::size_t>(now.hour)) + double{hour_width_} * now.minute / 60;
  });
}

void PredictionChart::Timeline_MouseDown(double x) {
  dragging_ = true;
  grab_offset_ = time_line_x_ - x;
}

void PredictionChart::Timeline_MouseMove(double x) {
  if (dragging_) TimelineMove(x);
}

void PredictionChart::TimelineMove(double x) {
  diagnostics_->Trap("IONCAPModule.TimelineMove", [&] {
    constexpr double half_width = kTimeLineWidth / 2;
    const double left = x + grab_offset_ - half_width / 2;
    if (left < 1 || left + 3 * half_width >= XDataScale(kHourCount - 1)) return;
    time_line_x_ = left;
  });
}

void PredictionChart::SetTimeIndex(double hours) {
  const double time = std::clamp(hours, 0.0, static_cast<double>(kHourCount - 1));
  const auto hour = std::min(static_cast<std::size_t>(time), kHourCount - 1);
  time_line_x_ = XDataScale(hour) + double{hour_width_} * (time - static_cast<double>(hour));
}

double PredictionChart::TimeForX(double x) const {
  if (!(x > 0) || !(hour_width_ > 0)) return 0;
  std::size_t hour = kHourCount - 1;
  while (hour > 0 && XDataScale(hour) > x) --hour;
  const double minutes = std::min((x - XDataScale(hour)) / hour_width_, 1.0);
  return std::min(static_cast<double>(hour) + minutes, static_cast<double>(kHourCount - 1));
}

}  // namespace skyhop::IONCAPModule
