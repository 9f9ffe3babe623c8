#include "ui/prediction/chart/chart_model.h"

#include <algorithm>
#include <cmath>

#include "common/numbers.h"

namespace skyhop {

void ChartModel::DisplayResult(const ResultsTable& result, EngineChoice made_by) {
  table = result;
  engine = made_by;
  plotted = true;
  axis = IONCAPModule::ComputeAxis(table, engine, *diagnostics);
}

bool ChartModel::HasUnreachedHours() const {
  return plotted && table.ReachedHours() < static_cast<std::ptrdiff_t>(kReportHours);
}

bool IsPredicted(const ResultsTable& table, std::size_t row) {
  const auto& values = table.frequencies[row];
  return std::any_of(values.begin(), values.end(), [](float value) { return value > 0; });
}

namespace IONCAPModule {
namespace {

/// "##.0": one decimal and no zero in front of the point.
std::string AxisLabel(float frequency) {
  std::string text = FixedText(frequency, 1);
  const std::size_t first_digit = text[0] == '-' ? 1 : 0;
  if (text[first_digit] == '0') text.erase(first_digit, 1);
  return text;
}

}  // namespace

FrequencyAxis ComputeAxis(const ResultsTable& table, EngineChoice engine,
                          Diagnostics& diagnostics) {
  return diagnostics.Trap("IONCAPModule.ComputeAxis", FrequencyAxis(), [&] {
    float low = 10000;
    float high = 0;
    if (engine == EngineChoice::kVoaCapSnr) {
      low = table.f_min;
      high = table.f_max;
    } else {
      for (std::size_t hour = 0; hour < kHourCount; ++hour) {
        low = std::min({low, table.Muf90(hour), table.Luf(hour)});
        high = std::max({high, table.Muf10(hour), table.Luf(hour)});
      }
    }
    low = std::floor(low);
    if (std::floor(high) < high) high = StoreSingle(std::floor(double{high}) + 1);
    // The bounds keep their start values, in reverse order, if the table holds no value.
    if (high < low) return FrequencyAxis();
    float step = StoreSingle((double{high} - low) / 5);
    if (std::floor(step) < step) step = StoreSingle(std::floor(double{step}) + 1);
    FrequencyAxis axis{.f_min = low, .f_max = StoreSingle(low + 5 * double{step}), .y_labels = {}};
    float frequency = low;
    for (std::string& label : axis.y_labels) {
      label = AxisLabel(frequency);
      frequency = StoreSingle(double{frequency} + step);
    }
    return axis;
  });
}

}  // namespace IONCAPModule
}  // namespace skyhop
