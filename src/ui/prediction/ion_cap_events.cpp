// The events of the prediction window.

#include <algorithm>
#include <array>

#include "common/text.h"
#include "ui/prediction/ion_cap.h"

namespace skyhop {
namespace {

/// The event of a control; the tables hold one for each.
template <class Events, class Control>
const auto& Find(const Events& events, Control control) {
  return *std::find_if(events.begin(), events.end(),
                       [&](const auto& event) { return event.control == control; });
}

}  // namespace

struct IonCap::ButtonEvent {
  Button control;
  const char* name;
  /// The command reads the fields: a key can start it while a field still has the focus.
  bool takes_fields;
  void (*run)(IonCap&);
};

void IonCap::Button_Click(Button button) {
  static constexpr auto kEvents = std::to_array<ButtonEvent>({
      {Button::kPathsButton, "PathsButton_Click", true,
       [](IonCap& c) { c.predict_.Predict(false); }},
      {Button::kPredictSPToCmd, "PredictSPToCmd_Click", true,
       [](IonCap& c) { c.Predict(path_option::kShort, direction_option::kToTheDXStation); }},
      {Button::kPredictLPToCmd, "PredictLPToCmd_Click", true,
       [](IonCap& c) { c.Predict(path_option::kLong, direction_option::kToTheDXStation); }},
      {Button::kPredictSPFromCmd, "PredictSPFromCmd_Click", true,
       [](IonCap& c) { c.Predict(path_option::kShort, direction_option::kFromTheDXStation); }},
      {Button::kPredictLPFromCmd, "PredictLPFromCmd_Click", true,
       [](IonCap& c) { c.Predict(path_option::kLong, direction_option::kFromTheDXStation); }},
      {Button::kAbortButton, "AbortButton_Click", false,
       [](IonCap& c) {
         c.peer_commands_.ForgetWaitingPeer();
         c.run_.Abort();
       }},
      {Button::kForecastCmd, "ForecastCmd_Click", false,
       [](IonCap& c) { c.with_.space_weather.ShowForecast(); }},
      {Button::kCurrentCmd, "CurrentCmd_Click", false,
       [](IonCap& c) { c.with_.space_weather.ShowCurrentConditions(); }},
      {Button::kHistoryCmd, "HistoryCmd_Click", false,
       [](IonCap& c) { c.with_.peers.DisplaySolarHistory(); }},
      {Button::kUpdateSFICmd, "UpdateSFICmd_Click", false,
       [](IonCap& c) { c.with_.space_weather.UpdateCurrentConditions(); }},
      {Button::kUpdateSSNCmd, "UpdateSSNCmd_Click", false,
       [](IonCap& c) { c.downloads_.DownloadSunspotNumber(); }},
      {Button::kBeaconCmd, "BeaconCmd_Click", false, [](IonCap& c) { c.with_.beacons.Show(); }},
      {Button::kConfigCmd, "ConfigCmd_Click", false,
       [](IonCap& c) { c.with_.configuration_window.Show(); }},
      {Button::kHelpCmd, "HelpCmd_Click", false, [](IonCap& c) { c.pages_.ShowHelp(); }},
      {Button::kSNRPredictCmd, "SNRPredictCmd_Click", true,
       [](IonCap& c) { c.point_.PredictTyped(); }},
      {Button::kShowFilesCmd, "ShowFilesCmd_Click", false, [](IonCap& c) { c.files_.Show(); }},
  });
  const ButtonEvent& event = Find(kEvents, button);
  Handle(event.name, [&] {
    if (event.takes_fields && !AcceptFields()) return;
    // PredictCommand logs the name of its own command.
    if (button != Button::kPathsButton) {
      with_.diagnostics.DebugLog(std::string("IonCap.") + event.name);
    }
    event.run(*this);
  });
  peer_commands_.PredictForWaitingPeer();
}

/// A field that cannot be taken over is logged; the command is executed all the same.
bool IonCap::AcceptFields() {
  return with_.diagnostics.Trap("IonCap.FieldsAccepted", true, [&] { return fields_.AcceptAll(); });
}

void IonCap::PathsButton_Click() {
  predict_.Predict(false);
  peer_commands_.PredictForWaitingPeer();
}

/// One of the combined buttons: chooses path and direction and predicts.
void IonCap::Predict(int path, int direction) {
  if (predict_.RefuseSecondRun()) return;
  with_.view.Select(OptionGroup::kPath, path);
  with_.view.Select(OptionGroup::kPredictSignals, direction);
  PathChanged();
  predict_.Predict(false);
}

struct IonCap::OptionEvent {
  OptionGroup control;
  const char* name;
  void (*run)(IonCap&);
};

void IonCap::Option_Click(OptionGroup group) {
  static constexpr auto kEvents = std::to_array<OptionEvent>({
      {OptionGroup::kLocalNoiseLevel, "LocalNoiseLevel_Click",
       [](IonCap& c) {
         c.with_.engine.parameters.SetPredictionNoise(
             IONCAPModule::LocalNoiseIndex(c.fields_.Form()));
         c.InputsChanged();
       }},
      {OptionGroup::kDXNoiseLevel, "DXNoiseLevel_Click",
       [](IonCap& c) {
         c.with_.engine.parameters.SetPredictionNoise(IONCAPModule::DXNoiseIndex(c.fields_.Form()));
         c.InputsChanged();
       }},
      {OptionGroup::kDXPwr, "DXPwr_Click",
       [](IonCap& c) {
         c.with_.engine.parameters.SetPredictionPower(IONCAPModule::DXPower(c.fields_.Form()));
         c.InputsChanged();
       }},
      {OptionGroup::kPath, "Path_Click", [](IonCap& c) { c.PathChanged(); }},
      {OptionGroup::kPredictSignals, "PredictSignals_Click", [](IonCap& c) { c.InputsChanged(); }},
      {OptionGroup::kModeSNRCombo, "ModeSNRCombo_Click", [](IonCap& c) { c.modes_.Use(); }},
      {OptionGroup::kDDEOption, "DDEOption_Click", [](IonCap&) {}},
  });
  Run(Find(kEvents, group));
}

struct IonCap::CheckEvent {
  CheckBox control;
  const char* name;
  void (*run)(IonCap&, bool checked);
};

void IonCap::Check_Click(CheckBox box) {
  static constexpr auto kEvents = std::to_array<CheckEvent>({
      {CheckBox::kDXTracksTesseraLocation, "DXTracksTesseraLocation_Click",
       [](IonCap& c, bool) {
         c.with_.diagnostics.DebugLog("IonCap.DXTracksTesseraLocation_Click");
         c.peer_inputs_.UseTesseraLocation();
       }},
      {CheckBox::kPlotEnable, "PlotEnable_Click",
       [](IonCap& c, bool checked) { c.with_.chart.SetPlotEnable(checked); }},
      {CheckBox::kOpenBandEnable, "OpenBandEnable_Click",
       [](IonCap& c, bool checked) { c.with_.chart.SetOpenBandEnable(checked); }},
      {CheckBox::kShowColorKeyCheck, "ShowColorKeyCheck_Click",
       [](IonCap& c, bool checked) {
         c.with_.chart.ShowColorKeys(checked);
         c.SaveOption("ShowColorKey", checked);
       }},
      {CheckBox::kShowCurrentTimeCheck, "ShowCurrentTimeCheck_Click",
       [](IonCap& c, bool checked) {
         c.with_.chart.UpdateVerticalTimeBar();
         c.FollowClock();
         c.SaveOption("ShowCurrentTime", checked);
       }},
      {CheckBox::kSNRDisplayCheck, "SNRDisplayCheck_Click",
       [](IonCap& c, bool checked) {
         c.SetSNRDisplayActive(checked);
         c.SaveOption("ShowSNRDisplay", checked);
         if (checked) c.point_.FollowTransceiver();
       }},
      {CheckBox::kShowTableCheck, "ShowTableCheck_Click",
       [](IonCap& c, bool checked) {
         c.with_.chart.SetTableView(checked);
         c.SaveOption("ShowTable", checked);
       }},
  });
  const CheckEvent& event = Find(kEvents, box);
  Handle(event.name, [&] { event.run(*this, with_.view.Checked(box)); });
}

struct IonCap::TimerEvent {
  WindowTimer control;
  const char* name;
  void (*run)(IonCap&);
};

void IonCap::Timer_Tick(WindowTimer timer) {
  static constexpr auto kEvents = std::to_array<TimerEvent>({
      {WindowTimer::kExecuteTimer, "ExecuteTimer_Tick", [](IonCap& c) { c.run_.Execute(); }},
      {WindowTimer::kEngineWatch, "EngineWatch_Tick", [](IonCap& c) { c.run_.Watch(); }},
      {WindowTimer::kSNRExecuteTimer, "SNRExecuteTimer_Tick",
       [](IonCap& c) { c.with_.point_prediction.SNRExecuteTimer_Tick(); }},
      {WindowTimer::kSolarForecastTimer, "SolarForecastTimer_Tick",
       [](IonCap& c) { c.with_.space_weather.SolarForecastTimer_Tick(); }},
      {WindowTimer::kClockTimer, "ClockTimer_Tick",
       [](IonCap& c) {
         c.FollowClock();
         c.EnablePeerCommands();
         c.status_.FollowErrorLog();
       }},
      {WindowTimer::kShutDownTimer, "ShutDownTimer_Tick",
       [](IonCap& c) {
         c.with_.view.StopTimer(WindowTimer::kShutDownTimer);
         c.with_.view.Close();
       }},
      {WindowTimer::kServerRetryTimer, "ServerRetryTimer_Tick",
       [](IonCap& c) { c.with_.peers.ServerRetryTimer_Tick(); }},
      {WindowTimer::kPeerValuesTimer, "PeerValuesTimer_Tick",
       [](IonCap& c) { c.with_.peers.PeerValuesTimer_Tick(); }},
  });
  Run(Find(kEvents, timer));
  const bool of_run = timer == WindowTimer::kExecuteTimer || timer == WindowTimer::kEngineWatch;
  if (of_run) peer_commands_.PredictForWaitingPeer();
}

void IonCap::Notice_Click() {
  Handle("Notice_Click", [&] {
    switch (status_.Action()) {
      case NoticeAction::kShowReceiver:
        return with_.view.ShowTab(Tab::kReceiver);
      case NoticeAction::kShowConfiguration:
        return Button_Click(Button::kConfigCmd);
      case NoticeAction::kRetryDownload:
        return Button_Click(Button::kUpdateSSNCmd);
      case NoticeAction::kNone:
        break;
    }
  });
}

void IonCap::WebPage_Click(int page) {
  Handle("WebPage_Click", [&] { pages_.OpenPage(page); });
}

void IonCap::Field_Enter(TextField field) {
  Handle("Field_Enter", [&] {
    if (!fields_.Enter(field)) return;
    switch (field) {
      case TextField::kLocalLat:
      case TextField::kLocalLon:
        if (stations_.PositionOf(Station::kLocal)) UpdateLocalGrid();
        break;
      case TextField::kDXLat:
      case TextField::kDXLon:
        if (stations_.PositionOf(Station::kDX)) UpdateDXGrid();
        break;
      case TextField::kLocalGrid:
        UpdateLocalLatLon();
        break;
      case TextField::kDXGrid:
        UpdateDXLatLon();
        with_.engine.parameters.SetLastPrefix("");
        with_.engine.parameters.SetPrefix();
        break;
      case TextField::kSNRFrequency:
        Handle("SNRPredictCmd_Click", [&] {
          with_.diagnostics.DebugLog("IonCap.SNRPredictCmd_Click");
          point_.PredictTyped();
        });
        break;
      default:
        break;
    }
  });
}

bool IonCap::Field_Leave(TextField field) {
  return with_.diagnostics.Trap("IonCap.Field_Leave", true, [&] { return fields_.Leave(field); });
}

void IonCap::Field_Change(TextField field) {
  Handle("Field_Change", [&] {
    fields_.Change(field);
    // The clock would overwrite a date that the user is typing.
    if (field == TextField::kTheDate) {
      with_.view.SetChecked(CheckBox::kShowCurrentTimeCheck, false);
    }
  });
}

void IonCap::TheDate_DblClick() {
  Handle("TheDate_DblClick", [&] { PutToday(); });
}

/// A field has accepted another text.
void IonCap::TakeField(TextField field, const std::string& text) {
  IONCAPModule::Parameters& parameters = with_.engine.parameters;
  // The prefix that a peer looked up is not that of a place that the user chooses.
  const auto forget_prefix = [&] { parameters.SetLastPrefix(""); };
  switch (field) {
    case TextField::kLocalLat:
    case TextField::kLocalLon:
      UpdateLocalGrid();
      stations_.UpdateLabels();
      shown_.PreviewSolarBars();
      break;
    case TextField::kDXLat:
    case TextField::kDXLon:
      UpdateDXGrid();
      stations_.UpdateLabels();
      shown_.PreviewSolarBars();
      forget_prefix();
      break;
    case TextField::kLocalGrid:
      UpdateLocalLatLon();
      break;
    case TextField::kDXGrid:
      UpdateDXLatLon();
      if (!Trim(text).empty()) forget_prefix();
      break;
    case TextField::kLocalPwr:
      parameters.SetPredictionPower(text);
      break;
    case TextField::kLocalTakeOff:
      parameters.SetPredictionTakeoff(text);
      break;
    case TextField::kSNR:
      parameters.SetPredictionSNR(text);
      modes_.Clear();
      break;
    case TextField::kTheDate:
      shown_.PreviewSolarBars();
      break;
    default:
      // The engines read the field itself.
      break;
  }
  InputsChanged();
}

/// An input of a prediction may have changed.
void IonCap::InputsChanged() {
  if (!loaded_) return;
  next_.UpdateConditions();
  shown_.MarkOld();
  // Without coordinates there is nothing that a point prediction can be compared with.
  if (stations_.BothKnown()) point_.InputsChanged();
}

void IonCap::PathChanged() {
  stations_.UpdateLabels();
  InputsChanged();
}

}  // namespace skyhop
