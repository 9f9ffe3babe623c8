#include "engine/engine_probe.h"

#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"
#include "engine/results_parser.h"

namespace skyhop {
namespace {

using std::chrono::milliseconds;
using Outcome = EngineProbe::Outcome;

constexpr EngineFileNames kNames = {"test.txt", "testresults.txt", "test.bat", "testdrive.txt"};

constexpr int kHours = static_cast<int>(kHourCount) - 1;

/// Every maximum useable frequency is between these frequencies, MHz.
constexpr float kLowestMuf = 1;
constexpr float kHighestMuf = 100;

/// The faults of the results as text, empty if there are none. Throws the errors of the parsers.
std::string Doubts(EngineChoice engine, const std::string& text) {
  const std::string file_name = kNames.results;
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

/// The engine's name and version in its results, for the start of a sentence.
std::string EngineText(const IONCAPModule::ResultsHeading& heading) {
  if (heading.engine.empty()) return "An engine that does not name itself";
  if (heading.version.empty()) return heading.engine;
  return heading.engine + ", version " + heading.version + ",";
}

Outcome JudgeResults(EngineChoice engine, const std::string& text, milliseconds taken) {
  try {
    const std::string doubts = Doubts(engine, text);
    if (!doubts.empty()) return {false, doubts};
  } catch (const Error& error) {
    return {false, std::string("The results cannot be read: ") + error.what()};
  }
  const IONCAPModule::ResultsHeading heading = IONCAPModule::ReadHeading(text);
  return {true,
          EngineText(heading) + " answered in " + std::to_string(taken.count()) +
              " ms. Its results hold plausible values for all 24 hours.",
          !IONCAPModule::NamesEstimate(heading.engine)};
}

/// The clause with a capital at its start.
std::string Sentence(std::string clause) {
  if (!clause.empty()) clause[0] = UpperCase(clause.substr(0, 1))[0];
  return clause;
}

}  // namespace

PredictionInputs ProbeQuestion(EngineChoice engine) {
  PredictionInputs question;
  question.engine = engine;
  question.transmitter = {{40, 30, 0, -1}, {74, 15, 0, -1}};
  question.receiver = {{51, 30, 0, -1}, {0, 7, 0, -1}};
  question.power = 1500;
  question.takeoff = 3;
  question.availability = 10;
  question.snr = 24;
  question.noise = 2;
  question.date = std::chrono::year(2026) / std::chrono::November / 15;
  question.sunspot_number = 105;
  question.k_index = 4;
  return question;
}

EngineProbe::EngineProbe(const Collaborators& with)
    : diagnostics_(&with.diagnostics),
      run_({with.locker, with.launcher, with.host, with.pause, with.diagnostics,
            with.program_folder, kNames}) {}

std::optional<Outcome> EngineProbe::Start(EngineChoice engine, Time now) {
  const Outcome failed{false, "The test failed; the error log has the reason."};
  return diagnostics_->Trap(
      "EngineProbe.Start", std::optional(failed), [&]() -> std::optional<Outcome> {
        diagnostics_->DebugLog("EngineProbe.Start, theEngine = " +
                               std::to_string(static_cast<int>(engine)));
        if (Running()) return Outcome{false, "Another test is still running."};
        engine_ = engine;
        switch (run_.Start(ProbeQuestion(engine), now)) {
          case CircuitRun::Started::kRuns:
            return std::nullopt;
          case CircuitRun::Started::kBusy:
            return Outcome{false, "A prediction is running. Test the engine when it has finished."};
          case CircuitRun::Started::kFailed:
            break;
        }
        return Outcome{false, Sentence(run_.Problem())};
      });
}

std::optional<Outcome> EngineProbe::Poll(Time now) {
  const std::optional<CircuitRun::Outcome> ended = run_.Poll(now);
  if (!ended) return std::nullopt;
  Outcome outcome;
  if (ended->good) {
    outcome = JudgeResults(engine_, ended->text, ended->taken);
  } else if (ended->failure == EngineJob::Failure::kOtherQuestion) {
    outcome.text = "It answers another question. " + ended->text + ".";
  } else {
    outcome.text = Sentence(ended->text);
  }
  diagnostics_->DebugLog("EngineProbe.Poll: " + outcome.text);
  run_.End(!outcome.good);
  return outcome;
}

}  // namespace skyhop
