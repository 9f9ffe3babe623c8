#include "engine/run_control.h"

#include <algorithm>
#include <fstream>

#include "common/files.h"
#include "common/program.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr std::int16_t kLufMufMethod = 26;
constexpr std::int16_t kSnrMethod = 30;

/// So many bytes at the end of a results file hold its last line.
constexpr std::streamoff kTail = 200;

/// Puts the files of the point SNR runs into the "run" folders below these folders of the second
/// installation.
void PlaceSnrFiles(const std::filesystem::path& short_path, const std::filesystem::path& long_path,
                   EnginePaths& paths) {
  paths.short_path_snr_results = paths.snr_folder / short_path / "run" / "spsnr.txt";
  paths.long_path_snr_results = paths.snr_folder / long_path / "run" / "lpsnr.txt";
  paths.short_path_snr_short_results = paths.snr_short_folder / short_path / "run" / "spsnr.txt";
  paths.long_path_snr_short_results = paths.snr_short_folder / long_path / "run" / "lpsnr.txt";
  paths.short_path_snr_script = paths.snr_folder / short_path / "run" / "sspscript.txt";
  paths.long_path_snr_script = paths.snr_folder / long_path / "run" / "slpscript.txt";
  paths.short_path_snr_batch = paths.snr_short_folder / short_path / "run" / "spsnr.bat";
  paths.long_path_snr_batch = paths.snr_short_folder / long_path / "run" / "lpsnr.bat";
}

}  // namespace

bool RunControl::LoadEngineData(const std::filesystem::path& program_folder) {
  return with_.diagnostics.Trap("IONCAPModule.LoadEngineData", false, [&] {
    with_.diagnostics.DebugLog("IONCAPModule.LoadEngineData");
    const std::filesystem::path ioncap = program_folder / "IonCap";
    std::error_code ignored;
    if (!std::filesystem::is_directory(ioncap, ignored)) {
      const std::string text = "Specified IonCap directory " + PathText(ioncap) + " does not exist";
      with_.messages.Show(text, "IonCap Setup");
      with_.diagnostics.DebugLog("   " + text);
      return false;
    }
    EnginePaths paths;
    paths.ioncap_folder = ioncap;
    paths.ioncap_short_folder = with_.launcher.ShortPath(ioncap);
    paths.ioncap_executable = paths.ioncap_short_folder / "ioncap.exe";
    paths.ioncap_batch = paths.ioncap_short_folder / "ioncap.bat";
    paths.ioncap_driver = paths.ioncap_short_folder / "iondrive.txt";

    paths.its_folder = program_folder / "ITSHFBC";
    paths.its_short_folder = with_.launcher.ShortPath(paths.its_folder);
    paths.icepac_executable = paths.its_short_folder / "bin_win" / "icepacw.exe";
    paths.voacap_executable = paths.its_short_folder / "bin_win" / "voacapw.exe";
    paths.its_batch = paths.its_short_folder / "run" / "icevoa.bat";

    paths.snr_folder = program_folder / "ITSHFBC2";
    paths.snr_short_folder = with_.launcher.ShortPath(paths.snr_folder);
    paths.snr_executable = paths.snr_short_folder / "bin_win" / "voacapw.exe";
    PlaceSnrFiles({}, {}, paths);

    paths.viewer = with_.settings.GetStringSetting(kProductName, "IonCap", "Viewer",
                                                   "c:\\windows\\notepad.exe");
    paths_ = std::move(paths);
    program_folder_ = program_folder;
    with_.diagnostics.DebugLog("IONCAPModule.LoadEngineData complete");
    return true;
  });
}

void RunControl::FindSnrEngine() {
  snr_finding_ =
      FindEngine(with_.host, program_folder_, EngineChoice::kVoaCapSnr, EngineUse::kPoint);
  // It alone is told its run folder; of what it leaves there while it runs nothing must meet.
  if (snr_finding_.kind == EngineKind::kNative) {
    PlaceSnrFiles("short", "long", paths_);
  } else {
    PlaceSnrFiles({}, {}, paths_);
  }
}

bool RunControl::ForecastPaths() {
  return with_.diagnostics.Trap("IONCAPModule.ForecastPaths", false, [&] {
    switch (static_cast<EngineChoice>(with_.panel.Choice(PanelChoice::kEngineButton))) {
      case EngineChoice::kIonCap:
        return IonCapPaths();
      case EngineChoice::kIcePac:
        return IcePacPaths();
      case EngineChoice::kVoaCap:
      case EngineChoice::kVoaCapSnr:
        return VoaCapPaths();
      case EngineChoice::kNone:
        break;
    }
    with_.diagnostics.DebugLog("   no engine selected");
    return false;
  });
}

bool RunControl::IonCapPaths() {
  return Start("IONCAPModule.IonCapPaths",
               {.engine = EngineChoice::kIonCap,
                .batch = paths_.ioncap_batch,
                .driver = paths_.ioncap_driver,
                .script = paths_.ioncap_short_folder / "script.txt",
                .results = paths_.ioncap_folder / "results.txt",
                .short_results = paths_.ioncap_short_folder / "results.txt"});
}

bool RunControl::IcePacPaths() {
  return StartItsEngine("IONCAPModule.IcePacPaths", EngineChoice::kIcePac);
}

bool RunControl::VoaCapPaths() {
  const bool snr =
      with_.panel.Choice(PanelChoice::kEngineButton) == static_cast<int>(EngineChoice::kVoaCapSnr);
  return StartItsEngine("IONCAPModule.VoaCapPaths",
                        snr ? EngineChoice::kVoaCapSnr : EngineChoice::kVoaCap);
}

bool RunControl::StartItsEngine(const std::string& name, EngineChoice engine) {
  return Start(name, {.engine = engine,
                      .batch = paths_.its_batch,
                      .driver = {},
                      .script = paths_.its_short_folder / "run" / "script.txt",
                      .results = paths_.its_folder / "run" / "results.txt",
                      .short_results = paths_.its_short_folder / "run" / "results.txt"});
}

bool RunControl::Start(const std::string& name, const Run& run) {
  refused_ = false;
  return with_.diagnostics.Trap(name, false, [&] {
    with_.diagnostics.DebugLog(name);
    if (paths_.ioncap_folder.empty()) {
      // Without the folders every file name would be one of the current folder.
      with_.diagnostics.ErrorLog(name + ": the engines' folders are not known");
      return false;
    }
    if (with_.timer.Running()) {
      with_.diagnostics.DebugLog("   previous computation still running");
      return false;
    }
    refused_ = !with_.parameters.PredictionParametersValid();
    if (refused_) {
      with_.diagnostics.DebugLog("   parameters not ok");
      return false;
    }
    engine_ = run.engine;
    run_state_ = RunState::kChart;
    results_file_ = run.results;
    finding_ = FindEngine(with_.host, program_folder_, run.engine);
    executable_ = EngineExecutable(
        finding_,
        run.engine == EngineChoice::kIonCap ? paths_.ioncap_short_folder : paths_.its_short_folder,
        with_.launcher);
    process_ = 0;
    displayed_ = false;
    if (!finding_.reason.empty()) with_.diagnostics.DebugLog("   " + FindingText(finding_));
    CreateFolder(run.results.parent_path());
    // With an old results file or an old script left in place the engine's answer would not belong
    // to these parameters, so the run ends here; the error log has the reason.
    if (!with_.results.InitializeResults(run.results) || !WriteScript(run)) return false;
    with_.results.Expect(ReadDeckParameters(with_.panel, with_.parameters, with_.diagnostics),
                         run.engine);
    if (with_.diagnostics.GetDebug()) DebugFile(run.script);
    if (!RunScript(false, executable_, run.batch, run.driver, run.script, run.short_results)) {
      return false;
    }
    with_.timer.Start();
    if (with_.diagnostics.GetDebug()) {
      DebugFile(run.batch);
      if (run.engine == EngineChoice::kIonCap) DebugFile(run.driver);
    }
    return true;
  });
}

bool RunControl::WriteScript(const Run& run) {
  if (run.engine == EngineChoice::kIonCap) {
    return with_.ioncap_script.CreateIONCAPScript(kLufMufMethod, run.script);
  }
  const std::int16_t method = run.engine == EngineChoice::kVoaCapSnr ? kSnrMethod : kLufMufMethod;
  return with_.its_script.CreateScript(run.engine, method, run.script);
}

void RunControl::HandleIonCapTimer() {
  with_.diagnostics.Trap("IONCAPModule.HandleIonCapTimer", [&] {
    with_.diagnostics.DebugLog("IONCAPModule.HandleIonCapTimer");
    const std::string name = PathText(results_file_);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(results_file_, error);
    if (error) {
      with_.diagnostics.DebugLog("   " + name + " does not exist");
      return;
    }
    if (size < 1) {
      with_.diagnostics.DebugLog("   " + name + " is empty");
      return;
    }
    with_.timer.Stop();
    with_.diagnostics.DebugLog("   " + name + " exists");
    displayed_ = false;
    HandOn();
    if (with_.diagnostics.GetDebug()) DebugFile(results_file_);
  });
}

void RunControl::HandOn() {
  switch (engine_) {
    case EngineChoice::kIonCap:
      if (run_state_ == RunState::kViewer) {
        const LaunchResult opened = with_.launcher.OpenInViewer(paths_.viewer, results_file_);
        if (!opened.Succeeded()) {
          with_.diagnostics.ErrorLog("IONCAPModule.HandleIonCapTimer: cannot show " +
                                     PathText(results_file_) + " with " + paths_.viewer + ": " +
                                     LaunchErrorText(opened.code));
        }
      } else if (run_state_ == RunState::kChart || run_state_ == RunState::kChartWithoutLuf) {
        displayed_ =
            with_.results.DisplayResults(run_state_ == RunState::kChart, results_file_, engine_);
      }
      break;
    case EngineChoice::kIcePac:
    case EngineChoice::kVoaCap:
      displayed_ = with_.results.DisplayResults(true, results_file_, engine_);
      break;
    case EngineChoice::kVoaCapSnr:
      displayed_ = with_.results.DisplayMethod2030Results(results_file_);
      break;
    case EngineChoice::kNone:
      with_.diagnostics.DebugLog("   no engine selected");
      break;
  }
}

bool ResultsComplete(const std::filesystem::path& results) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(results, ignored)) return false;
  std::ifstream file(results, std::ios::binary | std::ios::ate);
  if (!file) return false;
  file.seekg(std::max<std::streamoff>(file.tellg() - kTail, 0));
  std::string tail(static_cast<std::size_t>(kTail), '\0');
  file.read(tail.data(), kTail);
  tail.resize(static_cast<std::size_t>(file.gcount()));
  return tail.find("END OF RUN") != std::string::npos && tail.ends_with('\n');
}

void RunControl::Abort() {
  with_.diagnostics.Trap("IONCAPModule.Abort", [&] {
    with_.timer.Stop();
    // An engine that ran on could put its results where the next run waits for its own.
    if (process_ != 0) with_.launcher.End(process_);
  });
}

void RunControl::DebugFile(const std::filesystem::path& file) {
  with_.diagnostics.Trap("IONCAPModule.DebugFile", [&] {
    with_.diagnostics.DebugLog("IONCAPModule.DebugFile, theFilename = " + PathText(file));
    std::error_code ignored;
    if (!std::filesystem::exists(file, ignored)) {
      with_.diagnostics.DebugLog("   file does not exist");
      return;
    }
    const std::string content = ReadFile(file, Results::kLargestFile);
    for (std::string_view rest = content; !rest.empty();) {
      const std::size_t end = rest.find('\n');
      std::string_view line = rest.substr(0, end);
      rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
      if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
      with_.diagnostics.DebugLog(line);
    }
  });
}

}  // namespace skyhop::IONCAPModule
