// The prediction window's start and end, and what it follows of the configuration.

#include "common/dates.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "ui/prediction/ion_cap.h"

namespace skyhop {
namespace {

constexpr const char* kSection = "Configuration";
constexpr const char* kWindow = "IonCap";
constexpr std::chrono::milliseconds kClockInterval{1000};

}  // namespace

bool IonCap::Form_Load() {
  Diagnostics& diagnostics = with_.diagnostics;
  const bool another = diagnostics.Trap("IonCap.Form_Load", false,
                                        [&] { return with_.instance.AnotherIsRunning(); });
  if (another) {
    diagnostics.Trap("IonCap.Form_Load", [&] { with_.instance.ShowOther(); });
    with_.messages.Show(std::string(kProductName) + " is already running on this PC", kProductName);
    return false;
  }
  loaded_ = true;
  // A step that fails leaves its own part of the window as it was, not what comes after it.
  const auto step = [&](auto&& body) { diagnostics.Trap("IonCap.Form_Load", body); };
  step([&] { InitializeWindow(); });
  step([&] { with_.server.AcknowledgeLauncher(); });
  step([&] { InitializeEngines(); });
  step([&] {
    EnablePredicting(true);
    EnableDownloads(true);
    EnablePeerCommands();
    with_.view.Enable(Button::kSNRPredictCmd, true);
    with_.view.Enable(Button::kBeaconCmd, with_.beacons.Available());
    with_.view.Enable(Button::kShowFilesCmd, false);
    with_.view.ShowToolTips(with_.configuration.ShowToolTips());
    diagnostics.DebugLog("IonCap.Form_Load: start");
  });
  step([&] { InitializeParameters(); });
  step([&] { with_.server.Initialize(); });
  step([&] { with_.peers.Initialize(); });
  step([&] { UpdateSolarBars(); });
  step([&] { RestoreChartOptions(); });
  // A slow network must not keep the window from the user.
  step([&] { with_.view.ShowWindow(); });
  step([&] {
    if (with_.space_weather.Available() && with_.configuration.DownloadSsnAtStart()) {
      DownloadSunspotNumber();
    }
  });
  step([&] {
    FollowClock();
    EnablePeerCommands();
    with_.view.StartTimer(WindowTimer::kClockTimer, kClockInterval);
  });
  UpdateCaption(GetPropFormCaption());
  return true;
}

void IonCap::InitializeWindow() {
  with_.view.SetPlacement(RestoreWindowPosition(kWindow, with_.view.Placement(),
                                                with_.view.Monitors(), with_.settings));
  with_.diagnostics.SetDebug(
      with_.settings.GetBooleanSetting(kProductName, kSection, "DiagMode", "False"));
  with_.configuration_window.Form_Load();
  UpdateCaption(GetPropFormCaption());
  ShowNotice({Notice::Kind::kEmpty,
              "Enter the grid squares of both stations,\nor their latitudes and "
              "longitudes,\nthen press Predict (F5)."});
  const ProgramVersion version = Version();
  with_.settings.Store().SaveSetting(kProductName, "General", "Version",
                                     std::to_string(version.major_number) +
                                         std::to_string(version.minor_number) +
                                         std::to_string(version.revision));
}

void IonCap::InitializeEngines() {
  if (run_.LoadEngineData(with_.program_folder)) PutToday();
}

void IonCap::InitializeParameters() {
  ShowModes();
  ShowForm(parameters_.Initialize(), with_.view, with_.configuration);
  RestoreStations();
  with_.view.Select(OptionGroup::kDDEOption, dde_option::kRequestedHere);
  if (with_.view.Selected(OptionGroup::kModeSNRCombo) >= 0) {
    UseMode();
  } else if (Trim(with_.view.Text(TextField::kSNR)).empty()) {
    // The stored mode is no longer in the list, so the field's own value counts again.
    Put(TextField::kSNR, with_.settings.GetStringSetting(kProductName, kSection, "SNR", "24"));
    parameters_.SetPredictionSNR(with_.view.Text(TextField::kSNR));
  }
  with_.chart.SetOpenBandEnable(with_.view.Checked(CheckBox::kOpenBandEnable));
  with_.chart.SetPlotEnable(with_.view.Checked(CheckBox::kPlotEnable));
  StationsChanged();
  UpdateConditions();
  RememberTexts();
  ShowWebPages();
}

void IonCap::RestoreChartOptions() {
  const bool keys =
      with_.settings.GetBooleanSetting(kProductName, kSection, "ShowColorKey", "True");
  with_.view.SetChecked(CheckBox::kShowColorKeyCheck, keys);
  with_.chart.ShowColorKeys(keys);
  with_.view.SetChecked(
      CheckBox::kShowCurrentTimeCheck,
      with_.settings.GetBooleanSetting(kProductName, kSection, "ShowCurrentTime", "True"));
  const bool table = with_.settings.GetBooleanSetting(kProductName, kSection, "ShowTable", "False");
  with_.view.SetChecked(CheckBox::kShowTableCheck, table);
  with_.chart.SetTableView(table);
  SetSNRDisplayActive(
      with_.settings.GetBooleanSetting(kProductName, kSection, "ShowSNRDisplay", "False"));
}

void IonCap::SaveOption(const char* key, bool value) {
  with_.settings.Store().SaveSetting(kProductName, kSection, key, BooleanText(value));
}

void IonCap::ShowModes() {
  modes_ = with_.configuration.Modes();
  std::vector<std::string> names;
  names.reserve(modes_.size());
  for (const ModeSettings& mode : modes_) names.push_back(mode.mode);
  with_.view.SetModes(names);
}

/// Puts the required SNR of the selected mode into its field and into the prediction.
void IonCap::UseMode() {
  const int selected = with_.view.Selected(OptionGroup::kModeSNRCombo);
  if (selected < 0 || selected >= static_cast<int>(modes_.size())) return;
  const std::string& snr = modes_[static_cast<std::size_t>(selected)].snr;
  Put(TextField::kSNR, snr);
  parameters_.SetPredictionSNR(snr);
  InputsChanged();
}

/// Shows the new list of modes; the selected mode stays selected by its name, wherever it is now.
void IonCap::FollowModes() {
  const int selected = with_.view.Selected(OptionGroup::kModeSNRCombo);
  std::optional<std::string> name;
  if (selected >= 0 && selected < static_cast<int>(modes_.size())) {
    name = modes_[static_cast<std::size_t>(selected)].mode;
  }
  ShowModes();
  int index = -1;
  for (std::size_t mode = 0; name && mode < modes_.size(); ++mode) {
    if (EqualsIgnoringCase(modes_[mode].mode, *name)) index = static_cast<int>(mode);
  }
  with_.view.Select(OptionGroup::kModeSNRCombo, index);
  UseMode();
}

void IonCap::ConfigurationChanged(Configuration::Item item) {
  // What is told before the start is part of restoring the configuration.
  if (!loaded_) return;
  with_.diagnostics.Trap("IonCap.ConfigurationChanged", [&] {
    switch (item) {
      case Configuration::Item::kDistanceMiles:
        UpdateStationLabels();
        break;
      case Configuration::Item::kModes:
        FollowModes();
        break;
      case Configuration::Item::kShowToolTips:
        with_.view.ShowToolTips(with_.configuration.ShowToolTips());
        break;
      case Configuration::Item::kDiagMode:
        with_.diagnostics.SetDebug(with_.configuration.DiagMode());
        break;
      case Configuration::Item::kFreqDependent:
        UpdateConditions();
        InputsChanged();
        break;
      case Configuration::Item::kAntennas:
      case Configuration::Item::kEngine:
        InputsChanged();
        break;
      case Configuration::Item::kUrls:
        ShowWebPages();
        break;
      case Configuration::Item::kDualMonitor:
      case Configuration::Item::kDownloadSsnAtStart:
        // Asked for when they are needed.
        break;
    }
  });
}

void IonCap::EnablePeerCommands() {
  with_.view.Enable(Button::kHistoryCmd, with_.peers.HasSolarHistory());
}

void IonCap::Form_Unload() {
  if (!loaded_) return;
  loaded_ = false;
  waiting_request_.reset();
  const auto step = [&](auto&& body) { with_.diagnostics.Trap("IonCap.Form_Unload", body); };
  step([&] {
    // A run counts even when its timer has stopped already.
    if (!running_ && !Running()) return;
    run_.Abort();
    (void)LeaveRun();
  });
  step([&] { with_.point_prediction.Terminate(); });
  step([&] { SettleFields(); });
  step([&] { SaveStations(); });
  step([&] {
    SaveWindowPosition(kWindow, with_.view.Placement(), with_.settings, with_.diagnostics);
  });
  step([&] { with_.peers.Terminate(); });
  step([&] {
    parameters_.Finalize(Form());
    with_.configuration.SaveUrls();
  });
  step([&] { with_.server.Terminate(); });
  step([&] { with_.space_weather.Terminate(); });
  step([&] { with_.beacons.Form_Unload(); });
  step([&] { with_.files_window.Form_Unload(); });
  step([&] { with_.configuration_window.Form_Unload(); });
  step([&] {
    for (int timer = 0; timer < kWindowTimerCount; ++timer) {
      with_.view.StopTimer(static_cast<WindowTimer>(timer));
    }
  });
}

}  // namespace skyhop
