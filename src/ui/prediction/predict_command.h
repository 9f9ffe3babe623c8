#pragma once

#include "common/diagnostics.h"
#include "engine/parameters.h"
#include "ui/prediction/chart_run.h"
#include "ui/prediction/input_fields.h"
#include "ui/prediction/next_prediction.h"
#include "ui/prediction/stations.h"
#include "ui/shared/prediction_view.h"

namespace skyhop {

/// From the Predict command to the start of an engine.
class PredictCommand {
 public:
  struct Collaborators {
    PredictionView& view;
    InputFields& fields;
    Stations& stations;
    NextPrediction& next;
    IONCAPModule::Parameters& parameters;
    ChartRun& run;
    Diagnostics& diagnostics;
  };

  explicit PredictCommand(const Collaborators& collaborators) : with_(collaborators) {}

  /// `PathsButton_Click`: hands the inputs over and starts a prediction.
  void Predict(bool requested_by_peer);
  /// Hands stations, path and date over and starts a prediction.
  void InitiateForecast();

  /// Whether another prediction is running or starts now; the debug log has a line then. Nothing of
  /// that prediction may change, not even the labels of its results: peers go on sending while it
  /// shows its messages.
  [[nodiscard]] bool RefuseSecondRun() const;
  /// Whether a prediction starts, runs or shows its results.
  [[nodiscard]] bool Busy() const {
    return starting_ || with_.run.Running() || with_.run.InProgress();
  }

 private:
  Collaborators with_;
  bool starting_ = false;  ///< between the command and the start of its engine
};

}  // namespace skyhop
