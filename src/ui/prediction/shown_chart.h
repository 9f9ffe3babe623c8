#pragma once

#include <optional>
#include <string>

#include "engine/results.h"
#include "report/provenance.h"
#include "ui/prediction/chart/chart_pane.h"
#include "ui/prediction/next_prediction.h"
#include "ui/prediction/stations.h"
#include "ui/shared/prediction_view.h"

namespace skyhop {

/// What a prediction was asked for, kept from the start of its engine: the window's inputs may
/// change until the results are there.
struct ChartDescription {
  EngineChoice engine = EngineChoice::kNone;
  AskedPrediction asked;
  std::optional<PredictionInputs> inputs;
  std::string title;
  std::string summary;
};

/// The chart of the last prediction: what it was computed for, and when it is out of date.
class ShownChart {
 public:
  struct Collaborators {
    PredictionView& view;
    ChartPane& pane;
    const IONCAPModule::Results& results;
    InputFields& fields;
    const Stations& stations;
    const NextPrediction& next;
  };

  explicit ShownChart(const Collaborators& collaborators) : with_(collaborators) {}

  [[nodiscard]] bool HasResult() const { return with_.pane.HasResult(); }
  [[nodiscard]] const ResultsTable& Table() const { return with_.pane.Table(); }
  /// The prediction that the inputs of now ask for.
  [[nodiscard]] ChartDescription DescribeNext(EngineChoice engine,
                                              const AskedPrediction& asked) const {
    return {engine, asked, with_.next.Inputs(), with_.next.Title(), with_.next.Summary()};
  }

  /// The results of that prediction are on the chart since `now`.
  void Show(const ChartDescription& description, UtcTime now);
  /// The prediction that the inputs of now ask for has failed.
  void Fail();
  /// Marks the chart as an earlier prediction's while its inputs differ from those in the window,
  /// or when the last attempt to predict these has failed.
  void MarkOld();
  /// Shows the engine that was selected for a prediction.
  void ShowEngine(EngineChoice engine);

  /// Computes the sun's course at both stations. The bars under a chart belong to its prediction.
  void UpdateSolarBars();
  /// The same, but only while there is no prediction.
  void PreviewSolarBars();

  /// The source of the chart's numbers; empty while there are none.
  [[nodiscard]] const std::string& Provenance() const { return provenance_; }

 private:
  Collaborators with_;
  std::optional<PredictionInputs> inputs_;  ///< that the chart was computed for
  std::optional<PredictionInputs> failed_inputs_;
  bool failed_ = false;  ///< the last prediction that was asked for, with failed_inputs_
  SolarBars bars_;       ///< of the chart's prediction
  std::string provenance_;
};

}  // namespace skyhop
