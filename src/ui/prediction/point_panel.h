#pragma once

#include <cstdint>
#include <string>

#include "common/diagnostics.h"
#include "interop/peer_window.h"
#include "ui/prediction/chart/chart_pane.h"
#include "ui/prediction/input_fields.h"
#include "ui/prediction/mode_choice.h"
#include "ui/prediction/transceiver_band.h"
#include "ui/shared/prediction_view.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// The point prediction as the window offers it: for a frequency that is typed in, or for the
/// transceiver's. Knows the band that was chosen last.
class PointPanel {
 public:
  struct Collaborators {
    PredictionView& view;
    ChartPane& pane;
    InputFields& fields;
    const ModeChoice& modes;
    const TransceiverBand& transceiver;
    PointPrediction& point;
    Diagnostics& diagnostics;
  };

  explicit PointPanel(const Collaborators& collaborators) : with_(collaborators) {}

  /// Shows or hides the display of the point prediction.
  void SetActive(bool active);

  /// Index of the band that a click into the chart chose or the transceiver is on, whichever was
  /// last; -1 for none.
  [[nodiscard]] std::int16_t Band() const { return band_; }
  /// The user clicked a band of the chart; -1 for none.
  void ChooseBand(std::int16_t band);
  /// The transceiver is on this frequency in MHz.
  PeerWindow::FollowedBand FollowFrequency(double frequency);
  /// The transceiver's frequency is not known any more.
  void ForgetFrequency();

  /// Predicts for a frequency in MHz and a mode. `snr` is the required one; empty for the mode's.
  void Predict(double frequency, const std::string& mode, const std::string& snr);
  /// Predicts for the frequency in the field, in MHz or kHz; for the middle of the chosen band if
  /// the field is empty.
  void PredictTyped();
  /// Predicts for the transceiver's frequency, if it is known and the display is active.
  void FollowTransceiver();
  /// Inputs may have changed: marks an outdated point prediction, and predicts the transceiver's
  /// frequency again.
  void InputsChanged();

 private:
  void ShowBand(std::int16_t band);
  void FollowPoint(double frequency);

  Collaborators with_;
  bool active_ = false;
  std::int16_t band_ = -1;
};

}  // namespace skyhop
