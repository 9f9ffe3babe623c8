#include "ui/prediction/chart/picture_key.h"

#include <algorithm>
#include <array>

#include "ui/prediction/chart/prediction_chart.h"

namespace skyhop {
namespace {

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

}  // namespace

bool IsPredicted(const ResultsTable& table, std::size_t row) {
  const auto& values = table.frequencies[row];
  return std::any_of(values.begin(), values.end(), [](float value) { return value > 0; });
}

std::span<const BarMeaning> OpenBandMeanings(EngineChoice engine) {
  return engine == EngineChoice::kVoaCapSnr ? kReliabilityBars : kCriticalFrequencyBars;
}

}  // namespace skyhop
