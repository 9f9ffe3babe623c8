#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "common/pause.h"
#include "engine/engine_launcher.h"
#include "engine/engine_search.h"
#include "engine/results_table.h"
#include "engine/run_lock.h"

namespace skyhop {

/// Tries an engine out: runs it on a known circuit, in files of its own beside those of the
/// predictions, and tells what came of it. After a good run these files are deleted; after another
/// they stay for whoever looks into it.
///
/// Nothing here waits: Start() starts the engine, Poll() looks whether it has finished.
class EngineProbe {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// How long an engine may take before it is ended.
  static constexpr std::chrono::seconds kLongest{30};

  struct Outcome {
    bool good = false;
    /// What the engine is and how long it took, or what is wrong; a sentence.
    std::string text;
    /// False when the estimate engine has answered in the place of an engine that is not there.
    bool installed = true;
  };

  /// All must outlive the probe.
  struct Collaborators {
    RunLocker& locker;
    EngineLauncher& launcher;
    const EngineHost& host;
    Pause& pause;
    Diagnostics& diagnostics;
    std::filesystem::path program_folder;
  };

  explicit EngineProbe(Collaborators collaborators);
  /// Ends a run in progress.
  ~EngineProbe();
  EngineProbe(const EngineProbe&) = delete;
  EngineProbe& operator=(const EngineProbe&) = delete;

  /// Starts a run. Returns its outcome when that is known at once, because the engine cannot be
  /// started or is busy with a prediction; nothing when the engine runs now.
  std::optional<Outcome> Start(EngineChoice engine, Time now);

  /// The outcome once the run has finished; nothing while it goes on, or when there is none.
  std::optional<Outcome> Poll(Time now);

  /// Ends the run without an outcome.
  void Cancel();

  [[nodiscard]] bool Running() const { return run_.has_value(); }

 private:
  /// One run: its lock and its files. The short folder is used on command lines.
  struct Run {
    [[nodiscard]] std::filesystem::path File(const char* name) const { return work_folder / name; }

    EngineChoice engine = EngineChoice::kNone;
    EngineFinding finding;
    std::unique_ptr<RunLock> lock;
    ProcessId process = 0;
    Time started;
    std::filesystem::path short_folder;
    std::filesystem::path work_folder;  ///< where the files lie
    std::filesystem::path results;
  };

  [[nodiscard]] Run Prepare(EngineChoice engine, const EngineFinding& finding) const;
  void WriteFiles(const Run& run) const;
  std::optional<Outcome> Launch(EngineChoice engine, const EngineFinding& finding, Time now);
  [[nodiscard]] std::optional<Outcome> Judge(Time now);
  void Finish(bool good);

  Collaborators with_;
  std::optional<Run> run_;
};

}  // namespace skyhop
