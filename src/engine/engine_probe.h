#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "engine/circuit_run.h"
#include "engine/prediction_inputs.h"

namespace skyhop {

/// The question of the test, which every engine is known to answer: New York to London, 1500 W, in
/// November 2026 at a sunspot number of 105.
[[nodiscard]] PredictionInputs ProbeQuestion(EngineChoice engine);

/// Tries an engine out: runs it on a known circuit, in files of its own beside those of the
/// predictions, and judges the results. After a good run these files are deleted; otherwise they
/// stay for support.
///
/// The functions do not wait: Start() starts the engine, Poll() checks whether it has finished.
class EngineProbe {
 public:
  using Time = CircuitRun::Time;

  struct Outcome {
    bool good = false;
    /// The engine and the duration, or the problem; a sentence.
    std::string text;
    /// False if the estimate engine replaced an engine that is not installed.
    bool installed = true;
  };

  struct Collaborators {
    RunLocker& locker;
    EngineLauncher& launcher;
    const EngineHost& host;
    Pause& pause;
    Diagnostics& diagnostics;
    std::filesystem::path program_folder;
  };

  explicit EngineProbe(const Collaborators& collaborators);

  /// Starts a run. Returns the outcome if the engine cannot be started or is busy with a
  /// prediction; nothing if the engine runs now.
  std::optional<Outcome> Start(EngineChoice engine, Time now);

  /// The outcome after the end of the run; nothing during it, or without a run.
  std::optional<Outcome> Poll(Time now);

  /// Ends the run without an outcome.
  void Cancel() { run_.End(true); }

  [[nodiscard]] bool Running() const { return run_.Running(); }

 private:
  Diagnostics* diagnostics_;
  CircuitRun run_;
  EngineChoice engine_ = EngineChoice::kNone;
};

}  // namespace skyhop
