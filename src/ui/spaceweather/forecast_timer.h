#pragma once

#include <chrono>

#include "ui/prediction/prediction_view.h"

namespace skyhop {

/// The prediction window's forecast timer, with an interval that stays set while it is off.
class ForecastTimer {
 public:
  /// Between two looks at the forecast's age.
  static constexpr std::chrono::milliseconds kInterval{60'000};

  /// `view` must outlive this object.
  explicit ForecastTimer(PredictionView& view) : view_(&view) {}

  /// Starts it unless it runs.
  void Enable() {
    if (!view_->TimerRunning(WindowTimer::kSolarForecastTimer)) Restart(interval_);
  }
  void Disable() { view_->StopTimer(WindowTimer::kSolarForecastTimer); }
  void SetInterval(std::chrono::milliseconds interval) { interval_ = interval; }
  /// Starts it anew with another interval.
  void Restart(std::chrono::milliseconds interval) {
    interval_ = interval;
    view_->StartTimer(WindowTimer::kSolarForecastTimer, interval);
  }

 private:
  PredictionView* view_;
  std::chrono::milliseconds interval_ = kInterval;
};

}  // namespace skyhop
