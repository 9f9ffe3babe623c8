#pragma once

#include <memory>
#include <optional>
#include <string>

#include "common/clock.h"
#include "common/diagnostics.h"
#include "engine/prediction_engine.h"
#include "engine/run_lock.h"
#include "ui/prediction/shown_chart.h"
#include "ui/prediction/window_status.h"
#include "ui/shared/prediction_view.h"

namespace skyhop {

/// The window's prediction from the start of its engine to its end.
class ChartRun {
 public:
  struct Collaborators {
    PredictionView& view;
    PredictionEngine& engine;
    ShownChart& shown;
    WindowStatus& status;
    RunLocker& locker;
    const Clock& clock;
    Diagnostics& diagnostics;
  };

  explicit ChartRun(const Collaborators& collaborators)
      : with_(collaborators), run_(collaborators.engine.run) {}

  /// Whether a run waits for its results.
  [[nodiscard]] bool Running() const { return run_.Waiting(); }
  /// Whether a run has not been left yet: it may show a message about its results.
  [[nodiscard]] bool InProgress() const { return running_.has_value(); }

  /// Starts the engine on the parameter set, or shows why it does not start.
  void Start();
  /// Ends a start that went wrong on the way.
  void GiveUp();
  /// A tick of `ExecuteTimer`: shows the progress and takes the results that are there.
  void Execute();
  /// A tick of the timer that watches the engine's process.
  void Watch();
  /// `AbortButton`: ends the run.
  void Abort();
  /// The program ends.
  void Terminate();

  void ShowProgress();
  /// Shows why there is no new prediction.
  void Fail(const std::string& reason);
  /// Enables the commands that predict, and disables Abort; or the other way round.
  void EnablePredicting(bool enable);

 private:
  struct Run {
    std::unique_ptr<RunLock> lock;
    UtcTime started;
    EngineFinding finding;
    ChartDescription description;
    int tables_shown = 0;
  };

  void Started(std::unique_ptr<RunLock> lock);
  [[nodiscard]] AskedPrediction Asked() const;
  void TakeResults(const EngineJob::Outcome& outcome);
  void Finish();
  void ShowFinished(const Run& run, const Notice& notice);
  [[nodiscard]] Notice FinishedNotice(const Run& run) const;
  void FailDeadEngine();
  [[nodiscard]] Run Leave();

  Collaborators with_;
  IONCAPModule::RunControl& run_;
  std::optional<Run> running_;
};

}  // namespace skyhop
