// The point prediction as the window offers it: for a frequency that is typed in, the transceiver's
// or a peer's.

#include <cmath>

#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "ui/prediction/ion_cap.h"
#include "ui/shared/mode_names.h"

namespace skyhop {

void IonCap::FreqPredict(double frequency, const std::string& mode, const std::string& snr) {
  with_.diagnostics.Trap("IonCap.FreqPredict", [&] {
    with_.diagnostics.DebugLog("IonCap.FreqPredict, theFreq = " + NumberText(frequency) +
                               ", theMode = " + mode);
    with_.point_prediction.Predict(frequency, mode, snr);
  });
}

std::int16_t IonCap::GetPredictionBand() const {
  return prediction_band_;
}

void IonCap::SetSNRDisplayActive(bool active) {
  with_.diagnostics.Trap("IonCap.SetSNRDisplayActive", [&] {
    snr_display_active_ = active;
    with_.view.SetChecked(CheckBox::kSNRDisplayCheck, active);
    with_.point_prediction.SetDisplayActive(active);
  });
}

void IonCap::SNRDisplayCheck_Click() {
  with_.diagnostics.Trap("IonCap.SNRDisplayCheck_Click", [&] {
    const bool active = with_.view.Checked(CheckBox::kSNRDisplayCheck);
    SetSNRDisplayActive(active);
    SaveOption("ShowSNRDisplay", active);
    if (active) FollowTransceiver();
  });
}

void IonCap::SNRPredictCmd_Click() {
  with_.diagnostics.Trap("IonCap.SNRPredictCmd_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.SNRPredictCmd_Click");
    std::string text(Trim(with_.view.Text(TextField::kSNRFrequency)));
    if (text.empty() && prediction_band_ >= 0) {
      text = UsualFrequency(prediction_band_);
      Put(TextField::kSNRFrequency, text);
    }
    if (text.empty()) {
      with_.messages.Show("Enter a frequency, in MHz or in kHz", kProductName);
      return;
    }
    // Without a mode what is required is what stands in the field.
    const std::string mode = SelectedMode();
    FreqPredict(Megahertz(LeadingNumber(text)), mode,
                mode.empty() ? with_.view.Text(TextField::kSNR) : "");
  });
}

void IonCap::SNRExecuteTimer_Tick() {
  with_.diagnostics.Trap("IonCap.SNRExecuteTimer_Tick",
                         [&] { with_.point_prediction.SNRExecuteTimer_Tick(); });
}

std::string IonCap::SelectedMode() const {
  const int selected = with_.view.Selected(OptionGroup::kModeSNRCombo);
  if (selected < 0 || selected >= static_cast<int>(modes_.size())) return {};
  return modes_[static_cast<std::size_t>(selected)].mode;
}

/// The user clicked a band of the chart; -1 for none.
void IonCap::ChooseBand(std::int16_t band) {
  with_.diagnostics.Trap("IonCap.ChooseBand", [&] {
    prediction_band_ = band;
    with_.chart.SetBandIndicator(band);
    if (band >= 0 && snr_display_active_) Put(TextField::kSNRFrequency, UsualFrequency(band));
  });
}

/// The frequency in MHz that stands for a band: its middle, as the band file has its edges, since a
/// prediction hardly differs within a band. Without them, the frequency of the chart's line.
std::string IonCap::UsualFrequency(std::int16_t band) const {
  for (const FreqDependentModule::BandTable::Band& known : with_.bands.Bands()) {
    if (with_.bands.GetbandIndex(known.name) != band) continue;
    return NumberText(std::round((known.lower + known.upper) * 500) / 1000);
  }
  return NumberText(
      std::round(double{kBandLineFrequencies.at(static_cast<std::size_t>(band))} * 1000) / 1000);
}

void IonCap::FollowTransceiver() {
  if (!snr_display_active_) return;
  const std::optional<double> kilohertz = with_.peers.TransceiverFrequency();
  if (kilohertz && *kilohertz > 0) FollowPoint(*kilohertz / 1000);
}

/// Shows the transceiver's frequency, in MHz, and has it predicted.
void IonCap::FollowPoint(double frequency) {
  if (!snr_display_active_) return;
  Put(TextField::kSNRFrequency, NumberText(frequency));
  with_.point_prediction.Follow(frequency, SelectedMode());
}

}  // namespace skyhop
