#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "bands/bands.h"
#include "common/clock.h"
#include "common/diagnostics.h"
#include "common/instance_guard.h"
#include "common/settings.h"
#include "common/user_messages.h"
#include "engine/engine_launcher.h"
#include "engine/prediction_engine.h"
#include "ui/prediction/chart/chart_pane.h"
#include "ui/prediction/chart_export.h"
#include "ui/prediction/chart_run.h"
#include "ui/prediction/download_panel.h"
#include "ui/prediction/input_fields.h"
#include "ui/prediction/mode_choice.h"
#include "ui/prediction/next_prediction.h"
#include "ui/prediction/peer_commands.h"
#include "ui/prediction/peer_inputs.h"
#include "ui/prediction/point_panel.h"
#include "ui/prediction/predict_command.h"
#include "ui/prediction/shown_chart.h"
#include "ui/prediction/stations.h"
#include "ui/prediction/transceiver_band.h"
#include "ui/prediction/viewers.h"
#include "ui/prediction/window_status.h"
#include "ui/shared/configuration.h"
#include "ui/shared/prediction_view.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// The controller of the prediction window: owns its parts, starts and ends the program, and hands
/// the window's events to the parts. One table lists the events; each runs in the error trap, which
/// logs its name, and leaves the window usable.
class IonCap {
 public:
  struct Collaborators {
    PredictionView& view;
    ChartPane& chart;
    Configuration& configuration;
    ConfigurationWindow& configuration_window;
    TextWindow& files_window;
    FreqDependentModule::BandTable& bands;
    PredictionEngine& engine;
    EngineLauncher& launcher;
    InstanceGuard& instance;
    RunLocker& locker;
    CommandServer& server;
    PeerLinks& peers;
    SpaceWeather& space_weather;
    PointPrediction& point_prediction;
    BeaconMonitor& beacons;
    UserMessages& messages;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
    const Clock& clock;
    std::filesystem::path program_folder;
    std::filesystem::path help_file;
  };

  explicit IonCap(Collaborators collaborators);
  ~IonCap();
  IonCap(const IonCap&) = delete;
  IonCap& operator=(const IonCap&) = delete;

  /// Starts the program. Returns false, after a message, when it has to end at once because another
  /// instance runs.
  [[nodiscard]] bool Form_Load();
  /// Ends it: saves place and parameters, ends links and server and a running engine.
  void Form_Unload();

  // Events of the window. For options and check boxes the view holds the new state already.
  void Button_Click(Button button);
  void Option_Click(OptionGroup group);
  void Check_Click(CheckBox box);
  void Timer_Tick(WindowTimer timer);
  void Notice_Click();
  /// The web page with this number, 0 to 3, was chosen.
  void WebPage_Click(int page);
  void Field_Enter(TextField field);
  /// Returns false when a message was just shown about the field's text.
  bool Field_Leave(TextField field);
  void Field_Change(TextField field);
  void TheDate_DblClick();

  /// The Predict command.
  void PathsButton_Click();
  /// Hands the inputs to the engine interface and starts a prediction.
  void InitiateForecast();
  /// Predicts the signal-to-noise ratio at `frequency` MHz for `mode`; `snr` is the required one,
  /// empty for the mode's.
  void FreqPredict(double frequency, const std::string& mode, const std::string& snr = {});
  /// See PointPanel::Band.
  [[nodiscard]] std::int16_t GetPredictionBand() const { return point_.Band(); }
  /// Shows or hides the display of the point prediction.
  void SetSNRDisplayActive(bool active);
  // Keep grid square and coordinates of each station in step.
  void UpdateLocalGrid();
  void UpdateLocalLatLon();
  void UpdateDXGrid();
  void UpdateDXLatLon();

  /// Whether a prediction is running.
  [[nodiscard]] bool Running() const { return run_.Running(); }

  /// What peers command and publish.
  [[nodiscard]] CommandTarget& Commands() { return peer_commands_; }
  [[nodiscard]] PeerWindow& Peers() { return peer_inputs_; }
  /// The chart for files, clipboard and paper.
  [[nodiscard]] const ChartExport& Export() const { return export_; }
  /// See DownloadPanel::OriginOf.
  [[nodiscard]] std::string OriginOf(TextField field) const { return downloads_.OriginOf(field); }

 private:
  struct ButtonEvent;
  struct OptionEvent;
  struct CheckEvent;
  struct TimerEvent;

  template <class Body>
  void Handle(const char* name, Body body) {
    with_.diagnostics.Trap(std::string("IonCap.") + name, body);
  }
  template <class Event>
  void Run(const Event& event) {
    Handle(event.name, [&] { event.run(*this); });
  }

  void InitializeWindow();
  void InitializeParameters();
  void RestoreChartOptions();
  void SaveOption(const char* key, bool value);
  void ConfigurationChanged(Configuration::Item item);
  void EnablePeerCommands();
  [[nodiscard]] bool AcceptFields();
  void Predict(int path, int direction);
  void TakeField(TextField field, const std::string& text);
  void InputsChanged();
  void PathChanged();
  void FollowClock();
  void PutToday();

  Collaborators with_;
  WindowStatus status_;
  InputFields fields_;
  Stations stations_;
  TransceiverBand transceiver_;
  ModeChoice modes_;
  NextPrediction next_;
  ShownChart shown_;
  ChartRun run_;
  PredictCommand predict_;
  PointPanel point_;
  PeerInputs peer_inputs_;
  PeerCommands peer_commands_;
  DownloadPanel downloads_;
  ChartExport export_;
  FileViewer files_;
  PageViewer pages_;
  bool loaded_ = false;
  int hour_ = -1;  ///< UTC, as the clock showed it last
  /// Gone with this object: listeners that cannot be taken back ask for it.
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace skyhop
