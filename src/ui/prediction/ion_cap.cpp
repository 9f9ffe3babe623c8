// Commands, options and timers of the prediction window that concern no run and no field.

#include "ui/prediction/ion_cap.h"

#include <array>

#include "common/files.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "ui/shared/web_address.h"

namespace skyhop {
namespace {

constexpr std::array<Address, 4> kWebPages = {Address::kURL0, Address::kURL1, Address::kURL2,
                                              Address::kURL3};

}  // namespace

IonCap::IonCap(Collaborators collaborators)
    : with_(std::move(collaborators)),
      parameters_(with_.engine.parameters),
      run_(with_.engine.run) {
  parameters_.Attach(this);
  with_.engine.results.SetTableListener(
      [this](EngineChoice engine) { with_.chart.DisplayTable(engine); });
  with_.chart.SetTimeIndexListener(
      [this] { with_.view.SetChecked(CheckBox::kShowCurrentTimeCheck, false); });
  with_.chart.SetBandListener([this](std::int16_t band) { ChooseBand(band); });
  with_.configuration.AddListener([this, alive = std::weak_ptr(alive_)](Configuration::Item item) {
    if (!alive.expired()) ConfigurationChanged(item);
  });
  with_.space_weather.Attach(this);
}

IonCap::~IonCap() {
  with_.space_weather.Attach(nullptr);
  with_.engine.results.SetTableListener({});
  parameters_.Attach(nullptr);
  with_.chart.SetTimeIndexListener({});
  with_.chart.SetBandListener({});
}

// Commands.

void IonCap::ForecastCmd_Click() {
  with_.diagnostics.Trap("IonCap.ForecastCmd_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.ForecastCmd_Click");
    with_.space_weather.ShowForecast();
  });
}

void IonCap::CurrentCmd_Click() {
  with_.diagnostics.Trap("IonCap.CurrentCmd_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.CurrentCmd_Click");
    with_.space_weather.ShowCurrentConditions();
  });
}

void IonCap::HistoryCmd_Click() {
  with_.diagnostics.Trap("IonCap.HistoryCmd_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.HistoryCmd_Click");
    with_.peers.DisplaySolarHistory();
  });
}

void IonCap::UpdateSFICmd_Click() {
  with_.diagnostics.Trap("IonCap.UpdateSFICmd_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.UpdateSFICmd_Click");
    with_.space_weather.UpdateCurrentConditions();
  });
}

void IonCap::UpdateSSNCmd_Click() {
  with_.diagnostics.Trap("IonCap.UpdateSSNCmd_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.UpdateSSNCmd_Click");
    DownloadSunspotNumber();
  });
}

void IonCap::DownloadSunspotNumber() {
  with_.space_weather.DownloadSSN();
  sunspot_missing_ = with_.space_weather.SunspotNumberFailed();
  UpdateNotice();
}

void IonCap::BeaconCmd_Click() {
  with_.diagnostics.Trap("IonCap.BeaconCmd_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.BeaconCmd_Click");
    with_.beacons.Show();
  });
}

void IonCap::ConfigCmd_Click() {
  with_.diagnostics.Trap("IonCap.ConfigCmd_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.ConfigCmd_Click");
    with_.configuration_window.Show();
  });
}

void IonCap::HelpCmd_Click() {
  with_.diagnostics.Trap("IonCap.HelpCmd_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.HelpCmd_Click");
    const std::string file = PathText(with_.help_file);
    if (with_.view.OpenInBrowser(Common::HTTPFilename(file))) return;
    with_.messages.Show("The help cannot be opened in a browser; it is in " + file, kProductName);
  });
}

void IonCap::ShowNotice(const Notice& notice) {
  notice_ = notice;
  UpdateNotice();
}

/// A notice about a prediction goes before the one about a download, which waits behind it.
void IonCap::UpdateNotice() {
  const bool free = notice_.kind == Notice::Kind::kNone || notice_.kind == Notice::Kind::kEmpty;
  const Notice shown = free && sunspot_missing_
                           ? Notice{Notice::Kind::kWarning,
                                    "This month's sunspot number was not downloaded. Predictions "
                                    "use the values of the Conditions tab.",
                                    NoticeAction::kRetryDownload}
                           : notice_;
  notice_action_ = shown.action;
  with_.view.ShowNotice(shown);
}

void IonCap::Notice_Click() {
  with_.diagnostics.Trap("IonCap.Notice_Click", [&] {
    switch (notice_action_) {
      case NoticeAction::kShowReceiver:
        return with_.view.ShowTab(Tab::kReceiver);
      case NoticeAction::kShowConfiguration:
        return ConfigCmd_Click();
      case NoticeAction::kRetryDownload:
        return UpdateSSNCmd_Click();
      case NoticeAction::kNone:
        break;
    }
  });
}

/// Offers the pages that have an address.
void IonCap::ShowWebPages() {
  std::vector<WebPage> pages;
  for (std::size_t page = 0; page < kWebPages.size(); ++page) {
    const std::string url(Trim(with_.configuration.Url(kWebPages.at(page))));
    if (!url.empty()) pages.push_back({static_cast<int>(page), WebPageTitle(url), url});
  }
  with_.view.SetWebPages(pages);
}

void IonCap::WebPage_Click(int page) {
  with_.diagnostics.Trap("IonCap.WebPage_Click", [&] {
    const std::string url(
        Trim(with_.configuration.Url(kWebPages.at(static_cast<std::size_t>(page)))));
    if (url.empty()) {
      with_.messages.Show("Web page " + std::to_string(page + 1) +
                              " has no address; enter one in the Configuration window's "
                              "'Prediction URLs' panel",
                          kProductName);
    } else if (!IsWebAddress(url)) {
      with_.messages.Show("Web page " + std::to_string(page + 1) +
                              " cannot be opened: its address does not begin with http:// or "
                              "https://",
                          kProductName);
    } else if (!with_.view.OpenInBrowser(url)) {
      with_.messages.Show(url + " cannot be opened in a browser", kProductName);
    }
  });
}

void IonCap::EnableDownloads(bool enable) {
  with_.diagnostics.Trap("IonCap.EnableDownloads", [&] {
    const bool possible = enable && with_.space_weather.Available();
    for (const Button button : {Button::kForecastCmd, Button::kCurrentCmd, Button::kUpdateSFICmd,
                                Button::kUpdateSSNCmd}) {
      with_.view.Enable(button, possible);
    }
  });
}

void IonCap::ShowDownload(const std::string& status) {
  with_.diagnostics.Trap("IonCap.ShowDownload", [&] {
    if (!status.empty()) {
      UpdateCaption(GetPropFormCaption() + " - " + status);
    } else if (Running()) {
      ShowProgress();
    } else {
      UpdateCaption(GetPropFormCaption());
    }
  });
}

void IonCap::PutDownloaded(TextField field, const std::string& text) {
  with_.diagnostics.Trap("IonCap.PutDownloaded", [&] {
    Put(field, text);
    InputsChanged();
  });
}

std::string IonCap::OriginOf(TextField field) const {
  return with_.diagnostics.Trap("IonCap.OriginOf", std::string(),
                                [&] { return with_.space_weather.OriginOf(field); });
}

void IonCap::UpdateCaption(const std::string& text) {
  caption_ = text;
  caption_hint_ = with_.diagnostics.CaptionHint();
  with_.view.SetCaption(caption_ + caption_hint_);
}

std::string IonCap::GetPropFormCaption() const {
  return std::string(kProductName) + " " + VersionText();
}

// Options and check boxes.

void IonCap::DXPwr_Click() {
  with_.diagnostics.Trap("IonCap.DXPwr_Click", [&] {
    parameters_.SetPredictionPower(IONCAPModule::DXPower(Form()));
    UpdateConditions();
    InputsChanged();
  });
}

void IonCap::DXNoiseLevel_Click() {
  with_.diagnostics.Trap("IonCap.DXNoiseLevel_Click", [&] {
    parameters_.SetPredictionNoise(IONCAPModule::DXNoiseIndex(Form()));
    UpdateConditions();
    InputsChanged();
  });
}

void IonCap::LocalNoiseLevel_Click() {
  with_.diagnostics.Trap("IonCap.LocalNoiseLevel_Click", [&] {
    parameters_.SetPredictionNoise(IONCAPModule::LocalNoiseIndex(Form()));
    UpdateConditions();
    InputsChanged();
  });
}

void IonCap::Path_Click() {
  with_.diagnostics.Trap("IonCap.Path_Click", [&] {
    UpdateStationLabels();
    InputsChanged();
  });
}

void IonCap::PredictSignals_Click() {
  with_.diagnostics.Trap("IonCap.PredictSignals_Click", [&] {
    UpdateConditions();
    InputsChanged();
  });
}

void IonCap::ModeSNRCombo_Click() {
  with_.diagnostics.Trap("IonCap.ModeSNRCombo_Click", [&] { UseMode(); });
}

void IonCap::DXTracksTesseraLocation_Click() {
  with_.diagnostics.Trap("IonCap.DXTracksTesseraLocation_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.DXTracksTesseraLocation_Click");
    UseTesseraLocation();
  });
}

void IonCap::PlotEnable_Click() {
  with_.diagnostics.Trap("IonCap.PlotEnable_Click", [&] {
    with_.chart.SetPlotEnable(with_.view.Checked(CheckBox::kPlotEnable));
  });
}

void IonCap::OpenBandEnable_Click() {
  with_.diagnostics.Trap("IonCap.OpenBandEnable_Click", [&] {
    with_.chart.SetOpenBandEnable(with_.view.Checked(CheckBox::kOpenBandEnable));
  });
}

void IonCap::ShowColorKeyCheck_Click() {
  with_.diagnostics.Trap("IonCap.ShowColorKeyCheck_Click", [&] {
    const bool show = with_.view.Checked(CheckBox::kShowColorKeyCheck);
    with_.chart.ShowColorKeys(show);
    SaveOption("ShowColorKey", show);
  });
}

void IonCap::ShowTableCheck_Click() {
  with_.diagnostics.Trap("IonCap.ShowTableCheck_Click", [&] {
    const bool show = with_.view.Checked(CheckBox::kShowTableCheck);
    with_.chart.SetTableView(show);
    SaveOption("ShowTable", show);
  });
}

void IonCap::ShowCurrentTimeCheck_Click() {
  with_.diagnostics.Trap("IonCap.ShowCurrentTimeCheck_Click", [&] {
    with_.chart.UpdateVerticalTimeBar();
    FollowClock();
    SaveOption("ShowCurrentTime", with_.view.Checked(CheckBox::kShowCurrentTimeCheck));
  });
}

// Timers.

void IonCap::SolarForecastTimer_Tick() {
  with_.diagnostics.Trap("IonCap.SolarForecastTimer_Tick",
                         [&] { with_.space_weather.SolarForecastTimer_Tick(); });
}

void IonCap::ClockTimer_Tick() {
  with_.diagnostics.Trap("IonCap.ClockTimer_Tick", [&] {
    FollowClock();
    EnablePeerCommands();
    // Any handler may have logged an error.
    if (with_.diagnostics.CaptionHint() != caption_hint_) UpdateCaption(caption_);
  });
}

void IonCap::ShutDownTimer_Tick() {
  with_.diagnostics.Trap("IonCap.ShutDownTimer_Tick", [&] {
    with_.view.StopTimer(WindowTimer::kShutDownTimer);
    with_.view.Close();
  });
}

}  // namespace skyhop
