#include "ui/prediction/point_panel.h"

#include "common/numbers.h"
#include "common/text.h"
#include "ui/shared/mode_names.h"

namespace skyhop {

void PointPanel::SetActive(bool active) {
  with_.diagnostics.Trap("IonCap.SetSNRDisplayActive", [&] {
    active_ = active;
    with_.view.SetChecked(CheckBox::kSNRDisplayCheck, active);
    with_.point.SetDisplayActive(active);
  });
}

void PointPanel::ShowBand(std::int16_t band) {
  band_ = band;
  with_.pane.SetBandIndicator(band);
}

void PointPanel::ChooseBand(std::int16_t band) {
  ShowBand(band);
  if (band >= 0 && active_)
    with_.fields.Put(TextField::kSNRFrequency, with_.transceiver.UsualFrequency(band));
}

PeerWindow::FollowedBand PointPanel::FollowFrequency(double frequency) {
  const std::string name = with_.transceiver.NameFor(frequency);
  ShowBand(with_.transceiver.IndexOf(name));
  FollowPoint(frequency);
  return {name, band_ >= 0};
}

void PointPanel::ForgetFrequency() {
  ShowBand(-1);
}

void PointPanel::Predict(double frequency, const std::string& mode, const std::string& snr) {
  with_.diagnostics.Trap("IonCap.FreqPredict", [&] {
    with_.diagnostics.DebugLog("IonCap.FreqPredict, theFreq = " + NumberText(frequency) +
                               ", theMode = " + mode);
    with_.point.Predict(frequency, mode, snr);
  });
}

void PointPanel::PredictTyped() {
  std::string text(Trim(with_.fields.Text(TextField::kSNRFrequency)));
  if (text.empty() && band_ >= 0) {
    text = with_.transceiver.UsualFrequency(band_);
    with_.fields.Put(TextField::kSNRFrequency, text);
  }
  if (text.empty()) return with_.fields.Tell("Enter a frequency, in MHz or in kHz");
  // Without a mode the SNR in the field is the required one.
  const std::string mode = with_.modes.Selected();
  Predict(Megahertz(LeadingNumber(text)), mode,
          mode.empty() ? with_.fields.Text(TextField::kSNR) : "");
}

void PointPanel::InputsChanged() {
  if (with_.point.InputsChanged()) FollowTransceiver();
}

void PointPanel::FollowTransceiver() {
  if (!active_) return;
  if (const std::optional<double> frequency = with_.transceiver.Frequency()) {
    FollowPoint(*frequency);
  }
}

/// Shows the transceiver's frequency, in MHz, and has it predicted.
void PointPanel::FollowPoint(double frequency) {
  if (!active_) return;
  with_.fields.Put(TextField::kSNRFrequency, NumberText(frequency));
  with_.point.Follow(frequency, with_.modes.Selected());
}

}  // namespace skyhop
