#pragma once

#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "engine/parameters.h"
#include "ui/prediction/input_fields.h"
#include "ui/prediction/mode_choice.h"
#include "ui/prediction/stations.h"
#include "ui/prediction/transceiver_band.h"
#include "ui/shared/prediction_view.h"

namespace skyhop {

/// The prediction that the window's inputs ask for now.
class NextPrediction {
 public:
  struct Collaborators {
    PredictionView& view;
    InputFields& fields;
    const Stations& stations;
    const ModeChoice& modes;
    const TransceiverBand& transceiver;
    IONCAPModule::Parameters& parameters;
    Diagnostics& diagnostics;
  };

  explicit NextPrediction(const Collaborators& collaborators) : with_(collaborators) {}

  /// The inputs of a prediction that starts now; nothing while one is missing or out of range.
  [[nodiscard]] std::optional<PredictionInputs> Inputs() const;
  /// The title and the summary of the parameter set that was handed over.
  [[nodiscard]] std::string Title() const;
  [[nodiscard]] std::string Summary() const;

  /// Hands power, take-off angle and noise over, those of the transceiver's band if they are in
  /// force. Returns false after a message about a value that is refused.
  [[nodiscard]] bool HandOver();

  /// Shows what transmits with which power, and the noise at the receiver.
  void UpdateConditions() const;

 private:
  Collaborators with_;
  std::string
      settings_name_;  ///< of the settings of the last HandOver; empty for the ordinary ones
};

}  // namespace skyhop
