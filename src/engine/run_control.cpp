#include "engine/run_control.h"

#include "common/errors.h"
#include "common/files.h"
#include "common/program.h"
#include "common/text.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr EngineFileNames kIonCapNames = {"script.txt", "results.txt", "ioncap.bat",
                                          "iondrive.txt"};
constexpr EngineFileNames kItsNames = {"script.txt", "results.txt", "icevoa.bat", ""};

}  // namespace

bool RunControl::LoadEngineData(const std::filesystem::path& program_folder) {
  return with_.diagnostics.Trap("IONCAPModule.LoadEngineData", false, [&] {
    with_.diagnostics.DebugLog("IONCAPModule.LoadEngineData");
    program_folder_ = program_folder;
    const std::filesystem::path ioncap = program_folder / EngineFolder(EngineChoice::kIonCap);
    std::error_code ignored;
    if (!std::filesystem::is_directory(ioncap, ignored)) {
      const std::string text = "Specified IonCap directory " + PathText(ioncap) + " does not exist";
      with_.messages.Show(text, "IonCap Setup");
      with_.diagnostics.DebugLog("   " + text);
      return false;
    }
    viewer_ = with_.settings.GetStringSetting(kProductName, "IonCap", "Viewer",
                                              "c:\\windows\\notepad.exe");
    folders_known_ = true;
    with_.diagnostics.DebugLog("IONCAPModule.LoadEngineData complete");
    return true;
  });
}

bool RunControl::ForecastPaths() {
  return with_.diagnostics.Trap("IONCAPModule.ForecastPaths", false, [&] {
    switch (with_.parameters.Set().engine) {
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
  return Start("IONCAPModule.IonCapPaths", EngineChoice::kIonCap);
}

bool RunControl::IcePacPaths() {
  return Start("IONCAPModule.IcePacPaths", EngineChoice::kIcePac);
}

bool RunControl::VoaCapPaths() {
  const bool snr = with_.parameters.Set().engine == EngineChoice::kVoaCapSnr;
  return Start("IONCAPModule.VoaCapPaths", snr ? EngineChoice::kVoaCapSnr : EngineChoice::kVoaCap);
}

bool RunControl::Start(const std::string& name, EngineChoice engine) {
  refused_ = false;
  return with_.diagnostics.Trap(name, false, [&] {
    with_.diagnostics.DebugLog(name);
    if (!folders_known_) {
      // Without the folders every file name would be one of the current folder.
      with_.diagnostics.ErrorLog(name + ": the engines' folders are not known");
      return false;
    }
    if (waiting_) {
      with_.diagnostics.DebugLog("   previous computation still running");
      return false;
    }
    refused_ = !with_.parameters.PredictionParametersValid();
    if (refused_) {
      with_.diagnostics.DebugLog("   parameters not ok");
      return false;
    }
    run_state_ = RunState::kChart;
    displayed_ = false;
    difference_.clear();
    EngineJob::Request request;
    request.asked = InputsOf(with_.parameters.Set());
    request.asked.engine = engine;
    request.finding = FindEngine(with_.host, program_folder_, engine);
    request.files =
        FilesIn(program_folder_ / EngineFolder(engine), engine,
                engine == EngineChoice::kIonCap ? kIonCapNames : kItsNames, with_.launcher);
    request.timeout = timeout_;
    if (!request.finding.reason.empty()) {
      with_.diagnostics.DebugLog("   " + FindingText(request.finding));
    }
    CreateFolder(request.files.results.parent_path());
    // With an old results file or an old deck left in place the engine's answer would not belong to
    // these parameters, so the run ends here; the error log has the reason.
    if (!with_.results.InitializeResults(request.files.results) ||
        !with_.decks.Write(request.asked, request.files.deck)) {
      return false;
    }
    if (with_.diagnostics.GetDebug()) DebugFile(request.files.deck);
    if (!job_.Start(request, with_.clock.SteadyNow())) return false;
    waiting_ = true;
    if (with_.diagnostics.GetDebug()) {
      DebugFile(request.files.batch);
      if (engine == EngineChoice::kIonCap) DebugFile(request.files.driver);
    }
    return true;
  });
}

void RunControl::HandleIonCapTimer() {
  with_.diagnostics.Trap("IONCAPModule.HandleIonCapTimer", [&] {
    with_.diagnostics.DebugLog("IONCAPModule.HandleIonCapTimer");
    const std::string name = PathText(ResultsFile());
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(ResultsFile(), error);
    if (error) {
      with_.diagnostics.DebugLog("   " + name + " does not exist");
      return;
    }
    if (size < 1) {
      with_.diagnostics.DebugLog("   " + name + " is empty");
      return;
    }
    waiting_ = false;
    with_.diagnostics.DebugLog("   " + name + " exists");
    displayed_ = false;
    HandOn();
    if (with_.diagnostics.GetDebug()) DebugFile(ResultsFile());
  });
}

void RunControl::HandOn() {
  const EngineChoice engine = job_.Asked().asked.engine;
  const bool by_viewer = engine == EngineChoice::kIonCap && run_state_ == RunState::kViewer;
  if (by_viewer) {
    const LaunchResult opened = with_.launcher.OpenInViewer(viewer_, ResultsFile());
    if (!opened.Succeeded()) {
      with_.diagnostics.ErrorLog("IONCAPModule.HandleIonCapTimer: cannot show " +
                                 PathText(ResultsFile()) + " with " + viewer_ + ": " +
                                 LaunchErrorText(opened.code));
    }
    return;
  }
  if (Refused()) return;
  switch (engine) {
    case EngineChoice::kIonCap:
      displayed_ = (run_state_ == RunState::kChart || run_state_ == RunState::kChartWithoutLuf) &&
                   with_.results.DisplayResults(run_state_ == RunState::kChart, ResultsFile(),
                                                EngineChoice::kIonCap);
      break;
    case EngineChoice::kIcePac:
    case EngineChoice::kVoaCap:
      displayed_ = with_.results.DisplayResults(true, ResultsFile(), engine);
      break;
    case EngineChoice::kVoaCapSnr:
      displayed_ = with_.results.DisplayMethod2030Results(ResultsFile());
      break;
    case EngineChoice::kNone:
      with_.diagnostics.DebugLog("   no engine selected");
      break;
  }
}

bool RunControl::Refused() {
  difference_ = job_.Difference(ReadFile(ResultsFile(), Results::kLargestFile));
  if (difference_.empty()) return false;
  with_.diagnostics.ErrorLog("IONCAPModule.HandleIonCapTimer: " + PathText(ResultsFile()) +
                             " is refused. " + difference_);
  return true;
}

std::string RunControl::DeadEngineText() const {
  return PathText(job_.Executable()) + " ended without writing " + PathText(ResultsFile()) + "." +
         job_.FailureText();
}

void RunControl::Abort() {
  with_.diagnostics.Trap("IONCAPModule.Abort", [&] {
    waiting_ = false;
    // An engine that ran on could put its results where the next run waits for its own.
    job_.End();
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
      with_.diagnostics.DebugLog(TakeLine(rest));
    }
  });
}

}  // namespace skyhop::IONCAPModule
