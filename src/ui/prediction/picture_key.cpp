#include "ui/prediction/picture_key.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "ui/prediction/color_key.h"
#include "ui/prediction/prediction_chart.h"
#include "ui/prediction/text_width.h"

namespace skyhop {
namespace {

constexpr double kTextSize = 12;
constexpr double kSwatch = 11;
constexpr double kSampleLength = 36;
constexpr double kGap = 10;

constexpr Pen Bar(double width, LineStyle style = LineStyle::kSolid) {
  return {IONCAPModule::kOpenBandColor, width, style};
}

constexpr std::array<BarMeaning, 4> kReliabilityBars = {{
    {Bar(4), "reliability above 80%"},
    {Bar(3), "reliability 61% to 80%"},
    {Bar(2), "reliability 41% to 60%"},
    {Bar(1), "reliability 21% to 40%"},
}};

constexpr std::array<BarMeaning, 4> kCriticalFrequencyBars = {{
    {Bar(3), "open with at least 90% confidence"},
    {Bar(2), "open with at least 50% confidence"},
    {Bar(1), "open with at least 10% confidence"},
    {Bar(1, LineStyle::kDotted), "opens or closes in this hour"},
}};

/// Draws the heading; gives the middle of the first line below it.
Point PaintHeading(Surface& surface, Point corner, std::string_view text) {
  surface.Text(corner, text,
               {.size = kTextSize,
                .color = palette::kInk,
                .vertical = VerticalAlign::kTop,
                .weight = FontWeight::kBold});
  return {corner.x, corner.y + 24 + std::floor(kKeyRowHeight / 2)};
}

}  // namespace

bool IsPredicted(const ResultsTable& table, std::size_t row) {
  const auto& values = table.frequencies[row];
  return std::any_of(values.begin(), values.end(), [](float value) { return value > 0; });
}

std::span<const BarMeaning> OpenBandMeanings(EngineChoice engine) {
  return engine == EngineChoice::kVoaCapSnr ? kReliabilityBars : kCriticalFrequencyBars;
}

void PaintCurveKey(Surface& surface, Point corner, const ResultsTable& table) {
  Point at = PaintHeading(surface, corner, kCurveKeyCaption);
  for (const CurveKey& key : kCurveKeys) {
    const bool predicted = IsPredicted(table, key.row);
    TextStyle style{.size = kTextSize, .color = predicted ? palette::kText : palette::kMuted};
    surface.FillRectangle({at.x, at.y - std::floor(kSwatch / 2), kSwatch, kSwatch}, key.color);
    const double text_left = at.x + kSwatch + kGap;
    surface.Text({text_left, at.y}, key.text, style);
    if (!predicted) {
      const double note_left = text_left + TextWidth(key.text, kTextSize, FontWeight::kNormal);
      surface.Text({note_left + kGap, at.y}, "(not predicted)", style);
    }
    at.y += kKeyRowHeight;
  }
}

void PaintOpenBandKey(Surface& surface, Point corner, EngineChoice engine) {
  Point at = PaintHeading(surface, corner, "Open Bands (thickness of the bars)");
  for (const BarMeaning& bar : OpenBandMeanings(engine)) {
    surface.Line(at, {at.x + kSampleLength, at.y}, bar.pen);
    surface.Text({at.x + kSampleLength + kGap, at.y}, bar.text,
                 {.size = kTextSize, .color = palette::kText});
    at.y += kKeyRowHeight;
  }
}

}  // namespace skyhop
