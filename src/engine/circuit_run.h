#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "common/pause.h"
#include "engine/deck_writer.h"
#include "engine/engine_job.h"
#include "engine/engine_launcher.h"
#include "engine/engine_search.h"
#include "engine/prediction_inputs.h"
#include "engine/run_lock.h"

namespace skyhop {

/// Runs an engine on one circuit in the background, under the lock that keeps runs apart and in
/// files of its own beside those of the chart's predictions.
///
/// Nothing here waits: Start() starts the engine, Poll() looks whether it has finished. The lock is
/// held only while the engine runs.
class CircuitRun {
 public:
  using Time = EngineJob::Time;

  enum class Started { kRuns, kBusy, kFailed };

  struct Outcome {
    bool good = false;
    EngineJob::Failure failure = EngineJob::Failure::kNone;
    std::string text;                   ///< the results, or what is wrong
    std::chrono::milliseconds taken{};  ///< from the start to the outcome
  };

  struct Collaborators {
    RunLocker& locker;
    EngineLauncher& launcher;
    const EngineHost& host;
    Pause& pause;
    Diagnostics& diagnostics;
    std::filesystem::path program_folder;
    EngineFileNames names;
  };

  explicit CircuitRun(Collaborators collaborators);
  /// Ends a run in progress.
  ~CircuitRun() { End(); }
  CircuitRun(const CircuitRun&) = delete;
  CircuitRun& operator=(const CircuitRun&) = delete;

  /// Writes the deck of `asked` and starts its engine, unless another run holds the lock. When it
  /// fails, Problem() has the reason. The run fails when the results repeat another question.
  [[nodiscard]] Started Start(const PredictionInputs& asked, Time now);
  /// A clause without a capital letter and without a point.
  [[nodiscard]] const std::string& Problem() const { return problem_; }

  /// The outcome once the run has finished; nothing while it goes on, or when there is none. The
  /// caller then ends the run.
  [[nodiscard]] std::optional<Outcome> Poll(Time now);

  /// Ends the run, deletes its files unless they are to be kept, and gives the lock back.
  void End(bool keep_files = false);

  /// From the start of a run to End().
  [[nodiscard]] bool Running() const { return job_.Started(); }
  /// See EngineJob::MustBeEnded.
  [[nodiscard]] bool MustBeEnded(Time now) const { return job_.MustBeEnded(now); }

 private:
  [[nodiscard]] std::string Prepare(EngineJob::Request& request);

  Collaborators with_;
  IONCAPModule::DeckWriter decks_;
  EngineJob job_;
  std::unique_ptr<RunLock> lock_;
  std::string problem_;
};

/// A locker for runs in the foreground: makes the background give the lock back first.
class ForegroundLocker : public RunLocker {
 public:
  /// `locker` must outlive this object.
  explicit ForegroundLocker(RunLocker& locker) : locker_(&locker) {}

  /// Called before each attempt to lock.
  void SetYield(std::function<void()> yield) { yield_ = std::move(yield); }

  [[nodiscard]] std::unique_ptr<RunLock> Lock() override {
    if (yield_) yield_();
    return locker_->Lock();
  }

 private:
  RunLocker* locker_;
  std::function<void()> yield_;
};

}  // namespace skyhop
