// What peers' commands do to the window, and how it follows what peers publish.

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/numbers.h"
#include "common/text.h"
#include "geo/lat_lon.h"
#include "ui/prediction/ion_cap.h"
#include "ui/shared/mode_names.h"
#include "ui/shared/raised.h"

namespace skyhop {
namespace {

/// Time for the current event, such as a peer's command, to be answered.
constexpr std::chrono::milliseconds kShutDownDelay{100};

/// More than any value needs.
constexpr std::size_t kLongestText = 100;

/// More than any transceiver has.
constexpr std::size_t kMostUnknownModes = 20;

/// A text of one line, not too long to be shown.
bool IsPlain(const std::string& text) {
  return !text.empty() && text.size() <= kLongestText &&
         std::none_of(text.begin(), text.end(),
                      [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
}

}  // namespace

// Commands.

void IonCap::SetShutdownTrigger() {
  with_.diagnostics.Trap("IonCap.SetShutdownTrigger", [&] {
    with_.view.StartTimer(WindowTimer::kShutDownTimer, kShutDownDelay);
  });
}

void IonCap::ResetWindows(std::int32_t value) {
  with_.diagnostics.Trap("IonCap.ResetWindows", [&] {
    with_.diagnostics.DebugLog("IonCap.ResetWindows: " + std::to_string(value));
    with_.configuration_window.ResetWindows();
  });
}

void IonCap::SetSpaceWeather(const std::string& flux, const std::string& k_index) {
  with_.diagnostics.Trap("IonCap.SetSpaceWeather", [&] {
    UsePeersText(TextField::kFlux, flux);
    UsePeersText(TextField::kKindex, k_index);
  });
}

void IonCap::SetTransmitterPower(const std::string& watts) {
  with_.diagnostics.Trap("IonCap.SetTransmitterPower",
                         [&] { UsePeersText(TextField::kLocalPwr, watts); });
}

void IonCap::PredictForPeer(const PeerRequest& request, const std::string& argument) {
  with_.diagnostics.Trap("IonCap.PredictForPeer", [&] {
    with_.diagnostics.DebugLog("IonCap.PredictForPeer, theValue = " + argument);
    // What a peer has published before its command belongs to the prediction.
    PeerValuesTimer_Tick();
    // While the results raise a message the run has ended but is not left yet.
    if (running_ || RefuseSecondRun()) {
      waiting_request_ = {request, argument};
      return;
    }
    ChooseAsRequested(request);
    const Raised raised(requested_by_peer_);
    PathsButton_Click();
  });
}

/// Starts the prediction that a peer asked for while another one was in progress. Path and inputs
/// are those of now, so that the chart shows one circuit at a time.
void IonCap::PredictForWaitingPeer() {
  if (!waiting_request_ || running_ || Running() || starting_) return;
  const WaitingRequest next = *std::exchange(waiting_request_, std::nullopt);
  PredictForPeer(next.request, next.argument);
}

void IonCap::FreqPredictForPeer(const PeerRequest& request, const std::string& frequency,
                                const std::string& mode, const std::string& snr) {
  with_.diagnostics.Trap("IonCap.FreqPredictForPeer", [&] {
    const double given = ToDouble(frequency);
    PeerValuesTimer_Tick();
    // A point is predicted beside a run of the chart, whose inputs stay as they are.
    if (!RefuseSecondRun()) {
      ChooseAsRequested(request);
      UsePeersText(TextField::kSNR, snr);
    }
    SetSNRDisplayActive(true);
    FreqPredict(Megahertz(given), mode, snr);
  });
}

void IonCap::ChooseAsRequested(const PeerRequest& request) {
  if (request.mark_as_peers) {
    with_.view.Select(OptionGroup::kDDEOption, dde_option::kRequestedByPeer);
  }
  if (request.short_path) {
    with_.view.Select(OptionGroup::kPath,
                      *request.short_path ? path_option::kShort : path_option::kLong);
    UpdateStationLabels();
    InputsChanged();
  }
}

// Values.

void IonCap::ServerRetryTimer_Tick() {
  with_.diagnostics.Trap("IonCap.ServerRetryTimer_Tick",
                         [&] { with_.peers.ServerRetryTimer_Tick(); });
}

void IonCap::PeerValuesTimer_Tick() {
  with_.diagnostics.Trap("IonCap.PeerValuesTimer_Tick",
                         [&] { with_.peers.PeerValuesTimer_Tick(); });
}

void IonCap::LinksChanged() {
  with_.diagnostics.Trap("IonCap.LinksChanged", [&] {
    EnablePeerCommands();
    with_.configuration_window.Peers_Change();
  });
}

PeerWindow::FollowedBand IonCap::FollowFrequency(double frequency) {
  return with_.diagnostics.Trap("IonCap.FollowFrequency", FollowedBand(), [&] {
    const std::string name = with_.bands.GetBandNameForFreq(frequency);
    prediction_band_ = with_.bands.GetbandIndex(name);
    with_.chart.SetBandIndicator(prediction_band_);
    UpdateConditions();
    MarkOldChart();
    FollowPoint(frequency);
    return FollowedBand{name, prediction_band_ >= 0};
  });
}

void IonCap::Forget(LinkControl control) {
  with_.diagnostics.Trap("IonCap.Forget", [&] {
    switch (control) {
      case LinkControl::kFreq:
        prediction_band_ = -1;
        UpdateConditions();
        MarkOldChart();
        return with_.chart.SetBandIndicator(prediction_band_);
      case LinkControl::kDXLatitude:
      case LinkControl::kDXLongitude:
      case LinkControl::kDXPrefix:
        tessera_ = {};
        return;
      default:
        // The field keeps the last value.
        return;
    }
  });
}

void IonCap::Follow(LinkControl control, const std::string& text) {
  switch (control) {
    case LinkControl::kSFI:
      return UsePeersText(TextField::kFlux, text);
    case LinkControl::kK:
      return UsePeersText(TextField::kKindex, text);
    case LinkControl::kMode:
      return UsePeersMode(text);
    default:
      // No input takes the A index; the frequency and places have operations of their own.
      return;
  }
}

void IonCap::FollowSelection(const PeerPlace& place) {
  tessera_ = place;
  UseTesseraLocation();
}

void IonCap::FollowStation(const PeerPlace& place) {
  (void)UsePeersPlace(TextField::kLocalLat, TextField::kLocalLon, place);
}

/// The DX station follows the location that is selected in Tessera while the user wants it so. The
/// country belongs to the coordinates: where those are refused, the one before stays.
void IonCap::UseTesseraLocation() {
  if (!with_.view.Checked(CheckBox::kDXTracksTesseraLocation)) return;
  if (!UsePeersPlace(TextField::kDXLat, TextField::kDXLon, tessera_)) return;
  parameters_.SetLastPrefix(IsPlain(tessera_.country) ? tessera_.country : "");
}

/// Puts a peer's coordinates into a station's fields, both or none: one of them would move the
/// station to a place that is neither the old nor the new one. Returns whether they are there.
bool IonCap::UsePeersPlace(TextField latitude, TextField longitude, const PeerPlace& place) {
  for (const auto& [field, text] :
       {std::pair(latitude, Trim(place.latitude)), std::pair(longitude, Trim(place.longitude))}) {
    if (text.empty() || !FromPeerAcceptable(field, std::string(text))) return false;
  }
  UsePeersText(latitude, place.latitude);
  UsePeersText(longitude, place.longitude);
  return true;
}

void IonCap::UsePeersMode(const std::string& text) {
  if (Trim(text).empty()) return;
  const std::optional<std::size_t> mode = NearestMode(text, modes_, SelectedMode());
  if (!mode) return ReportUnknownMode(text.substr(0, kLongestText));
  if (with_.view.Selected(OptionGroup::kModeSNRCombo) == static_cast<int>(*mode)) return;
  with_.view.Select(OptionGroup::kModeSNRCombo, static_cast<int>(*mode));
  UseMode();
  FollowTransceiver();
}

/// Logs a mode the first time that it occurs. The number of such modes is limited, since a peer may
/// send anything.
void IonCap::ReportUnknownMode(const std::string& text) {
  if (unknown_modes_.size() >= kMostUnknownModes || !unknown_modes_.insert(text).second) return;
  with_.diagnostics.ErrorLog("the transceiver's mode \"" + text +
                             "\" is none of the configured modes; the mode stays as it is");
}

/// Stricter than for the user, who sees what is in the field: a finite number and nothing behind
/// it, or a coordinate with its hemisphere letter, which the "e" of a number is not.
bool IonCap::FromPeerAcceptable(TextField field, const std::string& text) {
  const bool latitude = field == TextField::kLocalLat || field == TextField::kDXLat;
  const bool longitude = field == TextField::kLocalLon || field == TextField::kDXLon;
  const std::optional<double> number = WholeNumberText(text);
  bool readable = text.size() <= kLongestText;
  if (latitude || longitude) {
    // Checked first: the check of the field logs what it cannot read as a fault.
    readable = readable && !number &&
               (latitude ? LatLonModule::LatitudeIn(text) : LatLonModule::LongitudeIn(text));
  } else {
    readable = readable && number && std::isfinite(*number);
  }
  if (readable && Problem(field, text) == nullptr) return true;
  with_.diagnostics.DebugLog("   a peer's value is refused: " + text.substr(0, kLongestText));
  return false;
}

void IonCap::UsePeersText(TextField field, const std::string& text) {
  const std::string value(Trim(text));
  if (value.empty() || value == with_.view.Text(field) || !FromPeerAcceptable(field, value)) return;
  Put(field, value);
  HandOn(field, value);
}

}  // namespace skyhop
