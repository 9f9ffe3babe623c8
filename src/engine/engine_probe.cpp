#include "engine/engine_probe.h"

#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"
#include "engine/echo_check.h"
#include "engine/engine_output.h"
#include "engine/probe_deck.h"
#include "engine/results.h"
#include "engine/results_parser.h"
#include "engine/script_cards.h"

namespace skyhop {
namespace {

using std::chrono::milliseconds;
using Outcome = EngineProbe::Outcome;

constexpr const char* kDeckName = "test.txt";
constexpr const char* kResultsName = "testresults.txt";
constexpr const char* kBatchName = "test.bat";
constexpr const char* kDriverName = "testdrive.txt";

constexpr int kHours = static_cast<int>(kHourCount) - 1;

bool IsIonCap(EngineChoice engine) {
  return engine == EngineChoice::kIonCap;
}

/// Frequencies between which every maximum useable frequency lies, MHz.
constexpr float kLowestMuf = 1;
constexpr float kHighestMuf = 100;

/// What speaks against the results, empty when nothing does. Throws what the parsers throw.
std::string Doubts(EngineChoice engine, const std::string& text, const std::string& file_name) {
  ResultsTable table;
  if (engine == EngineChoice::kVoaCapSnr) {
    const auto outcome = IONCAPModule::ParseMethod30Results(text, file_name, table);
    if (!outcome.header_found) return "The results have no table of signal-to-noise ratios.";
    if (outcome.complete_hours < kHours) {
      return "The results hold only " + std::to_string(outcome.complete_hours) + " of 24 hours.";
    }
  } else {
    IONCAPModule::ParseLufMufResults(text, file_name, true, table);
  }
  for (std::size_t hour = 1; hour < kHourCount; ++hour) {
    const float muf = table.Muf50(hour);
    if (muf < kLowestMuf || muf > kHighestMuf) {
      return "The results are not plausible: a MUF of " + NumberText(muf) + " MHz in hour " +
             std::to_string(hour) + ".";
    }
  }
  return {};
}

/// The engine as its results name it, for the start of a sentence.
std::string EngineText(const IONCAPModule::ResultsHeading& heading) {
  if (heading.engine.empty()) return "An engine that does not name itself";
  if (heading.version.empty()) return heading.engine;
  return heading.engine + ", version " + heading.version + ",";
}

Outcome JudgeResults(EngineChoice engine, const std::string& text, const std::string& file_name,
                     milliseconds taken) {
  try {
    const std::string doubts = Doubts(engine, text, file_name);
    if (!doubts.empty()) return {false, doubts};
  } catch (const Error& error) {
    return {false, std::string("The results cannot be read: ") + error.what()};
  }
  const IONCAPModule::ResultsHeading heading = IONCAPModule::ReadHeading(text);
  const std::string difference = IONCAPModule::EchoDifference(heading, ProbeQuestion(), engine);
  if (!difference.empty()) return {false, "It answers another question. " + difference + "."};
  return {true,
          EngineText(heading) + " answered in " + std::to_string(taken.count()) +
              " ms. Its results hold plausible values for all 24 hours.",
          !IONCAPModule::NamesEstimate(heading.engine)};
}

}  // namespace

EngineProbe::EngineProbe(Collaborators collaborators) : with_(std::move(collaborators)) {}

EngineProbe::~EngineProbe() {
  Cancel();
}

std::optional<Outcome> EngineProbe::Start(EngineChoice engine, Time now) {
  const Outcome failed{false, "The test failed; the error log has the reason."};
  return with_.diagnostics.Trap(
      "EngineProbe.Start", std::optional(failed), [&]() -> std::optional<Outcome> {
        with_.diagnostics.DebugLog("EngineProbe.Start, theEngine = " +
                                   std::to_string(static_cast<int>(engine)));
        if (run_) return Outcome{false, "Another test is still running."};
        const EngineFinding finding = FindEngine(with_.host, with_.program_folder, engine);
        const std::string path = PathText(finding.executable);
        if (!finding.exists) return Outcome{false, "The engine is missing: there is no " + path};
        if (!finding.can_run) {
          return Outcome{false, "The engine cannot be executed: " + path + " is not a program, " +
                                    "or you have no permission to run it."};
        }
        return Launch(engine, finding, now);
      });
}

std::optional<Outcome> EngineProbe::Launch(EngineChoice engine, const EngineFinding& finding,
                                           Time now) {
  Run run = Prepare(engine, finding);
  try {
    run.lock = with_.locker.Lock();
    if (!run.lock) {
      return Outcome{false, "A prediction is running. Test the engine when it has finished."};
    }
    WriteFiles(run);
  } catch (const Error& error) {
    return Outcome{false, std::string("The test cannot be prepared: ") + error.what()};
  }
  const std::string parameter = IsIonCap(engine) ? PathText(run.short_folder / kDriverName) : "";
  const LaunchResult started =
      with_.launcher.StartBatch(run.File(kBatchName), parameter, run.short_folder);
  if (!started.Succeeded()) {
    return Outcome{false, "The engine could not be started: " + LaunchErrorText(started.code)};
  }
  run.process = started.process;
  run.started = now;
  run_ = std::move(run);
  return std::nullopt;
}

EngineProbe::Run EngineProbe::Prepare(EngineChoice engine, const EngineFinding& finding) const {
  Run run;
  run.engine = engine;
  run.finding = finding;
  const std::filesystem::path folder = with_.program_folder / EngineFolder(engine);
  run.short_folder = with_.launcher.ShortPath(folder);
  run.work_folder = IsIonCap(engine) ? folder : folder / "run";
  run.results = run.File(kResultsName);
  return run;
}

void EngineProbe::WriteFiles(const Run& run) const {
  CreateFolder(run.work_folder);
  if (!IONCAPModule::DeleteWithRetries(run.results, with_.pause)) {
    throw Error(errors::kPathFileAccess, "could not delete " + PathText(run.results));
  }
  EngineLauncher& launcher = with_.launcher;
  const std::string end = launcher.LineEnd();
  std::string change_folder = launcher.BatchText(run.short_folder);
  std::string command;
  if (IsIonCap(run.engine)) {
    command = IonCapCommand(run.finding, run.short_folder / kDriverName, launcher);
    WriteFile(run.File(kDriverName),
              DriverLine(run.finding, run.short_folder / kDeckName, launcher) + end +
                  DriverLine(run.finding, run.short_folder / kResultsName, launcher) + end);
  } else {
    change_folder = launcher.BatchText(run.short_folder / "run");
    command = ItsCommand(run.finding, run.short_folder, kDeckName, kResultsName, launcher);
  }
  WriteFile(run.File(kDeckName), ProbeDeck(run.engine));
  WriteFile(run.File(kBatchName),
            "cd " + change_folder + end + command + end + "echo off" + end + "cls" + end);
}

std::optional<Outcome> EngineProbe::Poll(Time now) {
  if (!run_) return std::nullopt;
  const Outcome failed{false, "The test failed; the error log has the reason."};
  std::optional<Outcome> outcome =
      with_.diagnostics.Trap("EngineProbe.Poll", std::optional(failed), [&] { return Judge(now); });
  if (outcome) {
    with_.diagnostics.DebugLog("EngineProbe.Poll: " + outcome->text);
    Finish(outcome->good);
  }
  return outcome;
}

/// What process and files say now. Where the system does not tell which process the engine is, only
/// its results show that it has finished.
std::optional<Outcome> EngineProbe::Judge(Time now) {
  const bool known = run_->process != 0;
  const auto taken = std::chrono::duration_cast<milliseconds>(now - run_->started);
  const bool too_long = taken >= kLongest;
  const std::string no_answer = "No answer within " + std::to_string(kLongest.count()) + " s";
  if (known && with_.launcher.IsRunning(run_->process)) {
    if (!too_long) return std::nullopt;
    return Outcome{false, no_answer + "; the engine was ended."};
  }
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(run_->results, error);
  if (!error && size > 0) {
    const std::string text = ReadFile(run_->results, IONCAPModule::Results::kLargestFile);
    Outcome outcome = JudgeResults(run_->engine, text, PathText(run_->results), taken);
    // Bad results of an engine that may still be writing are not its last word.
    if (outcome.good || known || too_long) return outcome;
    return std::nullopt;
  }
  if (known) {
    return Outcome{false, "The engine ended without results." +
                              EngineFailureText(run_->engine, run_->finding,
                                                with_.launcher.Output(run_->process))};
  }
  if (too_long) return Outcome{false, no_answer + "."};
  return std::nullopt;
}

void EngineProbe::Finish(bool good) {
  if (run_->process != 0) with_.launcher.End(run_->process);
  if (good) {
    for (const char* name : {kDeckName, kResultsName, kBatchName, kDriverName}) {
      std::error_code ignored;
      std::filesystem::remove(run_->File(name), ignored);
    }
  }
  run_.reset();
}

void EngineProbe::Cancel() {
  if (!run_) return;
  with_.diagnostics.Trap("EngineProbe.Cancel", [&] { Finish(false); });
}

}  // namespace skyhop
