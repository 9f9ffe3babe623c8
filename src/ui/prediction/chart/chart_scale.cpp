#include "ui/prediction/chart/chart_scale.h"

#include <algorithm>
#include <cmath>

#include "bands/bands.h"
#include "common/errors.h"
#include "common/numbers.h"

namespace skyhop::IONCAPModule {

ChartScale::ChartScale(const ChartModel& model, const ChartLayout& layout)
    : axis_(&model.axis), layout_(&layout), diagnostics_(model.diagnostics) {
  if (YFMin() == YFMax()) return;
  f_scale_ = diagnostics_->Trap("IONCAPModule.FScale", 0.0F, [&] {
    return StoreSingle((double{axis_->f_max} - axis_->f_min) / (double{YFMax()} - YFMin()));
  });
}

void ChartScale::RequireAxis() const {
  if (f_scale_ == 0) {
    throw Error(errors::kDivisionByZero, "Division by zero: the frequency axis has no extent");
  }
}

double ChartScale::UnitsAboveFMin(float frequency) const {
  RequireAxis();
  return (double{frequency} - axis_->f_min) / f_scale_;
}

std::int16_t ChartScale::YDataScale(float frequency) const {
  return diagnostics_->Trap("IONCAPModule.YDataScale", std::int16_t{0}, [&] {
    return RoundToInteger(std::floor(UnitsAboveFMin(frequency)) + YFMin() - layout_->ionprop.top);
  });
}

std::int16_t ChartScale::YLabelScale(float frequency) const {
  return diagnostics_->Trap("IONCAPModule.YLabelScale", std::int16_t{0}, [&] {
    return RoundToInteger(std::trunc(UnitsAboveFMin(frequency)) + YFMin());
  });
}

std::int16_t ChartScale::GetBandForY(float y) const {
  return diagnostics_->Trap("IONCAPModule.GetBandForY", std::int16_t{-1}, [&] {
    if (!axis_->HasExtent()) return std::int16_t{-1};
    const float on_form = std::clamp(StoreSingle(y + layout_->ionprop.top),
                                     std::min(YFMin(), YFMax()), std::max(YFMin(), YFMax()));
    const double part = (double{on_form} - YFMax()) / (double{YFMin()} - YFMax());
    return RelaxedBandForFreq(
        StoreSingle(axis_->f_max - part * (double{axis_->f_max} - axis_->f_min)));
  });
}

double ChartScale::XForTime(double hours) const {
  const double time = std::clamp(hours, 0.0, static_cast<double>(kHourCount - 1));
  const auto hour = static_cast<std::size_t>(time);
  return XDataScale(hour) + double{HourWidth()} * (time - static_cast<double>(hour));
}

double ChartScale::TimeForX(double x) const {
  if (!(x > 0) || !(HourWidth() > 0)) return 0;
  std::size_t hour = kHourCount - 1;
  while (hour > 0 && XDataScale(hour) > x) --hour;
  const double minutes = std::min((x - XDataScale(hour)) / HourWidth(), 1.0);
  return std::min(static_cast<double>(hour) + minutes, static_cast<double>(kHourCount - 1));
}

}  // namespace skyhop::IONCAPModule
