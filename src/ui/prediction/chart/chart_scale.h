#pragma once

#include <cstddef>
#include <cstdint>

#include "common/diagnostics.h"
#include "ui/prediction/chart/chart_layout.h"
#include "ui/prediction/chart/chart_model.h"

namespace skyhop::IONCAPModule {

/// Width of the bar `TimeLine` in pixels.
inline constexpr double kTimeLineWidth = 3;

/// The scales of a chart: linear maps between frequencies, times and places. Frequencies are MHz,
/// hours 0 to 24 UTC. Each operation reports its failures to the model's diagnostics and then
/// returns the value stated. A scale refers to the model and the layout that it was made from.
class ChartScale {
 public:
  ChartScale(const ChartModel& model, const ChartLayout& layout);

  /// Height of a frequency on the plotting surface, rounded toward the higher frequency. 0 if the
  /// axis has no extent or the height does not fit 16 bits.
  [[nodiscard]] std::int16_t YDataScale(float frequency) const;

  /// Height of a frequency on the form, rounded toward the lower end of the axis; 0 as above.
  [[nodiscard]] std::int16_t YLabelScale(float frequency) const;

  /// Throws Error if the axis has no extent. A caller that scales many points checks once, so that
  /// the log gets one report.
  void RequireAxis() const;

  /// Band index for a height on the plotting surface, clamped to the ends of the axis; -1 if no
  /// band is near.
  [[nodiscard]] std::int16_t GetBandForY(float y) const;

  /// Distance of an hour mark from the first one; throws std::out_of_range for an hour above 24.
  [[nodiscard]] double XDataScale(std::size_t hour) const {
    return layout_->x_hash.at(hour) - layout_->x_hash[0];
  }
  /// Distance of a time of day, clamped to 0 to 24 hours, from the first hour mark.
  [[nodiscard]] double XForTime(double hours) const;
  /// Time of day in hours at a distance from the first hour mark, clamped to the axis.
  [[nodiscard]] double TimeForX(double x) const;

  /// `YFMin` and `YFMax`: the y of the ends of the frequency axis on the form.
  [[nodiscard]] float YFMin() const { return static_cast<float>(layout_->y_tick.front()); }
  [[nodiscard]] float YFMax() const { return static_cast<float>(layout_->y_tick.back()); }
  /// `FScale`: MHz per pixel downward, so below 0; 0 if the axis has no extent.
  [[nodiscard]] float FScale() const { return f_scale_; }
  /// `HourWidth`: pixels per hour.
  [[nodiscard]] float HourWidth() const { return static_cast<float>(XDataScale(1)); }

 private:
  [[nodiscard]] double UnitsAboveFMin(float frequency) const;

  const FrequencyAxis* axis_;
  const ChartLayout* layout_;
  Diagnostics* diagnostics_;
  float f_scale_ = 0;
};

}  // namespace skyhop::IONCAPModule
