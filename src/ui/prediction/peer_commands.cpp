#include "ui/prediction/peer_commands.h"

#include <utility>

#include "common/numbers.h"
#include "engine/prediction_form.h"
#include "ui/shared/mode_names.h"

namespace skyhop {
namespace {

/// Time for the current event, such as a peer's command, to be answered.
constexpr std::chrono::milliseconds kShutDownDelay{100};

}  // namespace

void PeerCommands::SetShutdownTrigger() {
  with_.diagnostics.Trap("IonCap.SetShutdownTrigger", [&] {
    with_.view.StartTimer(WindowTimer::kShutDownTimer, kShutDownDelay);
  });
}

void PeerCommands::ResetWindows(std::int32_t value) {
  with_.diagnostics.Trap("IonCap.ResetWindows", [&] {
    with_.diagnostics.DebugLog("IonCap.ResetWindows: " + std::to_string(value));
    with_.configuration_window.ResetWindows();
  });
}

void PeerCommands::SetSpaceWeather(const std::string& flux, const std::string& k_index) {
  with_.diagnostics.Trap("IonCap.SetSpaceWeather", [&] {
    with_.fields.TakeFromPeer(TextField::kFlux, flux);
    with_.fields.TakeFromPeer(TextField::kKindex, k_index);
  });
}

void PeerCommands::SetTransmitterPower(const std::string& watts) {
  with_.diagnostics.Trap("IonCap.SetTransmitterPower",
                         [&] { with_.fields.TakeFromPeer(TextField::kLocalPwr, watts); });
}

void PeerCommands::PredictForPeer(const PeerRequest& request, const std::string& argument) {
  with_.diagnostics.Trap("IonCap.PredictForPeer", [&] {
    with_.diagnostics.DebugLog("IonCap.PredictForPeer, theValue = " + argument);
    // The values that a peer has published before its command belong to the prediction.
    with_.peers.PeerValuesTimer_Tick();
    if (with_.predict.Busy()) {
      waiting_ = {request, argument};
      return;
    }
    ChooseAsRequested(request);
    with_.predict.Predict(true);
  });
  PredictForWaitingPeer();
}

void PeerCommands::PredictForWaitingPeer() {
  if (!waiting_ || with_.predict.Busy()) return;
  const Waiting next = *std::exchange(waiting_, std::nullopt);
  PredictForPeer(next.request, next.argument);
}

void PeerCommands::FreqPredictForPeer(const PeerRequest& request, const std::string& frequency,
                                      const std::string& mode, const std::string& snr) {
  with_.diagnostics.Trap("IonCap.FreqPredictForPeer", [&] {
    const double given = ToDouble(frequency);
    with_.peers.PeerValuesTimer_Tick();
    // A point is predicted beside a run of the chart, whose inputs stay as they are.
    if (!with_.predict.RefuseSecondRun()) {
      ChooseAsRequested(request);
      with_.fields.TakeFromPeer(TextField::kSNR, snr);
    }
    with_.point.SetActive(true);
    with_.point.Predict(Megahertz(given), mode, snr);
  });
}

void PeerCommands::ChooseAsRequested(const PeerRequest& request) {
  if (request.mark_as_peers) {
    with_.view.Select(OptionGroup::kDDEOption, dde_option::kRequestedByPeer);
  }
  if (!request.short_path) return;
  with_.view.Select(OptionGroup::kPath,
                    *request.short_path ? path_option::kShort : path_option::kLong);
  if (on_path_) on_path_();
}

}  // namespace skyhop
