#pragma once

#include <chrono>

#include "ui/shared/prediction_view.h"

namespace skyhop {

/// The prediction window's forecast timer. Keeps its interval while it is off.
class ForecastTimer {
 public:
  /// Time between two checks of the forecast's age.
  static constexpr std::chrono::milliseconds kInterval{60'000};

  explicit ForecastTimer(PredictionView& view) : view_(&view) {}

  /// Starts the timer unless it runs.
  void Enable() {
    if (!view_->TimerRunning(WindowTimer::kSolarForecastTimer)) Restart(interval_);
  }
  void Disable() { view_->StopTimer(WindowTimer::kSolarForecastTimer); }
  void SetInterval(std::chrono::milliseconds interval) { interval_ = interval; }
  /// Starts the timer again with another interval.
  void Restart(std::chrono::milliseconds interval) {
    interval_ = interval;
    view_->StartTimer(WindowTimer::kSolarForecastTimer, interval);
  }

 private:
  PredictionView* view_;
  std::chrono::milliseconds interval_ = kInterval;
};

}  // namespace skyhop
