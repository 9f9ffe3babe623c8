#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "common/diagnostics.h"
#include "common/pause.h"
#include "engine/engine_launcher.h"
#include "engine/engine_search.h"
#include "engine/prediction_inputs.h"
#include "engine/results_table.h"

namespace skyhop {

/// The names of the files of one kind of run. Each kind has its own, so that runs of different
/// kinds cannot overwrite each other's files.
struct EngineFileNames {
  const char* deck;
  const char* results;
  const char* batch;
  const char* driver;  ///< for IONCAP
};

/// The files of one run. Short forms (8.3 on Windows) go on command lines.
struct EngineFiles {
  std::filesystem::path folder;         ///< short: the engine's folder and its working folder
  std::filesystem::path deck;           ///< short
  std::filesystem::path batch;          ///< short; the deck and the results are beside it
  std::filesystem::path driver;         ///< short; empty unless the engine is IONCAP
  std::filesystem::path short_results;  ///< short
  std::filesystem::path results;        ///< long: for reading
};

/// The files of a run in `folder`, an engine's folder: in the folder itself for IONCAP, else in its
/// "run" folder.
[[nodiscard]] EngineFiles FilesIn(const std::filesystem::path& folder, EngineChoice engine,
                                  const EngineFileNames& names, EngineLauncher& launcher);

/// One run of an engine: from its deck to its results, or to the reason why there are none. Nothing
/// here waits.
class EngineJob {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// The time limit of runs in the background.
  static constexpr std::chrono::seconds kTimeout{30};
  /// How long results may appear after the engine's end, for file systems that lag behind.
  static constexpr std::chrono::seconds kGrace{1};

  struct Request {
    PredictionInputs asked;  ///< the question that the results must repeat
    EngineFinding finding;
    EngineFiles files;
    bool snr = false;                                  ///< a point SNR run, for the log
    std::optional<std::chrono::milliseconds> timeout;  ///< none: the run may take for ever
  };

  enum class State { kRunning, kComplete, kFailed };
  enum class Failure { kNone, kNoResults, kTimeout, kOtherQuestion, kUnreadable };

  struct Outcome {
    State state = State::kRunning;
    Failure failure = Failure::kNone;
    std::string text;  ///< kComplete: the results; kFailed: the reason
  };

  EngineJob(EngineLauncher& launcher, Pause& pause, Diagnostics& diagnostics)
      : launcher_(&launcher), pause_(&pause), diagnostics_(&diagnostics) {}
  ~EngineJob() { End(); }
  EngineJob(const EngineJob&) = delete;
  EngineJob& operator=(const EngineJob&) = delete;

  /// Creates the folder of the files and deletes results of an earlier run. Call it before the deck
  /// is written. Throws the Errors of FileError, kPathFileAccess for results that cannot be
  /// deleted.
  void Prepare(const EngineFiles& files);

  /// `RunScript`: writes the batch file, for IONCAP the driver file too, and starts the engine on
  /// the deck that is there. Returns whether it was started; if not, Problem() and the error log
  /// have the reason.
  [[nodiscard]] bool Start(const Request& request, Time now);
  [[nodiscard]] const std::string& Problem() const { return problem_; }

  /// The state of the run. Results are complete with their last line ("END OF RUN"), or when the
  /// engine has ended. An engine without a known process must write the last line. The caller ends
  /// the job after kComplete and kFailed.
  [[nodiscard]] Outcome Poll(Time now);

  /// Ends the engine if it still runs.
  void End();
  /// Deletes the files of the run.
  void RemoveFiles() const;

  /// Whether the engine was started and End() was not called yet.
  [[nodiscard]] bool Started() const { return started_at_.has_value(); }
  /// Whether the next outcome leaves an engine to be ended, which can take seconds: the time limit
  /// is exceeded, or the engine still runs after its last line.
  [[nodiscard]] bool MustBeEnded(Time now) const;
  [[nodiscard]] std::chrono::milliseconds Elapsed(Time now) const;
  /// Whether the results file has any content.
  [[nodiscard]] bool HasResults() const;

  /// The last request, also after End().
  [[nodiscard]] const Request& Asked() const { return request_; }
  /// The engine's process; 0 when the system does not report it. Also after End().
  [[nodiscard]] ProcessId Process() const { return process_; }
  /// The executable as command lines have it.
  [[nodiscard]] std::filesystem::path Executable() const;
  /// How the question in the heading of `results` differs from the one that was asked, see
  /// EchoDifference.
  [[nodiscard]] std::string Difference(std::string_view results) const;
  /// Why the engine may have failed, sentences with a blank before each: see EngineFailureText.
  [[nodiscard]] std::string FailureText() const;

 private:
  [[nodiscard]] bool TimedOut(Time now) const;
  [[nodiscard]] bool WriteBatch();
  void WriteDriver();
  [[nodiscard]] bool Launch();
  void LogFailedLaunch() const;
  [[nodiscard]] Outcome Judge() const;

  EngineLauncher* launcher_;
  Pause* pause_;
  Diagnostics* diagnostics_;
  Request request_;
  ProcessId process_ = 0;
  std::optional<Time> started_at_;
  std::optional<Time> ended_at_;  ///< when the end of the engine was first seen
  std::string problem_;
};

}  // namespace skyhop
