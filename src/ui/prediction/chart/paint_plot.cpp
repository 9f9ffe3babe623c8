// Bands, open bands and curves on the plotting surface.

#include <algorithm>

#include "bands/bands.h"
#include "common/text.h"
#include "ui/prediction/chart/chart_scale.h"
#include "ui/prediction/chart/paint_chart.h"

namespace skyhop::IONCAPModule {
namespace {

struct Curve {
  std::size_t row;
  Pen pen;
};

/// In the order in which the segments of an hour are painted.
constexpr std::array<Curve, 4> kCurves = {{
    {rows::kMuf90, {colors::kMuf90, 1}},
    {rows::kMuf10, {colors::kMuf10, 1}},
    {rows::kMuf50, {colors::kMuf50, 2}},
    {rows::kLuf, {colors::kLuf, 2}},
}};

void LogPlotted(std::string_view procedure, const ChartModel& model) {
  if (!model.diagnostics->GetDebug()) return;
  model.diagnostics->DebugLog(std::string(procedure) + ", Plotted = " + BooleanText(model.plotted));
}

std::array<BandLine, kBandCount> PlaceBandLines(const ChartModel& model, const ChartScale& scale) {
  std::array<BandLine, kBandCount> lines;
  for (std::size_t band = 0; band < kBandCount; ++band) {
    const float frequency = kBandLineFrequencies[band];
    BandLine& line = lines[band];
    line.visible = model.axis.f_min <= frequency && frequency <= model.axis.f_max;
    if (line.visible) line.y = scale.YDataScale(frequency);
  }
  return lines;
}

bool HasCurves(const ResultsTable& table) {
  return std::any_of(kCurves.begin(), kCurves.end(),
                     [&](const Curve& curve) { return IsPredicted(table, curve.row); });
}

/// Whether the results have a value for a point of a curve.
bool HasPoint(const ChartModel& model, std::size_t row, std::size_t hour) {
  return !model.Day().HasSnr() || model.table.frequencies[row][hour] > 0;
}

std::int16_t LevelAt(const ChartModel& model, float frequency, std::size_t hour) {
  return FreqOpen(model.table, model.engine, frequency, static_cast<std::int16_t>(hour),
                  *model.diagnostics);
}

/// Whether an open stretch is painted for the hour that ends at `hour`, and its pen.
bool OpenStretch(const ChartModel& model, float frequency, std::size_t hour, Pen& pen) {
  std::int16_t before = LevelAt(model, frequency, hour - 1);
  if (model.Day().HasSnr()) {
    // A reliability holds for the whole hour that begins with it.
    pen.width = before;
    return before > 0;
  }
  std::int16_t after = LevelAt(model, frequency, hour);
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

}  // namespace

BandMarks PaintBandLines(const ChartModel& model, const ChartLayout& layout, Surface& ionprop) {
  BandMarks marks;
  if (!model.plotted) return marks;
  model.diagnostics->Trap("IONCAPModule.PaintBandLines", [&] {
    marks.lines = PlaceBandLines(model, ChartScale(model, layout));
    for (std::size_t band = 0; band < kBandCount; ++band) {
      const BandLine& line = marks.lines[band];
      if (!line.visible) continue;
      const auto y = static_cast<double>(line.y);
      ionprop.Line({0, y}, {layout.ionprop.width, y}, {model.palette.band});
      marks.labels[band] = {y + layout.ionprop.top - layout.band_label_height[band] / 2, true};
    }
  });
  return marks;
}

BandMarks PaintOpenings(const ChartModel& model, const ChartLayout& layout, Surface& ionprop) {
  BandMarks marks;
  model.diagnostics->Trap("IONCAPModule.PaintOpenings", [&] {
    LogPlotted("IONCAPModule.PaintOpenings", model);
    if (!model.plotted) return;
    const ChartScale scale(model, layout);
    marks.lines = PlaceBandLines(model, scale);
    for (std::size_t band = 0; band < kBandCount; ++band) {
      const float frequency = kBandLineFrequencies[band];
      BandLabel& label = marks.labels[band];
      double y = 0;
      for (std::size_t hour = 1; hour < kHourCount; ++hour) {
        Pen pen{colors::kOpenBand};
        if (!OpenStretch(model, frequency, hour, pen)) continue;
        if (!label.visible) {
          // A band that is never open needs no axis.
          scale.RequireAxis();
          y = scale.YDataScale(frequency);
          label = {scale.YLabelScale(frequency) - layout.band_label_height[band] / 2.0, true};
        }
        ionprop.Line({scale.XDataScale(hour - 1), y}, {scale.XDataScale(hour), y}, pen);
      }
    }
  });
  return marks;
}

void PaintPlot(const ChartModel& model, const ChartLayout& layout, Surface& ionprop) {
  model.diagnostics->Trap("IONCAPModule.PaintPlot", [&] {
    LogPlotted("IONCAPModule.PaintPlot", model);
    if (!model.plotted || !HasCurves(model.table)) return;
    const ChartScale scale(model, layout);
    scale.RequireAxis();
    std::array<std::array<double, kHourCount>, kCurves.size()> heights{};
    for (std::size_t curve = 0; curve < kCurves.size(); ++curve) {
      const auto& values = model.table.frequencies[kCurves[curve].row];
      std::transform(values.begin(), values.end(), heights[curve].begin(),
                     [&](float value) { return scale.YDataScale(value); });
    }
    for (std::size_t hour = 1; hour < kHourCount; ++hour) {
      const double from = scale.XDataScale(hour - 1);
      const double to = scale.XDataScale(hour);
      for (std::size_t curve = 0; curve < kCurves.size(); ++curve) {
        const std::size_t row = kCurves[curve].row;
        if (row == rows::kLuf && !(model.table.Luf(hour) > 0)) continue;
        if (!HasPoint(model, row, hour - 1) || !HasPoint(model, row, hour)) continue;
        const auto& y = heights[curve];
        ionprop.Line({from, y[hour - 1]}, {to, y[hour]}, kCurves[curve].pen);
      }
    }
  });
}

}  // namespace skyhop::IONCAPModule
