#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "common/clock.h"
#include "common/diagnostics.h"
#include "common/pause.h"
#include "common/settings.h"
#include "common/user_messages.h"
#include "engine/deck_writer.h"
#include "engine/engine_job.h"
#include "engine/engine_launcher.h"
#include "engine/engine_search.h"
#include "engine/parameters.h"
#include "engine/results.h"

namespace skyhop::IONCAPModule {

/// What a timer tick does with the results of an IONCAP run.
enum class RunState : std::int16_t {
  kNone = 0,
  kChart = 1,            ///< chart with LUF
  kChartWithoutLuf = 2,  ///< chart of results that lack the LUF column
  kViewer = 3,           ///< shown as they are
};

/// Runs the chart's predictions: has the deck written, starts the engine, hands its results on.
class RunControl {
 public:
  struct Collaborators {
    Parameters& parameters;
    DeckWriter& decks;
    Results& results;
    EngineLauncher& launcher;
    const EngineHost& host;
    Pause& pause;
    const Clock& clock;
    UserMessages& messages;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
  };

  explicit RunControl(const Collaborators& collaborators)
      : with_(collaborators),
        job_(collaborators.launcher, collaborators.pause, collaborators.diagnostics) {}

  /// Looks for the IONCAP folder below the program folder. Returns whether it exists; if not, a
  /// message box reports it, and no prediction can start.
  bool LoadEngineData(const std::filesystem::path& program_folder);

  /// How long the next runs may take; none (default): for ever.
  void SetTimeout(std::optional<std::chrono::milliseconds> timeout) { timeout_ = timeout; }

  /// Starts a prediction with the engine of the parameter set. All of these return whether they
  /// started an engine; if not, the log or a message has the reason.
  bool ForecastPaths();
  bool IonCapPaths();
  bool IcePacPaths();
  /// VOACAP, for the LUF/MUF table or, for kVoaCapSnr, SNR and reliability.
  bool VoaCapPaths();

  /// Whether a run waits for its results. The caller then calls Poll() from time to time.
  [[nodiscard]] bool Waiting() const { return waiting_; }

  /// The state of the current run. HandleIonCapTimer() then takes complete results and refuses
  /// those that answer another question.
  [[nodiscard]] EngineJob::Outcome Poll() { return job_.Poll(with_.clock.SteadyNow()); }

  /// Takes the results file if it has any content. The run then waits no longer.
  void HandleIonCapTimer();

  /// Stops waiting for the engine and ends it where the system reports its process.
  void Abort();
  /// Ends the engine that has delivered its results and still runs.
  void EndEngine() { job_.End(); }

  /// Copies a file into the debug log, line by line.
  void DebugFile(const std::filesystem::path& file);

  void SetRunState(RunState state) { run_state_ = state; }

  /// The report about an engine that ended without results: both files and the likely reason.
  [[nodiscard]] std::string DeadEngineText() const;

  /// The folder that LoadEngineData was called with.
  [[nodiscard]] const std::filesystem::path& ProgramFolder() const { return program_folder_; }
  /// The engine that the parameter set names, as it is installed.
  [[nodiscard]] EngineFinding Find() const {
    return FindEngine(with_.host, program_folder_, with_.parameters.Set().engine);
  }

  /// The current run.
  [[nodiscard]] const EngineJob& Job() const { return job_; }
  /// The results file of the current run, long form; empty before the first run.
  [[nodiscard]] const std::filesystem::path& ResultsFile() const {
    return job_.Asked().files.results;
  }
  /// Whether `PredictionParametersValid` refused the last start with a message.
  [[nodiscard]] bool ParametersRefused() const { return refused_; }
  /// Whether the chart shows the results of the last finished run.
  [[nodiscard]] bool LastRunDisplayed() const { return displayed_; }
  /// How the question in the last finished run's results differs from the one that was asked; empty
  /// if the results were not refused.
  [[nodiscard]] const std::string& Difference() const { return difference_; }

 private:
  bool Start(const std::string& name, EngineChoice engine);
  [[nodiscard]] bool Refused();
  void HandOn();

  Collaborators with_;
  EngineJob job_;
  std::filesystem::path program_folder_;
  bool folders_known_ = false;  ///< LoadEngineData has found the engines' folders
  std::string viewer_;
  std::optional<std::chrono::milliseconds> timeout_;
  RunState run_state_ = RunState::kNone;
  std::string difference_;
  bool waiting_ = false;
  bool refused_ = false;
  bool displayed_ = false;
};

}  // namespace skyhop::IONCAPModule
