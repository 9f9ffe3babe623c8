#pragma once

#include <type_traits>  // the toolkit's next header needs it and does not say so

#include <wx/timer.h>
#include <wx/weakref.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>

#include "app/skyhop/program_links.h"
#include "app/skyhop/program_windows.h"
#include "app/skyhop/space_weather_parts.h"
#include "common/instance_guard.h"
#include "common/pause.h"
#include "common/settings.h"
#include "engine/circuit_run.h"
#include "engine/prediction_engine.h"
#include "engine/run_lock.h"
#include "interop/link_transport.h"
#include "interop/snr_answers.h"
#include "platform/platform.h"
#include "ui/beacon/beacon_window.h"
#include "ui/configuration/ioncap_config.h"
#include "ui/point/point_snr_service.h"
#include "ui/prediction/ion_cap.h"
#include "ui/wx/beacon_frame.h"
#include "ui/wx/conditions_frame.h"
#include "ui/wx/configuration_frame.h"
#include "ui/wx/forecast_frame.h"
#include "ui/wx/prediction_frame.h"
#include "ui/wx/wx_messages.h"

namespace skyhop {

/// Waits while a download runs. The Esc key cancels the download.
class DownloadPause : public Pause {
 public:
  /// `pause` must outlive this object.
  explicit DownloadPause(Pause& pause) : pause_(&pause) {}

  void SetEscapeListener(std::function<void()> listener) { on_escape_ = std::move(listener); }
  void Wait(std::chrono::milliseconds duration) override;

 private:
  Pause* pause_;
  std::function<void()> on_escape_;
};

/// All parts of the program with its windows, made and wired in the order in which they need each
/// other. Lives as long as the event loop runs.
class SkyhopProgram : private ConfigurationHost {
 public:
  SkyhopProgram();
  ~SkyhopProgram() override;
  SkyhopProgram(const SkyhopProgram&) = delete;
  SkyhopProgram& operator=(const SkyhopProgram&) = delete;

  /// Starts the program and shows its window. Returns false when it has to end at once.
  [[nodiscard]] bool Start();

  /// Ends the program as the main window's close button does. Returns false while the window is
  /// busy; it closes as soon as it can.
  bool CloseWindow();

  /// What a peer's request to end the program comes to. Without a listener the window is closed as
  /// soon as nothing waits for the user any more.
  void SetEndListener(std::function<void()> listener);

  [[nodiscard]] PredictionFrame& Frame() { return *frame_; }
  [[nodiscard]] Diagnostics& GetDiagnostics() { return diagnostics_; }
  [[nodiscard]] IonCap& Controller() { return controller_; }
  [[nodiscard]] ChartPane& Chart() { return pane_; }

 private:
  void ResetWindows() override;
  [[nodiscard]] std::vector<SideFrame*> SideFrames() const;
  void AttachWindows();
  void ShowToolTips();

  std::filesystem::path folder_;
  std::unique_ptr<Clock> clock_;
  std::unique_ptr<MachineFacts> facts_;
  std::unique_ptr<SettingsStore> store_;
  std::unique_ptr<EngineLauncher> launcher_;
  std::unique_ptr<EngineHost> host_;
  std::unique_ptr<InstanceGuard> instance_;
  std::unique_ptr<RunLocker> locker_;
  WxPause pause_;
  DownloadPause download_pause_{pause_};
  WxMessages messages_;
  Diagnostics diagnostics_;
  Common::Settings settings_;
  Configuration configuration_;
  FreqDependentModule::BandTable bands_;
  PredictionEngine engine_;
  ChartPane pane_;
  // The toolkit destroys windows that have been closed; these see it.
  wxWeakRef<PredictionFrame> frame_;
  wxWeakRef<ForecastFrame> forecast_frame_;
  wxWeakRef<ConditionsFrame> conditions_frame_;
  SpaceWeatherParts space_weather_;
  wxWeakRef<ConditionsFrame> files_frame_;
  CurrentConditions files_window_;
  std::unique_ptr<LinkTransport> transport_;
  ProgramLinks links_;
  IONCAPModule::PointSnr point_;
  LinkedSNRAnswers answers_;
  PointSnrService point_prediction_;
  // The beacons' predictions give way to all others.
  ForegroundLocker foreground_locker_;
  std::unique_ptr<Timekeeping> timekeeping_;
  BeaconPredictions beacon_predictions_;
  wxWeakRef<BeaconFrame> beacon_frame_;
  BeaconWindow beacons_;
  EngineProbe probe_;
  wxWeakRef<ConfigurationFrame> configuration_frame_;
  IoncapConfig configuration_window_;
  IonCap controller_;
  ProgramWindows windows_;
  wxTimer show_timer_;
};

}  // namespace skyhop
