// A prediction from the start of its engine to its end.

#include <array>

#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "ui/prediction/ion_cap.h"

namespace skyhop {
namespace {

/// Texts of `EngineLabel` by engine; a label shows a doubled "&" as one.
constexpr std::array<const char*, 4> kEngineLabels = {"IONCAP", "ICEPAC", "VOACAP LUF && MUF",
                                                      "VOACAP SNR && Prob"};
constexpr std::array<const char*, 4> kEngineNames = {"IONCAP", "ICEPAC", "VOACAP", "VOACAP"};

/// A file's path and below it what is in the file, or why that cannot be read.
std::string FileText(const std::filesystem::path& file) {
  constexpr std::size_t longest = std::size_t{8} << 20U;
  const std::string heading = PathText(file) + "\n\n";
  try {
    return heading + ReadFile(file, longest);
  } catch (const Error& error) {
    return heading + "This file cannot be shown: " + error.what() + "\n";
  }
}

const char* NameOf(EngineChoice engine, const std::array<const char*, 4>& names) {
  return engine == EngineChoice::kNone ? "" : names.at(static_cast<std::size_t>(engine));
}

}  // namespace

bool IonCap::Running() const {
  return run_.Waiting();
}

void IonCap::ExecuteTimer_Tick() {
  with_.diagnostics.Trap("IonCap.ExecuteTimer_Tick", [&] {
    if (!Running()) return;
    ShowProgress();
    const EngineJob& job = run_.Job();
    const EngineJob::Outcome outcome = run_.Poll();
    const bool writing = outcome.state == EngineJob::State::kRunning && job.HasResults();
    // Without a known process the window cannot see the engine's end, so it takes any content.
    if (writing && job.Process() != 0) {
      with_.diagnostics.DebugLog("   " + PathText(run_.ResultsFile()) + " is not complete yet");
      return;
    }
    TakeResults(outcome);
  });
  PredictForWaitingPeer();
}

void IonCap::EngineWatch_Tick() {
  with_.diagnostics.Trap("IonCap.EngineWatch_Tick", [&] {
    if (!Running() || !running_) {
      with_.view.StopTimer(WindowTimer::kEngineWatch);
      return;
    }
    const EngineJob::Outcome outcome = run_.Poll();
    if (outcome.state != EngineJob::State::kRunning) TakeResults(outcome);
  });
  PredictForWaitingPeer();
}

void IonCap::TakeResults(const EngineJob::Outcome& outcome) {
  if (outcome.failure == EngineJob::Failure::kNoResults) return FailDeadEngine();
  run_.HandleIonCapTimer();
  if (!Running()) FinishRun();
}

void IonCap::FinishRun() {
  const bool displayed = run_.LastRunDisplayed();
  const PredictionRun run = LeaveRun();
  if (displayed) {
    ShowFinished(run);
    ShowNotice(FinishedNotice(run));
    return;
  }
  if (with_.engine.results.TablesShown() != run.tables_shown) {
    // Results that end early are on the chart as far as they go.
    ShowFinished(run);
    ShowNotice({Notice::Kind::kFailed,
                "The results are incomplete: hours are missing" + with_.diagnostics.CaptionHint()});
    return;
  }
  const std::string results = "The results of " + std::string(NameOf(run.engine, kEngineNames));
  const std::string& difference = run_.Difference();
  Fail((difference.empty() ? results + " could not be displayed"
                           : results + " answer another question. " + difference) +
       with_.diagnostics.CaptionHint());
}

void IonCap::FailDeadEngine() {
  const std::string reason = run_.DeadEngineText();
  with_.diagnostics.ErrorLog("IonCap.ExecuteTimer_Tick: " + reason);
  run_.Abort();
  (void)LeaveRun();
  Fail(reason + with_.diagnostics.CaptionHint());
}

void IonCap::AbortButton_Click() {
  with_.diagnostics.Trap("IonCap.AbortButton_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.AbortButton_Click");
    const bool running = Running();
    waiting_request_.reset();
    run_.Abort();
    UpdateCaption(GetPropFormCaption());
    if (!running) return;
    (void)LeaveRun();
    Fail(with_.chart.HasResult()
             ? "The prediction was aborted. The chart shows the prediction before it."
             : "The prediction was aborted");
  });
}

/// Ends the run, whatever way it ended. Others may predict from here on.
PredictionRun IonCap::LeaveRun() {
  with_.view.StopTimer(WindowTimer::kExecuteTimer);
  with_.view.StopTimer(WindowTimer::kEngineWatch);
  run_.EndEngine();
  PredictionRun run;
  if (running_) run = std::move(*running_);
  running_.reset();
  run.lock.reset();
  EnablePredicting(true);
  UpdateCaption(GetPropFormCaption());
  return run;
}

void IonCap::Fail(const std::string& reason) {
  failed_ = true;
  failed_inputs_ = CurrentInputs();
  if (with_.chart.HasResult()) with_.chart.SetSolarBars(chart_bars_);
  MarkOldChart();
  ShowEngine(with_.chart.HasResult() ? with_.chart.Engine() : EngineChoice::kNone);
  ShowNotice({Notice::Kind::kFailed, reason});
  with_.view.SetStatus("");
  UpdateCaption(GetPropFormCaption());
}

void IonCap::ShowProgress() {
  if (!running_) return;
  const std::string working = std::string(NameOf(running_->engine, kEngineNames)) + " is working";
  // A clock that was set back must not show a time before the start.
  const auto seconds = std::max<std::int64_t>(
      0,
      std::chrono::floor<std::chrono::seconds>(with_.clock.UtcNow() - running_->started).count());
  const std::string duration = seconds == 0 ? "" : " for " + std::to_string(seconds) + " s";
  ShowNotice({Notice::Kind::kRunning, working + duration + ". Esc or Abort ends it."});
  with_.view.SetStatus(working);
  UpdateCaption(GetPropFormCaption() + " - " + working);
}

void IonCap::EnablePredicting(bool enable) {
  // In this order there is always a command that the keyboard can go to.
  if (!enable) with_.view.Enable(Button::kAbortButton, true);
  for (const Button button :
       {Button::kPathsButton, Button::kPredictSPToCmd, Button::kPredictLPToCmd,
        Button::kPredictSPFromCmd, Button::kPredictLPFromCmd}) {
    with_.view.Enable(button, enable);
  }
  if (enable) with_.view.Enable(Button::kAbortButton, false);
}

void IonCap::ShowFilesCmd_Click() {
  with_.diagnostics.Trap("IonCap.ShowFilesCmd_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.ShowFilesCmd_Click");
    const std::filesystem::path results = run_.ResultsFile();
    if (results.empty()) return;
    const std::filesystem::path deck = results.parent_path() / "script.txt";
    const std::string viewer =
        with_.settings.GetStringSetting(kProductName, "IonCap", "Viewer", "");
    if (Trim(viewer).empty()) {
      with_.files_window.ShowText("Deck " + FileText(deck) + "\n\nResults " + FileText(results));
      return;
    }
    ShowInViewer(viewer, deck);
    ShowInViewer(viewer, results);
  });
}

void IonCap::ShowInViewer(const std::string& viewer, const std::filesystem::path& file) {
  std::error_code ignored;
  if (!std::filesystem::exists(file, ignored)) {
    with_.messages.Show("There is no file " + PathText(file), kProductName);
    return;
  }
  const LaunchResult opened = with_.launcher.OpenInViewer(viewer, file);
  if (opened.Succeeded()) return;
  with_.messages.Show(
      PathText(file) + " cannot be opened with " + viewer + ": " + LaunchErrorText(opened.code),
      kProductName);
}

void IonCap::ShowEngine(EngineChoice engine) {
  with_.view.SetLabel(Label::kEngineLabel, NameOf(engine, kEngineLabels));
}

}  // namespace skyhop
