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
/// Nothing here waits: Start() starts the engine, Poll() looks whether it has finished.
class EngineProbe {
 public:
  using Time = CircuitRun::Time;

  struct Outcome {
    bool good = false;
    /// What the engine is and how long it took, or what is wrong; a sentence.
    std::string text;
    /// False when the estimate engine has answered in the place of an engine that is not there.
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

  /// Starts a run. Returns its outcome when that is known at once, because the engine cannot be
  /// started or is busy with a prediction; nothing when the engine runs now.
  std::optional<Outcome> Start(EngineChoice engine, Time now);

  /// The outcome once the run has finished; nothing while it goes on, or when there is none.
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
