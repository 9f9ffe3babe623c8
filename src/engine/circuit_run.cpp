#include "engine/circuit_run.h"

#include <string_view>

#include "common/errors.h"
#include "common/files.h"
#include "engine/echo_check.h"
#include "engine/engine_output.h"
#include "engine/engine_probe.h"
#include "engine/results.h"
#include "engine/script_cards.h"

namespace skyhop {
namespace {

constexpr const char* kCircuitDeck = "beacon.txt";
constexpr const char* kCircuitResults = "beaconresults.txt";
constexpr const char* kCircuitBatch = "beacon.bat";
constexpr const char* kCircuitDriver = "beacondrive.txt";

/// What the engines close their results with.
constexpr std::string_view kEndOfRun = "END OF RUN";

}  // namespace

CircuitRun::Started CircuitRun::Start(EngineChoice engine,
                                      const IONCAPModule::DeckParameters& asked,
                                      const DeckWriter& write_deck, Time now) {
  return with_.diagnostics.Trap("CircuitRun.Start", Started::kFailed, [&] {
    problem_ = "the error log has the reason";
    Cancel();
    // The lock first: whoever is told to wait asks again and again.
    Run run;
    run.lock = with_.locker.Lock();
    if (!run.lock) return Started::kBusy;
    const EngineFinding finding = FindEngine(with_.host, with_.program_folder, engine);
    if (!finding.can_run) {
      problem_ = "there is no engine " + PathText(finding.executable);
      return Started::kFailed;
    }
    const LaunchResult started = WriteAndStart(engine, finding, write_deck, run.results);
    if (!started.Succeeded()) {
      problem_ = "the engine could not be started: " + LaunchErrorText(started.code);
      return Started::kFailed;
    }
    run.engine = engine;
    run.finding = finding;
    run.asked = asked;
    run.process = started.process;
    run.started = now;
    run_ = std::move(run);
    return Started::kRuns;
  });
}

LaunchResult CircuitRun::WriteAndStart(EngineChoice engine, const EngineFinding& finding,
                                       const DeckWriter& write_deck,
                                       std::filesystem::path& results) const {
  EngineLauncher& launcher = with_.launcher;
  const bool ioncap = engine == EngineChoice::kIonCap;
  const std::filesystem::path folder =
      launcher.ShortPath(with_.program_folder / EngineFolder(engine));
  const std::filesystem::path work = ioncap ? folder : folder / "run";
  CreateFolder(work);
  results = work / kCircuitResults;
  if (!IONCAPModule::DeleteWithRetries(results, with_.pause)) {
    throw Error(errors::kPathFileAccess, "could not delete " + PathText(results));
  }
  if (!write_deck(work / kCircuitDeck)) throw Error(errors::kInvalidCall, "there is no deck");
  const std::string end = launcher.LineEnd();
  std::string command;
  if (ioncap) {
    command = IonCapCommand(finding, work / kCircuitDriver, launcher);
    WriteFile(work / kCircuitDriver, DriverLine(finding, work / kCircuitDeck, launcher) + end +
                                         DriverLine(finding, results, launcher) + end);
  } else {
    command = ItsCommand(finding, folder, kCircuitDeck, kCircuitResults, launcher);
  }
  WriteFile(work / kCircuitBatch, "cd " + launcher.BatchText(work) + end + command + end +
                                      "echo off" + end + "cls" + end);
  return launcher.StartBatch(work / kCircuitBatch, ioncap ? PathText(work / kCircuitDriver) : "",
                             folder);
}

std::optional<CircuitRun::Outcome> CircuitRun::Poll(Time now) {
  if (!run_) return std::nullopt;
  const Outcome failed{false, "the error log has the reason"};
  std::optional<Outcome> outcome =
      with_.diagnostics.Trap("CircuitRun.Poll", std::optional(failed), [&] { return Judge(now); });
  if (outcome) Cancel();
  return outcome;
}

/// What process and files say now. Where the system does not tell which process the engine is, only
/// its results show that it has finished.
std::optional<CircuitRun::Outcome> CircuitRun::Judge(Time now) const {
  const bool working = run_->process != 0 && with_.launcher.IsRunning(run_->process);
  const bool too_long = Overdue(now);
  std::error_code error;
  const bool there = std::filesystem::file_size(run_->results, error) > 0 && !error;
  if (there && !working) {
    std::string text = ReadFile(run_->results, IONCAPModule::Results::kLargestFile);
    if (run_->process != 0 || text.find(kEndOfRun) != std::string::npos) {
      std::string difference =
          EchoDifference(IONCAPModule::ReadHeading(text), run_->asked, run_->engine);
      if (!difference.empty()) return Outcome{false, std::move(difference)};
      return Outcome{true, std::move(text)};
    }
  }
  if (too_long) return Outcome{false, "the engine did not answer in time"};
  if (working || run_->process == 0) return std::nullopt;
  const std::string reason =
      EngineFailureText(run_->engine, run_->finding, with_.launcher.Output(run_->process));
  return Outcome{false, "the engine ended without results" + (reason.empty() ? "" : "." + reason)};
}

void CircuitRun::Cancel() {
  if (!run_) return;
  with_.diagnostics.Trap("CircuitRun.Cancel", [&] {
    if (run_->process != 0) with_.launcher.End(run_->process);
    for (const char* name : {kCircuitDeck, kCircuitResults, kCircuitBatch, kCircuitDriver}) {
      std::error_code ignored;
      std::filesystem::remove(run_->results.parent_path() / name, ignored);
    }
  });
  run_.reset();
}

}  // namespace skyhop
