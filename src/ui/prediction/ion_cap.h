#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "bands/bands.h"
#include "common/clock.h"
#include "common/diagnostics.h"
#include "common/settings.h"
#include "common/user_messages.h"
#include "engine/deck_parameters.h"
#include "engine/engine_launcher.h"
#include "engine/parameters.h"
#include "engine/results.h"
#include "engine/run_control.h"
#include "interop/command_target.h"
#include "interop/peer_window.h"
#include "report/chart_title.h"
#include "report/provenance.h"
#include "ui/prediction/chart/chart_pane.h"
#include "ui/prediction/prediction_view.h"
#include "ui/prediction/view_panel.h"
#include "ui/shared/configuration.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// Everything that a chart was computed for.
struct ChartInputs {
  IONCAPModule::DeckParameters deck;
  std::chrono::year_month_day date;
  EngineChoice engine = EngineChoice::kNone;

  friend bool operator==(const ChartInputs&, const ChartInputs&) = default;
};

/// A prediction from the start of its engine to its end.
struct PredictionRun {
  std::unique_ptr<RunLock> lock;
  EngineChoice engine = EngineChoice::kNone;
  UtcTime started;
  AskedPrediction asked;
  EngineFinding finding;
  std::optional<ChartInputs> inputs;
  std::string title;
  std::string summary;
  int tables_shown = 0;
};

/// The rules of the prediction window, from the program's start to its end: one method for each of
/// its events. Every handler traps its errors, logs its own name with them and leaves the window
/// usable.
///
/// It is also what the commands of peers drive and what follows the values that they publish: a
/// text of theirs that a user could not have entered is logged and changes nothing.
class IonCap : public CommandTarget, public PeerWindow, public DownloadWindow {
 public:
  /// All must outlive the controller.
  struct Collaborators {
    PredictionView& view;
    ViewPanel& panel;
    ChartPane& chart;
    Configuration& configuration;
    ConfigurationWindow& configuration_window;
    TextWindow& files_window;
    FreqDependentModule::BandTable& bands;
    IONCAPModule::Parameters& parameters;
    IONCAPModule::Results& results;
    IONCAPModule::RunControl& run;
    EngineLauncher& launcher;
    const EngineHost& host;
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
  ~IonCap() override;
  IonCap(const IonCap&) = delete;
  IonCap& operator=(const IonCap&) = delete;

  /// Starts the program. Returns false, after the user was told, when it has to end at once because
  /// another instance runs.
  [[nodiscard]] bool Form_Load();
  /// Ends it: saves place and parameters, ends links and server and a running engine.
  void Form_Unload();

  // Commands.
  void PathsButton_Click();
  void PredictSPToCmd_Click();
  void PredictLPToCmd_Click();
  void PredictSPFromCmd_Click();
  void PredictLPFromCmd_Click();
  void AbortButton_Click();
  void ForecastCmd_Click();
  void CurrentCmd_Click();
  void HistoryCmd_Click();
  void UpdateSFICmd_Click();
  void UpdateSSNCmd_Click();
  void BeaconCmd_Click();
  void ConfigCmd_Click();
  void HelpCmd_Click();
  void SNRPredictCmd_Click();
  /// Shows the deck and the results of the last run: in the viewer that the user has set, else in a
  /// window of the program.
  void ShowFilesCmd_Click();
  /// The button of the notice was clicked.
  void Notice_Click();

  /// Hands the inputs to the engine interface and starts a prediction.
  void InitiateForecast();
  /// Predicts the signal-to-noise ratio at `frequency` MHz for `mode`; `snr` is the required one,
  /// empty for the mode's.
  void FreqPredict(double frequency, const std::string& mode, const std::string& snr = {});
  /// Index of the band that a click into the chart chose or the transceiver is on, whichever was
  /// last; -1 for none.
  [[nodiscard]] std::int16_t GetPredictionBand() const;
  /// Shows or hides the display of the point prediction.
  void SetSNRDisplayActive(bool active);
  [[nodiscard]] bool SNRDisplayActive() const { return snr_display_active_; }

  // Keep grid square and coordinates of each station in step.
  void UpdateLocalGrid();
  void UpdateLocalLatLon();
  void UpdateDXGrid();
  void UpdateDXLatLon();

  // Fields.
  /// Whether a typed character may enter the field. Control characters always may.
  [[nodiscard]] static bool AcceptsKey(TextField field, char32_t key);
  /// Enter was struck in the field.
  void Field_Enter(TextField field);
  /// The field was left. Returns false when the user was just told why its text is refused; the
  /// same text is told about once.
  bool Field_Leave(TextField field);
  /// Before a command of the user that reads the fields: takes over what was typed and not left
  /// yet. Returns false after a message about a refused text, unless a prediction itself reports
  /// it.
  [[nodiscard]] bool FieldsAccepted();
  /// The user changed the field's text in any way.
  void Field_Change(TextField field);
  void TheDate_DblClick();

  // Options and check boxes; the view holds the new state already.
  void DXPwr_Click();
  void DXNoiseLevel_Click();
  void LocalNoiseLevel_Click();
  void Path_Click();
  void PredictSignals_Click();
  void ModeSNRCombo_Click();
  void DXTracksTesseraLocation_Click();
  void PlotEnable_Click();
  void OpenBandEnable_Click();
  void ShowColorKeyCheck_Click();
  void ShowCurrentTimeCheck_Click();
  void SNRDisplayCheck_Click();
  void ShowTableCheck_Click();

  // Timers.
  void ExecuteTimer_Tick();
  void EngineWatch_Tick();
  void SNRExecuteTimer_Tick();
  void SolarForecastTimer_Tick();
  void ClockTimer_Tick();
  void ShutDownTimer_Tick();
  void ServerRetryTimer_Tick();
  void PeerValuesTimer_Tick();

  // Downloads.
  void EnableDownloads(bool enable) override;
  void ShowDownload(const std::string& status) override;
  void PutDownloaded(TextField field, const std::string& text) override;

  // Peers' commands.
  void SetShutdownTrigger() override;
  void ResetWindows(std::int32_t value) override;
  void SetSpaceWeather(const std::string& flux, const std::string& k_index) override;
  void SetTransmitterPower(const std::string& watts) override;
  void PredictForPeer(const PeerRequest& request, const std::string& argument) override;
  void FreqPredictForPeer(const PeerRequest& request, const std::string& frequency,
                          const std::string& mode, const std::string& snr) override;

  // What peers publish.
  FollowedBand FollowFrequency(double frequency) override;
  void Follow(LinkControl control, const std::string& text) override;
  void FollowSelection(const PeerPlace& place) override;
  void FollowStation(const PeerPlace& place) override;
  void Forget(LinkControl control) override;
  void LinksChanged() override;

  /// Sets the window's caption: `text` and, when there is an error log, where it lies.
  void UpdateCaption(const std::string& text);
  /// The caption of a window at rest.
  [[nodiscard]] std::string GetPropFormCaption() const;

  /// Whether a prediction is running.
  [[nodiscard]] bool Running() const;
  /// Where the value in a field comes from; empty for fields that no download fills.
  [[nodiscard]] std::string OriginOf(TextField field) const;
  /// The chart's results as comma-separated values; empty when there are none.
  [[nodiscard]] std::string ResultsAsCsv() const;
  /// Opens the web page with this number, 0 to 3.
  void WebPage_Click(int page);
  /// Draws the chart as a picture for files and paper, `scale` times as large as its layout.
  void PaintPicture(Surface& surface, double scale) const;
  /// The same as an SVG document.
  [[nodiscard]] std::string ChartAsSvg() const;

 private:
  // The chart.
  [[nodiscard]] std::optional<ChartInputs> CurrentInputs();
  void MarkOldChart();
  void InputsChanged();
  [[nodiscard]] Notice FinishedNotice(const PredictionRun& run) const;
  [[nodiscard]] std::string TitleOfRun() const;
  [[nodiscard]] ChartModel PictureModel() const;

  /// How often the engine's process is looked at.
  static constexpr std::chrono::milliseconds kWatchInterval{100};

  /// A peer's command to predict, with what followed it.
  struct WaitingRequest {
    PeerRequest request;
    std::string argument;
  };

  /// What was typed into a field last.
  struct FieldState {
    std::optional<std::string> committed;
    std::optional<std::string> refused;  ///< the text that a message was shown about
  };

  // Start and end.
  void InitializeWindow();
  void InitializeEngines();
  void InitializeParameters();
  void RestoreChartOptions();
  void SaveOption(const char* key, bool value);
  void ShowModes();
  void FollowModes();
  void UseMode();
  void ConfigurationChanged(Configuration::Item item);
  void EnablePeerCommands();
  void ShowWebPages();

  // Running.
  [[nodiscard]] bool RefuseSecondRun();
  void Predict(const char* name, int path, int direction);
  [[nodiscard]] bool HandPowerTakeoffAndNoise();
  [[nodiscard]] std::optional<std::size_t> BandInForce();
  void HandFrequencyDependentSettings();
  [[nodiscard]] bool StationsCanBePredicted();
  void HandPathAndDate();
  void StartRun();
  void RunStarted(std::unique_ptr<RunLock> lock);
  void GiveUpStart();
  [[nodiscard]] AskedPrediction Asked() const;
  void TakeResults(const EngineJob::Outcome& outcome);
  void FinishRun();
  void ShowFinished(const PredictionRun& run);
  void FailDeadEngine();
  [[nodiscard]] PredictionRun LeaveRun();
  void Fail(const std::string& reason);
  void ShowNotice(const Notice& notice);
  void UpdateNotice();
  void DownloadSunspotNumber();
  void ShowProgress();
  void EnablePredicting(bool enable);
  void ShowEngine(EngineChoice engine);
  void ShowInViewer(const std::string& viewer, const std::filesystem::path& file);

  // Fields.
  [[nodiscard]] FieldState& StateOf(TextField field);
  [[nodiscard]] bool Commit(TextField field);
  bool Accept(TextField field, const std::string& text);
  [[nodiscard]] std::string Understood(TextField field);
  [[nodiscard]] const char* TypedProblem(TextField field, const std::string& text);
  void HandOn(TextField field, const std::string& text);
  [[nodiscard]] const char* Problem(TextField field, const std::string& text);
  [[nodiscard]] bool LatitudeAcceptable(const std::string& text);
  [[nodiscard]] bool LongitudeAcceptable(const std::string& text);
  void Put(TextField field, const std::string& text);
  void RememberTexts();
  void SettleFields();
  void TextWritten(TextField field);
  void PutToday();
  void FollowClock();
  void ForgetPrefix();

  // Peers.
  void PredictForWaitingPeer();
  void UsePeersText(TextField field, const std::string& text);
  [[nodiscard]] bool UsePeersPlace(TextField latitude, TextField longitude, const PeerPlace& place);
  void UsePeersMode(const std::string& text);
  void ReportUnknownMode(const std::string& text);
  void UseTesseraLocation();
  void ChooseAsRequested(const PeerRequest& request);
  [[nodiscard]] bool FromPeerAcceptable(TextField field, const std::string& text);

  // Point prediction.
  [[nodiscard]] std::string SelectedMode() const;
  void FollowTransceiver();
  void ChooseBand(std::int16_t band);
  [[nodiscard]] std::string UsualFrequency(std::int16_t band) const;
  void FollowPoint(double frequency);

  // Stations.
  void StationsChanged();
  void UpdateGrid(Station station);
  void UpdateLatLon(Station station);
  [[nodiscard]] std::optional<Position> PositionOf(Station station);
  [[nodiscard]] std::optional<Position>& InStep(Station station);
  void RestoreStations();
  void SaveStations();
  void UpdateStationLabels();
  void UpdateConditions();
  void UpdateSolarBars();
  void PreviewSolarBars();

  Collaborators with_;
  /// Gone with this object: listeners that cannot be taken back ask for it.
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
  bool loaded_ = false;
  bool following_stations_ = false;
  bool snr_display_active_ = false;
  std::string caption_;
  std::string caption_hint_;
  std::optional<ChartInputs> chart_inputs_;  ///< that the chart was computed for
  std::optional<ChartInputs> failed_inputs_;
  bool failed_ = false;           ///< the last prediction that was asked for, with failed_inputs_
  SolarBars chart_bars_;          ///< of the chart's prediction
  std::string provenance_;        ///< of the chart's numbers
  Notice notice_;                 ///< about predictions
  bool sunspot_missing_ = false;  ///< the last download of the sunspot number failed
  NoticeAction notice_action_ = NoticeAction::kNone;  ///< of the notice that the window shows
  std::int16_t prediction_band_ = -1;
  int hour_ = -1;                   ///< UTC, as the clock showed it last
  bool starting_ = false;           ///< between the command and the start of its engine
  bool requested_by_peer_ = false;  ///< while a peer's prediction is being started
  /// A peer's prediction that begins when the one that is in progress has ended.
  std::optional<WaitingRequest> waiting_request_;
  PeerPlace tessera_;  ///< the location that is selected there
  std::set<std::string> unknown_modes_;
  std::optional<PredictionRun> running_;
  std::vector<ModeSettings> modes_;  ///< as `ModeSNRCombo` offers them
  std::array<FieldState, kTextFieldCount> fields_;
  /// The position that each station's grid square was made for.
  std::array<std::optional<Position>, 2> in_step_;
};

}  // namespace skyhop
