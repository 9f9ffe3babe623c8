#include "ui/prediction/predict_command.h"

#include "common/text.h"
#include "ui/shared/raised.h"

namespace skyhop {

void PredictCommand::Predict(bool requested_by_peer) {
  with_.diagnostics.Trap("IonCap.PathsButton_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.PathsButton_Click");
    if (RefuseSecondRun()) return;
    const Raised starting(starting_);
    if (Trim(with_.fields.Text(TextField::kDXLat)).empty() ||
        Trim(with_.fields.Text(TextField::kDXLon)).empty()) {
      return with_.fields.Tell("DX station latitude or longitude not specified");
    }
    if (!with_.next.HandOver()) return;
    // A refused SNR was not handed over; the validation is to find it.
    const std::string snr = with_.parameters.Set().snr;
    const std::string shown_snr = with_.fields.Text(TextField::kSNR);
    const bool snr_refused = with_.fields.Refused(TextField::kSNR, shown_snr);
    if (snr_refused) with_.parameters.SetPredictionSNR(shown_snr);
    with_.view.Select(OptionGroup::kDDEOption, requested_by_peer ? dde_option::kRequestedByPeer
                                                                 : dde_option::kRequestedHere);
    InitiateForecast();
    if (snr_refused) with_.parameters.SetPredictionSNR(snr);
  });
}

void PredictCommand::InitiateForecast() {
  const bool answered = with_.diagnostics.Trap("IonCap.InitiateForecast", false, [&] {
    with_.diagnostics.DebugLog("IonCap.InitiateForecast");
    if (with_.run.Running() && RefuseSecondRun()) return true;
    if (const std::optional<std::string> problem = with_.stations.MarkInvalid()) {
      with_.run.Fail(*problem);
      return true;
    }
    with_.parameters.SetCircuit(with_.fields.Form());
    with_.run.Start();
    if (with_.run.Running()) with_.stations.Save();
    with_.diagnostics.DebugLog("IonCap.InitiateForecast: complete");
    return true;
  });
  if (!answered) with_.diagnostics.Trap("IonCap.InitiateForecast", [&] { with_.run.GiveUp(); });
}

bool PredictCommand::RefuseSecondRun() const {
  if (!with_.run.Running() && !starting_) return false;
  with_.diagnostics.DebugLog("   previous computation still running");
  return true;
}

}  // namespace skyhop
