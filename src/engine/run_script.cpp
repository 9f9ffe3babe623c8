// Batch and driver files, and the start of an engine with them.

#include "common/errors.h"
#include "common/files.h"
#include "common/text.h"
#include "engine/run_control.h"

namespace skyhop::IONCAPModule {

bool RunControl::RunScript(bool snr, const std::filesystem::path& executable,
                           const std::filesystem::path& batch, const std::filesystem::path& driver,
                           const std::filesystem::path& script,
                           const std::filesystem::path& results) {
  return with_.diagnostics.Trap("IONCAPModule.RunScript", false, [&] {
    with_.diagnostics.DebugLog(std::string("IONCAPModule.RunScript: SNR = ") + BooleanText(snr) +
                               ", BatFilename = " + PathText(batch) +
                               ", ScriptFilename = " + PathText(script));
    const Files files{executable, batch, driver, script, results};
    if (snr) return StartSnrRuns(files);
    if (engine_ == EngineChoice::kIonCap) {
      const std::filesystem::path& folder = paths_.ioncap_short_folder;
      const std::string command = IonCapCommand(finding_, driver, with_.launcher);
      if (!WriteBatch(batch, folder, command)) return false;
      WriteDriver(driver, script, results);
      const LaunchResult started = StartBatch(files, PathText(driver), folder);
      process_ = started.process;
      return started.Succeeded();
    }
    const std::filesystem::path& folder = paths_.its_short_folder;
    const std::string command = ItsCommand(finding_, folder, PathText(script.filename()),
                                           PathText(results.filename()), with_.launcher);
    if (!WriteBatch(batch, folder / "run", command)) return false;
    const LaunchResult started = StartBatch(files, {}, folder);
    process_ = started.process;
    return started.Succeeded();
  });
}

/// Deletes the old batch file and writes the new one: into the folder, run the engine, be quiet.
bool RunControl::WriteBatch(const std::filesystem::path& batch, const std::filesystem::path& folder,
                            const std::string& command) {
  if (!DeleteWithRetries(batch, with_.pause)) {
    with_.diagnostics.ErrorLog("IONCAPModule.RunScript: could not delete " + PathText(batch));
    return false;
  }
  const std::string end = with_.launcher.LineEnd();
  const std::string content = "cd " + with_.launcher.BatchText(folder) + end + command + end +
                              "echo off" + end + "cls" + end;
  try {
    WriteFile(batch, content);
  } catch (const Error& error) {
    with_.diagnostics.ErrorLog("IONCAPModule.RunScript: could not create " + PathText(batch));
    with_.diagnostics.DebugLog(std::string("   ") + error.what());
    return false;
  }
  return true;
}

void RunControl::WriteDriver(const std::filesystem::path& driver,
                             const std::filesystem::path& script,
                             const std::filesystem::path& results) {
  const std::string script_text = DriverLine(finding_, script, with_.launcher);
  const std::string results_text = DriverLine(finding_, results, with_.launcher);
  if (!DeleteWithRetries(driver, with_.pause)) {
    throw Error(errors::kPathFileAccess, "could not delete " + PathText(driver));
  }
  const std::string end = with_.launcher.LineEnd();
  WriteFile(driver, script_text + end + results_text + end);
}

bool RunControl::StartSnrRuns(const Files& files) {
  if (!snr_finding_.reason.empty()) with_.diagnostics.DebugLog("   " + FindingText(snr_finding_));
  short_path_snr_process_ = 0;
  long_path_snr_process_ = 0;
  // Only the native engine takes a run folder.
  long_path_snr_waits_ = snr_finding_.kind != EngineKind::kNative;
  const std::filesystem::path& batch = paths_.short_path_snr_batch;
  const std::filesystem::path& script = paths_.short_path_snr_script;
  const std::filesystem::path& results = paths_.short_path_snr_short_results;
  return WriteSnrBatch(batch, script, results) &&
         WriteSnrBatch(paths_.long_path_snr_batch, paths_.long_path_snr_script,
                       paths_.long_path_snr_short_results) &&
         StartSnrRun({files.executable, batch, files.driver, script, results},
                     "   SP PID = ", short_path_snr_process_) &&
         (long_path_snr_waits_ || StartLongPathSnr());
}

bool RunControl::StartLongPathSnr() {
  return with_.diagnostics.Trap("IONCAPModule.RunScript", false, [&] {
    long_path_snr_waits_ = false;
    return StartSnrRun({paths_.snr_executable,
                        paths_.long_path_snr_batch,
                        {},
                        paths_.long_path_snr_script,
                        paths_.long_path_snr_short_results},
                       "   LP PID = ", long_path_snr_process_);
  });
}

bool RunControl::WriteSnrBatch(const std::filesystem::path& batch,
                               const std::filesystem::path& script,
                               const std::filesystem::path& results) {
  const std::filesystem::path run = results.parent_path();
  const std::string command =
      ItsCommand(snr_finding_, run.parent_path(), PathText(script.filename()),
                 PathText(results.filename()), with_.launcher);
  return WriteBatch(batch, run, command);
}

bool RunControl::StartSnrRun(const Files& files, const char* label, ProcessId& process) {
  const LaunchResult started = StartBatch(files, {}, files.results.parent_path().parent_path());
  process = started.process;
  with_.diagnostics.DebugLog(label + std::to_string(process));
  return started.Succeeded();
}

LaunchResult RunControl::StartBatch(const Files& files, const std::string& parameter,
                                    const std::filesystem::path& folder) {
  const LaunchResult started = with_.launcher.StartBatch(files.batch, parameter, folder);
  if (!started.Succeeded()) {
    Diagnostics& log = with_.diagnostics;
    log.ErrorLog("IONCAPModule.RunScript ShellExecute failure: " + LaunchErrorText(started.code));
    log.ErrorLog("       Exe filename = " + PathText(files.executable));
    log.ErrorLog("       Bat filename = " + PathText(files.batch));
    log.ErrorLog("    Driver filename = " + PathText(files.driver));
    log.ErrorLog("    Script filename = " + PathText(files.script));
    log.ErrorLog("   Results filename = " + PathText(files.results));
    log.ErrorLog("             Folder = " + PathText(folder));
  }
  return started;
}

}  // namespace skyhop::IONCAPModule
