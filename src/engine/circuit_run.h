#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "common/pause.h"
#include "engine/deck_parameters.h"
#include "engine/engine_launcher.h"
#include "engine/engine_search.h"
#include "engine/results_table.h"
#include "engine/run_lock.h"

namespace skyhop {

/// Runs an engine on one circuit behind the user's back, in files of its own beside those of the
/// chart's predictions and under the lock that keeps runs apart.
///
/// Nothing here waits: Start() starts the engine, Poll() looks whether it has finished. The lock is
/// held just as long as the engine runs.
class CircuitRun {
 public:
  using Time = std::chrono::steady_clock::time_point;
  /// Writes the deck into that file. Returns whether it is complete.
  using DeckWriter = std::function<bool(const std::filesystem::path& file)>;

  /// How long an engine may take before it is ended.
  static constexpr std::chrono::seconds kLongest{30};

  enum class Started { kRuns, kBusy, kFailed };

  struct Outcome {
    bool good = false;
    std::string text;  ///< the results, or what is wrong
  };

  /// All must outlive the run.
  struct Collaborators {
    RunLocker& locker;
    EngineLauncher& launcher;
    const EngineHost& host;
    Pause& pause;
    Diagnostics& diagnostics;
    std::filesystem::path program_folder;
  };

  explicit CircuitRun(Collaborators collaborators) : with_(std::move(collaborators)) {}
  /// Ends a run in progress.
  ~CircuitRun() { Cancel(); }
  CircuitRun(const CircuitRun&) = delete;
  CircuitRun& operator=(const CircuitRun&) = delete;

  /// Starts the engine, unless another run holds the lock. When it fails, Problem() tells why.
  /// `asked` is what the deck asks for: results that repeat another question are no good outcome.
  [[nodiscard]] Started Start(EngineChoice engine, const IONCAPModule::DeckParameters& asked,
                              const DeckWriter& write_deck, Time now);
  [[nodiscard]] const std::string& Problem() const { return problem_; }

  /// What came of the run once it has finished; nothing while it goes on, or when there is none.
  std::optional<Outcome> Poll(Time now);

  /// Ends the run; the lock is free then.
  void Cancel();

  [[nodiscard]] bool Running() const { return run_.has_value(); }
  /// Whether the next Poll() may end the engine for taking too long.
  [[nodiscard]] bool Overdue(Time now) const { return run_ && now - run_->started >= kLongest; }

 private:
  struct Run {
    std::unique_ptr<RunLock> lock;
    EngineChoice engine = EngineChoice::kNone;
    EngineFinding finding;
    IONCAPModule::DeckParameters asked;
    ProcessId process = 0;
    Time started;
    std::filesystem::path results;
  };

  [[nodiscard]] LaunchResult WriteAndStart(EngineChoice engine, const EngineFinding& finding,
                                           const DeckWriter& write_deck,
                                           std::filesystem::path& results) const;
  [[nodiscard]] std::optional<Outcome> Judge(Time now) const;

  Collaborators with_;
  std::optional<Run> run_;
  std::string problem_;
};

/// A locker whose user comes before the background: makes the background give the lock back first.
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
