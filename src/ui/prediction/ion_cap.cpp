// The prediction window's parts, its start and end, and what it follows of the configuration.

#include "ui/prediction/ion_cap.h"

#include <utility>

#include "common/dates.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"

namespace skyhop {
namespace {

constexpr const char* kSection = "Configuration";
constexpr const char* kWindow = "IonCap";
constexpr std::chrono::milliseconds kClockInterval{1000};

}  // namespace

IonCap::IonCap(Collaborators collaborators)
    : with_(std::move(collaborators)),
      status_(with_.view, with_.diagnostics),
      fields_({with_.view, with_.configuration, with_.messages, with_.diagnostics}),
      stations_({with_.view, fields_, with_.engine.parameters, with_.settings, with_.diagnostics}),
      transceiver_(with_.configuration, with_.bands, with_.peers),
      modes_({with_.view, with_.configuration, fields_, with_.engine.parameters,
              [this] { InputsChanged(); }}),
      next_({with_.view, fields_, stations_, modes_, transceiver_, with_.engine.parameters,
             with_.diagnostics}),
      shown_({with_.view, with_.chart, with_.engine.results, fields_, stations_, next_}),
      run_({with_.view, with_.engine, shown_, status_, with_.locker, with_.clock,
            with_.diagnostics}),
      predict_({with_.view, fields_, stations_, next_, with_.engine.parameters, run_,
                with_.diagnostics}),
      point_({with_.view, with_.chart, fields_, modes_, transceiver_, with_.point_prediction,
              with_.diagnostics}),
      peer_inputs_(
          {with_.view, fields_, modes_, point_, with_.engine.parameters, with_.diagnostics}),
      peer_commands_({with_.view, fields_, point_, predict_, with_.peers,
                      with_.configuration_window, with_.diagnostics}),
      downloads_({with_.view, with_.space_weather, fields_, status_, with_.diagnostics,
                  [this] { InputsChanged(); },
                  [this] { run_.Running() ? run_.ShowProgress() : status_.ShowActivity(""); }}),
      export_({with_.chart, shown_, with_.engine.results, with_.diagnostics}),
      files_({with_.engine.run, with_.files_window, fields_, with_.launcher, with_.settings}),
      pages_({with_.view, with_.configuration, fields_, with_.help_file}) {
  fields_.SetListener([this](TextField field, const std::string& text) { TakeField(field, text); });
  fields_.SetTypedListener([this] { stations_.Save(); });
  stations_.SetMovedListener([this] {
    shown_.PreviewSolarBars();
    InputsChanged();
  });
  peer_inputs_.SetBandListener([this] {
    next_.UpdateConditions();
    shown_.MarkOld();
  });
  peer_inputs_.SetLinksListener([this] {
    EnablePeerCommands();
    with_.configuration_window.Peers_Change();
  });
  peer_commands_.SetPathListener([this] { PathChanged(); });
  with_.engine.results.SetTableListener(
      [this](EngineChoice engine) { with_.chart.DisplayTable(engine); });
  with_.chart.SetTimeIndexListener(
      [this] { with_.view.SetChecked(CheckBox::kShowCurrentTimeCheck, false); });
  with_.chart.SetBandListener(
      [this](std::int16_t band) { Handle("ChooseBand", [&] { point_.ChooseBand(band); }); });
  with_.configuration.AddListener([this, alive = std::weak_ptr(alive_)](Configuration::Item item) {
    if (!alive.expired()) ConfigurationChanged(item);
  });
}

IonCap::~IonCap() {
  with_.engine.results.SetTableListener({});
  with_.chart.SetTimeIndexListener({});
  with_.chart.SetBandListener({});
}

void IonCap::InitiateForecast() {
  predict_.InitiateForecast();
}

void IonCap::FreqPredict(double frequency, const std::string& mode, const std::string& snr) {
  point_.Predict(frequency, mode, snr);
}

void IonCap::SetSNRDisplayActive(bool active) {
  point_.SetActive(active);
}

void IonCap::UpdateLocalGrid() {
  Handle("UpdateLocalGrid", [&] { stations_.UpdateGrid(Station::kLocal); });
}

void IonCap::UpdateLocalLatLon() {
  Handle("UpdateLocalLatLon", [&] { stations_.UpdateLatLon(Station::kLocal); });
}

void IonCap::UpdateDXGrid() {
  Handle("UpdateDXGrid", [&] { stations_.UpdateGrid(Station::kDX); });
}

void IonCap::UpdateDXLatLon() {
  Handle("UpdateDXLatLon", [&] { stations_.UpdateLatLon(Station::kDX); });
}

// Start and end.

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
  step([&] {
    if (with_.engine.run.LoadEngineData(with_.program_folder)) PutToday();
  });
  step([&] {
    run_.EnablePredicting(true);
    downloads_.EnableDownloads(true);
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
  step([&] { shown_.UpdateSolarBars(); });
  step([&] { RestoreChartOptions(); });
  // A slow network must not keep the window from the user.
  step([&] { with_.view.ShowWindow(); });
  step([&] {
    if (with_.space_weather.Available() && with_.configuration.DownloadSsnAtStart()) {
      downloads_.DownloadSunspotNumber();
    }
  });
  step([&] {
    FollowClock();
    EnablePeerCommands();
    with_.view.StartTimer(WindowTimer::kClockTimer, kClockInterval);
  });
  status_.ShowActivity("");
  return true;
}

void IonCap::InitializeWindow() {
  with_.view.SetPlacement(RestoreWindowPosition(kWindow, with_.view.Placement(),
                                                with_.view.Monitors(), with_.settings));
  with_.diagnostics.SetDebug(
      with_.settings.GetBooleanSetting(kProductName, kSection, "DiagMode", "False"));
  with_.configuration_window.Form_Load();
  status_.ShowActivity("");
  status_.ShowNotice({Notice::Kind::kEmpty,
                      "Enter the grid squares of both stations,\nor their latitudes and "
                      "longitudes,\nthen press Predict (F5)."});
  const ProgramVersion version = Version();
  with_.settings.Store().SaveSetting(kProductName, "General", "Version",
                                     std::to_string(version.major_number) +
                                         std::to_string(version.minor_number) +
                                         std::to_string(version.revision));
}

void IonCap::InitializeParameters() {
  IONCAPModule::Parameters& parameters = with_.engine.parameters;
  modes_.Show();
  ShowForm(parameters.Initialize(), with_.view, with_.configuration);
  stations_.Restore();
  with_.view.Select(OptionGroup::kDDEOption, dde_option::kRequestedHere);
  if (with_.view.Selected(OptionGroup::kModeSNRCombo) >= 0) {
    modes_.Use();
  } else if (Trim(with_.view.Text(TextField::kSNR)).empty()) {
    // The list lacks the stored mode, so the field gets the stored SNR.
    fields_.Put(TextField::kSNR,
                with_.settings.GetStringSetting(kProductName, kSection, "SNR", "24"));
    parameters.SetPredictionSNR(with_.view.Text(TextField::kSNR));
  }
  with_.chart.SetOpenBandEnable(with_.view.Checked(CheckBox::kOpenBandEnable));
  with_.chart.SetPlotEnable(with_.view.Checked(CheckBox::kPlotEnable));
  stations_.Follow();
  next_.UpdateConditions();
  fields_.RememberAll();
  pages_.OfferPages();
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

void IonCap::ConfigurationChanged(Configuration::Item item) {
  // Before the start, changes belong to restoring the configuration.
  if (!loaded_) return;
  with_.diagnostics.Trap("IonCap.ConfigurationChanged", [&] {
    switch (item) {
      case Configuration::Item::kDistanceMiles:
        stations_.UpdateLabels();
        break;
      case Configuration::Item::kModes:
        modes_.Follow();
        break;
      case Configuration::Item::kShowToolTips:
        with_.view.ShowToolTips(with_.configuration.ShowToolTips());
        break;
      case Configuration::Item::kDiagMode:
        with_.diagnostics.SetDebug(with_.configuration.DiagMode());
        break;
      case Configuration::Item::kFreqDependent:
      case Configuration::Item::kAntennas:
      case Configuration::Item::kEngine:
        InputsChanged();
        break;
      case Configuration::Item::kUrls:
        pages_.OfferPages();
        break;
      case Configuration::Item::kDualMonitor:
      case Configuration::Item::kDownloadSsnAtStart:
        // The program reads these when it needs them.
        break;
    }
  });
}

/// Shows the time. The chart's time and date follow while the user wants that.
void IonCap::FollowClock() {
  const HourMinute time = UtcHourMinute(with_.clock.UtcNow());
  with_.view.SetLabel(Label::kClock,
                      PaddedNumber(time.hour, 2) + ":" + PaddedNumber(time.minute, 2) + " UTC");
  if (std::exchange(hour_, time.hour) != time.hour) InputsChanged();
  if (!with_.view.Checked(CheckBox::kShowCurrentTimeCheck)) return;
  with_.chart.UpdateVerticalTimeBar();
  PutToday();
}

void IonCap::PutToday() {
  const std::string today = DateText(UtcDate(with_.clock.UtcNow()));
  if (with_.view.Text(TextField::kTheDate) == today) return;
  fields_.Put(TextField::kTheDate, today);
  shown_.PreviewSolarBars();
  InputsChanged();
}

void IonCap::EnablePeerCommands() {
  with_.view.Enable(Button::kHistoryCmd, with_.peers.HasSolarHistory());
}

void IonCap::Form_Unload() {
  if (!loaded_) return;
  loaded_ = false;
  peer_commands_.ForgetWaitingPeer();
  const auto step = [&](auto&& body) { with_.diagnostics.Trap("IonCap.Form_Unload", body); };
  step([&] { run_.Terminate(); });
  step([&] { with_.point_prediction.Terminate(); });
  step([&] { fields_.SettleAll(); });
  step([&] { stations_.Save(); });
  step([&] {
    SaveWindowPosition(kWindow, with_.view.Placement(), with_.settings, with_.diagnostics);
  });
  step([&] { with_.peers.Terminate(); });
  step([&] {
    with_.engine.parameters.Finalize(fields_.Form());
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
