#include "ui/prediction/chart_run.h"

#include <algorithm>
#include <array>

#include "common/files.h"
#include "common/text.h"

namespace skyhop {
namespace {

/// How often the results file is looked at.
constexpr std::chrono::milliseconds kPollInterval{1000};
/// How often the engine's process is looked at.
constexpr std::chrono::milliseconds kWatchInterval{100};

constexpr std::array<const char*, 4> kEngineNames = {"IONCAP", "ICEPAC", "VOACAP", "VOACAP"};

std::string NameOf(EngineChoice engine) {
  return engine == EngineChoice::kNone ? "" : kEngineNames.at(static_cast<std::size_t>(engine));
}

}  // namespace

void ChartRun::Start() {
  std::unique_ptr<RunLock> lock = with_.locker.Lock();
  if (!lock) {
    Fail("The prediction was not started: another program is predicting in " +
         PathText(run_.ProgramFolder()));
  } else if (run_.ForecastPaths()) {
    Started(std::move(lock));
  } else if (run_.ParametersRefused()) {
    Fail("The prediction was not started: the parameters need correction");
  } else {
    const EngineFinding engine = run_.Find();
    Fail(engine.exists ? "The prediction was not started" + with_.diagnostics.CaptionHint()
                       : "The engine is missing: there is no " + PathText(engine.executable) +
                             ". The Configuration window offers others.");
  }
  // The bars of a chart stay with it when there is no new prediction.
  if (Running() || !with_.shown.HasResult()) with_.shown.UpdateSolarBars();
}

void ChartRun::Started(std::unique_ptr<RunLock> lock) {
  const EngineChoice engine = run_.Job().Asked().asked.engine;
  running_ = Run{std::move(lock), with_.clock.UtcNow(), run_.Job().Asked().finding,
                 with_.shown.DescribeNext(engine, Asked()), with_.engine.results.TablesShown()};
  EnablePredicting(false);
  with_.view.Enable(Button::kShowFilesCmd, true);
  with_.view.StartTimer(WindowTimer::kExecuteTimer, kPollInterval);
  if (run_.Job().Process() != 0) {
    with_.view.StartTimer(WindowTimer::kEngineWatch, kWatchInterval);
  }
  with_.shown.ShowEngine(engine);
  ShowProgress();
}

AskedPrediction ChartRun::Asked() const {
  const ParameterSet& set = with_.engine.parameters.Set();
  AskedPrediction asked;
  asked.sunspot_number = run_.Job().Asked().asked.sunspot_number;
  asked.solar_flux = set.flux;
  asked.from_flux = IONCAPModule::DerivesSunspotNumber(set);
  asked.by_peer = with_.view.Selected(OptionGroup::kDDEOption) == dde_option::kRequestedByPeer;
  return asked;
}

/// No engine may go on for a window that does not wait for it.
void ChartRun::GiveUp() {
  if (Running()) run_.Abort();
  (void)Leave();
  Fail("The prediction was not started" + with_.diagnostics.CaptionHint());
}

void ChartRun::Execute() {
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
}

void ChartRun::Watch() {
  if (!Running() || !running_) {
    with_.view.StopTimer(WindowTimer::kEngineWatch);
    return;
  }
  const EngineJob::Outcome outcome = run_.Poll();
  if (outcome.state != EngineJob::State::kRunning) TakeResults(outcome);
}

void ChartRun::TakeResults(const EngineJob::Outcome& outcome) {
  if (outcome.failure == EngineJob::Failure::kNoResults) return FailDeadEngine();
  run_.HandleIonCapTimer();
  if (!Running()) Finish();
}

void ChartRun::Finish() {
  const bool displayed = run_.LastRunDisplayed();
  const Run run = Leave();
  if (displayed) return ShowFinished(run, FinishedNotice(run));
  if (with_.engine.results.TablesShown() != run.tables_shown) {
    // Results that end early are on the chart as far as they go.
    return ShowFinished(
        run, {Notice::Kind::kFailed,
              "The results are incomplete: hours are missing" + with_.diagnostics.CaptionHint()});
  }
  const std::string results = "The results of " + NameOf(run.description.engine);
  const std::string& difference = run_.Difference();
  Fail((difference.empty() ? results + " could not be displayed"
                           : results + " answer another question. " + difference) +
       with_.diagnostics.CaptionHint());
}

void ChartRun::ShowFinished(const Run& run, const Notice& notice) {
  with_.shown.Show(run.description, with_.clock.UtcNow());
  with_.view.SetStatus("");
  with_.status.ShowNotice(notice);
}

/// A notice when another engine than the selected one made the prediction, and when the prediction
/// holds no useable frequency.
Notice ChartRun::FinishedNotice(const Run& run) const {
  Notice notice;
  const auto say = [&](const std::string& text, NoticeAction action) {
    notice.kind = Notice::Kind::kWarning;
    notice.text += (notice.text.empty() ? "" : " ") + text;
    notice.action = action;
  };
  if (IsEstimate(with_.engine.results.Heading().engine)) {
    const std::string name = EngineName({}, run.description.engine);
    say((run.finding.reason.empty() ? name + " is not installed."
                                    : name + " did not run. " + run.finding.reason) +
            " The built-in estimate made this prediction.",
        NoticeAction::kShowConfiguration);
  }
  if (with_.shown.Table().ReachedHours() == 0) {
    say("No hour has a frequency that reaches the required reliability: more power, a mode that "
        "needs less SNR or a lower reliability would help.",
        NoticeAction::kShowReceiver);
  }
  return notice;
}

void ChartRun::FailDeadEngine() {
  const std::string reason = run_.DeadEngineText();
  with_.diagnostics.ErrorLog("IonCap.ExecuteTimer_Tick: " + reason);
  run_.Abort();
  (void)Leave();
  Fail(reason + with_.diagnostics.CaptionHint());
}

void ChartRun::Abort() {
  const bool running = Running();
  run_.Abort();
  with_.status.ShowActivity("");
  if (!running) return;
  (void)Leave();
  Fail(with_.shown.HasResult()
           ? "The prediction was aborted. The chart shows the prediction before it."
           : "The prediction was aborted");
}

void ChartRun::Terminate() {
  // A run that waits no longer may still show a message.
  if (!running_ && !Running()) return;
  run_.Abort();
  (void)Leave();
}

/// Ends the run, whatever way it ended. Others may predict from here on.
ChartRun::Run ChartRun::Leave() {
  with_.view.StopTimer(WindowTimer::kExecuteTimer);
  with_.view.StopTimer(WindowTimer::kEngineWatch);
  run_.EndEngine();
  Run run;
  if (running_) run = std::move(*running_);
  running_.reset();
  run.lock.reset();
  EnablePredicting(true);
  with_.status.ShowActivity("");
  return run;
}

void ChartRun::Fail(const std::string& reason) {
  with_.shown.Fail();
  with_.status.ShowNotice({Notice::Kind::kFailed, reason});
  with_.view.SetStatus("");
  with_.status.ShowActivity("");
}

void ChartRun::ShowProgress() {
  if (!running_) return;
  const std::string working = NameOf(running_->description.engine) + " is working";
  // A clock that was set back must not show a time before the start.
  const auto seconds = std::max<std::int64_t>(
      0,
      std::chrono::floor<std::chrono::seconds>(with_.clock.UtcNow() - running_->started).count());
  const std::string duration = seconds == 0 ? "" : " for " + std::to_string(seconds) + " s";
  with_.status.ShowNotice({Notice::Kind::kRunning, working + duration + ". Esc or Abort ends it."});
  with_.view.SetStatus(working);
  with_.status.ShowActivity(working);
}

void ChartRun::EnablePredicting(bool enable) {
  // In this order there is always a command that the keyboard can go to.
  if (!enable) with_.view.Enable(Button::kAbortButton, true);
  for (const Button button :
       {Button::kPathsButton, Button::kPredictSPToCmd, Button::kPredictLPToCmd,
        Button::kPredictSPFromCmd, Button::kPredictLPFromCmd}) {
    with_.view.Enable(button, enable);
  }
  if (enable) with_.view.Enable(Button::kAbortButton, false);
}

}  // namespace skyhop
