#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <string>

#include "engine/execute_timer.h"
#include "engine/prediction_panel.h"
#include "interop/peer_window.h"
#include "ui/prediction/prediction_view.h"
#include "ui/shared/configuration.h"

namespace skyhop {

/// The inputs that the engine folder reads and writes, where there is a window: most are controls
/// of the view, the engine's choice, the unit of distance and the addresses belong to the
/// configuration.
class ViewPanel : public PredictionPanel {
 public:
  /// Both must outlive this object.
  ViewPanel(PredictionView& view, Configuration& configuration)
      : view_(&view), configuration_(&configuration) {}

  /// Called when a station's coordinates were written.
  void SetStationsListener(std::function<void()> listener) { on_stations_ = std::move(listener); }

  /// Called when the text of one of the view's fields was written.
  void SetTextListener(std::function<void(TextField)> listener) { on_text_ = std::move(listener); }

  [[nodiscard]] std::string Text(PanelText text) const override;
  void SetText(PanelText text, const std::string& value) override;
  [[nodiscard]] int Choice(PanelChoice choice) const override;
  void SetChoice(PanelChoice choice, int index) override;
  [[nodiscard]] bool Checked(PanelCheck check) const override;
  void SetChecked(PanelCheck check, bool on) override;
  [[nodiscard]] Antenna AntennaOf(Station station) const override {
    return configuration_->AntennaOf(station);
  }
  [[nodiscard]] std::string SettingsName() const override { return settings_name_; }
  /// Names the settings set of the next prediction, such as "20M"; empty for the ordinary one.
  void SetSettingsName(const std::string& name) { settings_name_ = name; }
  void RestoreWindow() override { view_->RestoreWindow(); }
  void StationsChanged() override {
    if (on_stations_) on_stations_();
  }

 private:
  PredictionView* view_;
  Configuration* configuration_;
  std::string last_prefix_;
  std::string summary_;
  std::string settings_name_;
  std::function<void()> on_stations_;
  std::function<void(TextField)> on_text_;
};

/// The timer that polls for results, as one of the view's timers.
class ViewTimer : public ExecuteTimer {
 public:
  static constexpr std::chrono::milliseconds kInterval{1000};

  explicit ViewTimer(PredictionView& view) : view_(&view) {}
  void Start() override { view_->StartTimer(WindowTimer::kExecuteTimer, kInterval); }
  void Stop() override { view_->StopTimer(WindowTimer::kExecuteTimer); }
  [[nodiscard]] bool Running() const override {
    return view_->TimerRunning(WindowTimer::kExecuteTimer);
  }

 private:
  PredictionView* view_;
};

/// A timer of the links as one of the view's timers.
class ViewLinkTimer : public LinkTimer {
 public:
  ViewLinkTimer(PredictionView& view, WindowTimer timer) : view_(&view), timer_(timer) {}
  void Start(std::chrono::milliseconds interval) override { view_->StartTimer(timer_, interval); }
  void Stop() override { view_->StopTimer(timer_); }

 private:
  PredictionView* view_;
  WindowTimer timer_;
};

}  // namespace skyhop
