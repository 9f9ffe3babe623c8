#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "common/diagnostics.h"
#include "common/pause.h"
#include "common/settings.h"
#include "common/user_messages.h"
#include "engine/engine_launcher.h"
#include "engine/engine_output.h"
#include "engine/engine_search.h"
#include "engine/execute_timer.h"
#include "engine/ioncap_script.h"
#include "engine/its_script.h"
#include "engine/parameters.h"
#include "engine/results.h"
#include "engine/results_table.h"

namespace skyhop::IONCAPModule {

/// Where the engines are looked for first and which files a run uses, all below the program folder.
/// The short forms are used on command lines.
struct EnginePaths {
  std::filesystem::path ioncap_folder;
  std::filesystem::path ioncap_short_folder;
  std::filesystem::path ioncap_executable;
  std::filesystem::path ioncap_batch;
  std::filesystem::path ioncap_driver;

  std::filesystem::path its_folder;  ///< ICEPAC and VOACAP
  std::filesystem::path its_short_folder;
  std::filesystem::path icepac_executable;
  std::filesystem::path voacap_executable;
  std::filesystem::path its_batch;

  /// A second installation, so that point SNR runs and chart runs never meet. The files of the two
  /// paths' runs are beside each other in its "run" folder; those of an engine that can be told
  /// another one are in "short/run" and "long/run".
  std::filesystem::path snr_folder;
  std::filesystem::path snr_short_folder;
  std::filesystem::path snr_executable;
  std::filesystem::path short_path_snr_results;
  std::filesystem::path long_path_snr_results;
  std::filesystem::path short_path_snr_short_results;
  std::filesystem::path long_path_snr_short_results;
  std::filesystem::path short_path_snr_script;
  std::filesystem::path long_path_snr_script;
  std::filesystem::path short_path_snr_batch;
  std::filesystem::path long_path_snr_batch;

  std::string viewer;
};

/// What a timer tick does with the results of an IONCAP run.
enum class RunState : std::int16_t {
  kNone = 0,
  kChart = 1,            ///< chart with LUF
  kChartWithoutLuf = 2,  ///< chart of results that lack the LUF column
  kViewer = 3,           ///< shown as they are
};

/// Whether a results file has its last line, although the engine may still be running.
[[nodiscard]] bool ResultsComplete(const std::filesystem::path& file);

/// Starts the engines and waits for their results.
class RunControl {
 public:
  /// The parts of the program that a run goes through; all must outlive the RunControl.
  struct Collaborators {
    Parameters& parameters;
    PredictionPanel& panel;
    IonCapScript& ioncap_script;
    ItsScript& its_script;
    Results& results;
    ExecuteTimer& timer;
    EngineLauncher& launcher;
    const EngineHost& host;
    Pause& pause;
    UserMessages& messages;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
  };

  explicit RunControl(const Collaborators& collaborators) : with_(collaborators) {}

  /// Derives every path from the program folder. Returns whether the IONCAP folder exists; if not,
  /// the user is told.
  bool LoadEngineData(const std::filesystem::path& program_folder);

  /// Starts a chart prediction with the engine that the configuration selects. All of these return
  /// whether an engine was started; if not, the log or a message said why.
  bool ForecastPaths();
  bool IonCapPaths();
  bool IcePacPaths();
  /// VOACAP, for the LUF/MUF table or for SNR and reliability, by the selected option.
  bool VoaCapPaths();

  /// Looks for the engine of the point SNR runs and settles where their files are. To be called
  /// before their decks are written.
  void FindSnrEngine();

  /// The engine of the point SNR runs, as FindSnrEngine() has found it.
  [[nodiscard]] const EngineFinding& SnrFinding() const { return snr_finding_; }

  /// Writes the batch file (and for IONCAP the driver file) and starts it. With `snr` it writes
  /// both batch files of the second folder, one for each path, for the engine that FindSnrEngine()
  /// has found; the other arguments then only serve the log. It starts the short path's and, where
  /// each run has a folder of its own, the long path's.
  [[nodiscard]] bool RunScript(bool snr, const std::filesystem::path& executable,
                               const std::filesystem::path& batch,
                               const std::filesystem::path& driver,
                               const std::filesystem::path& script,
                               const std::filesystem::path& results);

  /// Starts the long path's point SNR run, which waits for the end of the short path's: two runs in
  /// one folder would share the engine's scratch files. Returns whether an engine was started.
  [[nodiscard]] bool StartLongPathSnr();
  /// Whether the run waits for that.
  [[nodiscard]] bool LongPathSnrWaits() const { return long_path_snr_waits_; }

  /// One tick of the timer: takes the results file as soon as there is something in it.
  void HandleIonCapTimer();

  /// Whether the results file of the current run has its last line, although the engine may still
  /// be running.
  [[nodiscard]] bool ResultsComplete() const {
    return IONCAPModule::ResultsComplete(results_file_);
  }

  /// Whether an engine's process runs; one that the system does not tell never does.
  [[nodiscard]] bool IsPidRunning(ProcessId process) const {
    return process != 0 && with_.launcher.IsRunning(process);
  }

  /// Stops waiting for the engine and ends it where the system tells which process it is.
  void Abort();

  /// Copies a file into the debug log, line by line.
  void DebugFile(const std::filesystem::path& file);

  void SetRunState(RunState state) { run_state_ = state; }

  [[nodiscard]] const EnginePaths& Paths() const { return paths_; }
  /// The results file of the current run, long form.
  [[nodiscard]] const std::filesystem::path& ResultsFile() const { return results_file_; }
  /// The executable that the current run uses.
  [[nodiscard]] const std::filesystem::path& Executable() const { return executable_; }
  /// The engine that the current run uses, and why it is not another.
  [[nodiscard]] const EngineFinding& Finding() const { return finding_; }
  /// Why the engine of the current run, which has ended, gave no results: see EngineFailureText.
  [[nodiscard]] std::string FailureText() const {
    return EngineFailureText(engine_, finding_, with_.launcher.Output(process_));
  }
  /// The engine process of the current run.
  [[nodiscard]] ProcessId EngineProcess() const { return process_; }
  /// The processes of the two point SNR runs.
  [[nodiscard]] ProcessId ShortPathSnrProcess() const { return short_path_snr_process_; }
  [[nodiscard]] ProcessId LongPathSnrProcess() const { return long_path_snr_process_; }
  /// Whether the last start ended because `PredictionParametersValid` told the user why.
  [[nodiscard]] bool ParametersRefused() const { return refused_; }
  /// Whether the last finished run ended with its results on the chart.
  [[nodiscard]] bool LastRunDisplayed() const { return displayed_; }

 private:
  /// The files that one start of an engine is about.
  struct Files {
    const std::filesystem::path& executable;
    const std::filesystem::path& batch;
    const std::filesystem::path& driver;
    const std::filesystem::path& script;
    const std::filesystem::path& results;
  };

  struct Run {
    EngineChoice engine;
    std::filesystem::path batch;
    std::filesystem::path driver;
    std::filesystem::path script;
    std::filesystem::path results;
    std::filesystem::path short_results;
  };

  bool Start(const std::string& name, const Run& run);
  bool StartItsEngine(const std::string& name, EngineChoice engine);
  [[nodiscard]] bool WriteScript(const Run& run);
  [[nodiscard]] bool WriteBatch(const std::filesystem::path& batch,
                                const std::filesystem::path& folder, const std::string& command);
  void WriteDriver(const std::filesystem::path& driver, const std::filesystem::path& script,
                   const std::filesystem::path& results);
  [[nodiscard]] bool StartSnrRuns(const Files& files);
  [[nodiscard]] bool WriteSnrBatch(const std::filesystem::path& batch,
                                   const std::filesystem::path& script,
                                   const std::filesystem::path& results);
  [[nodiscard]] bool StartSnrRun(const Files& files, const char* label, ProcessId& process);
  [[nodiscard]] LaunchResult StartBatch(const Files& files, const std::string& parameter,
                                        const std::filesystem::path& folder);
  void HandOn();

  Collaborators with_;
  EnginePaths paths_;
  std::filesystem::path program_folder_;
  EngineChoice engine_ = EngineChoice::kNone;
  EngineFinding finding_;      // of the current run
  EngineFinding snr_finding_;  // of the point SNR runs
  RunState run_state_ = RunState::kNone;
  std::filesystem::path executable_;
  std::filesystem::path results_file_;
  ProcessId process_ = 0;
  ProcessId short_path_snr_process_ = 0;
  ProcessId long_path_snr_process_ = 0;
  bool long_path_snr_waits_ = false;
  bool refused_ = false;
  bool displayed_ = false;
};

}  // namespace skyhop::IONCAPModule
