// What peers' commands do to the window, and how it follows what peers publish.

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/numbers.h"
#include "common/text.h"
#include "ui/prediction/ion_cap.h"
#include "ui/prediction/mode_names.h"
#include "ui/prediction/raised.h"

namespace skyhop {
namespace {

/// Time for the current event, such as a peer's command, to be answered.
constexpr std::chrono::milliseconds kShutDownDelay{100};

/// More than any value needs.
constexpr std::size_t kLongestText = 100;

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

void IonCap::FreqPredictForPeer(const PeerRequest& request, const std::string& frequency,
                                const std::string& mode, const std::string& snr) {
  with_.diagnostics.Trap("IonCap.FreqPredictForPeer", [&] {
    const double given = ToDouble(frequency);
/// Starts the prediction that a peer asked for while another one was in progress. Path and inputs
/// are those of now, so that the chart shows one circuit at a time.
void IonCap::PredictForWaitingPeer() {
  if (!waiting_request_ || running_ || Running() || starting_) return;
  const WaitingRequest next = *std::exchange(waiting_request_, std::nullopt);
  PredictForPeer(next.request, next.argument);
}

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
  }
}

// Values.

void IonCap::ServerRetryTimer_Tick() {
  with_.diagnostics.Trap("IonCap.ServerRetryTimer_Tick",
                         [&] { with_.peers.ServerRetryTimer_Tick(); });
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
        return tessera_.latitude.clear();
      case LinkControl::kDXLongitude:
        return tessera_.longitude.clear();
      case LinkControl::kDXPrefix:
        return tessera_.prefix.clear();
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
    case LinkControl::kDXLatitude:
      tessera_.latitude = text;
      return UseTesseraLocation();
    case LinkControl::kDXLongitude:
      tessera_.longitude = text;
      return UseTesseraLocation();
    case LinkControl::kDXPrefix:
      tessera_.prefix = text;
      return UseTesseraLocation();
    case LinkControl::kLocalLatitude:
      return UsePeersText(TextField::kLocalLat, text);
    case LinkControl::kLocalLongitude:
      return UsePeersText(TextField::kLocalLon, text);
    case LinkControl::kMode:
      return UsePeersMode(text);
    case LinkControl::kA:
    case LinkControl::kFreq:
      // No input takes the one; the other comes as a number.
      return;
  }
}

/// The DX station follows the location that is selected in Tessera while the user wants it so.
void IonCap::UseTesseraLocation() {
  if (!with_.view.Checked(CheckBox::kDXTracksTesseraLocation)) return;
  UsePeersText(TextField::kDXLat, tessera_.latitude);
  UsePeersText(TextField::kDXLon, tessera_.longitude);
  // A country belongs to the coordinates that came with it. Coordinates that were refused leave the
  // station where it was.
  const bool used = with_.view.Text(TextField::kDXLat) == Trim(tessera_.latitude) &&
                    with_.view.Text(TextField::kDXLon) == Trim(tessera_.longitude);
  with_.parameters.SetLastPrefix(used && IsPlain(tessera_.prefix) ? tessera_.prefix : "");
}

void IonCap::UsePeersMode(const std::string& text) {
  const std::string mode = ListedMode(text);
  for (std::size_t index = 0; index < modes_.size(); ++index) {
    if (!EqualsIgnoringCase(modes_[index].mode, mode)) continue;
    if (with_.view.Selected(OptionGroup::kModeSNRCombo) == static_cast<int>(index)) return;
    with_.view.Select(OptionGroup::kModeSNRCombo, static_cast<int>(index));
    UseMode();
    FollowTransceiver();
    return;
  }
}

/// Stricter than for the user, who sees what is in the field: a number and nothing behind it.
bool IonCap::FromPeerAcceptable(TextField field, const std::string& text) {
  const bool number = field != TextField::kLocalLat && field != TextField::kLocalLon &&
                      field != TextField::kDXLat && field != TextField::kDXLon;
  if (text.size() <= kLongestText && (!number || WholeNumberText(text).has_value()) &&
      Problem(field, text) == nullptr) {
    return true;
  }
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
