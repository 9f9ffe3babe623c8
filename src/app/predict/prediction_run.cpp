#include "app/predict/prediction_run.h"

#include <chrono>
#include <cmath>
#include <ostream>
#include <random>

#include "app/predict/engine_list.h"
#include "app/predict/exit_status.h"
#include "app/predict/inputs.h"
#include "app/predict/prediction_program.h"
#include "common/dates.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"
#include "engine/engine_output.h"
#include "report/chart_title.h"
#include "report/prediction_report.h"
#include "report/provenance.h"
#include "ui/prediction/chart/chart_picture.h"
#include "ui/prediction/chart/solar_bars.h"

namespace skyhop {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// How long to watch the process before the results file is looked at again. The end of the process
/// itself is noticed at once.
constexpr milliseconds kFileCheck{50};

/// A folder of this run alone, gone with the object.
class ScratchFolder {
 public:
  ScratchFolder() {
    const std::filesystem::path parent = std::filesystem::temp_directory_path();
    std::random_device random;
    do {
      path_ = parent / ("skyhop-" + std::to_string(random()));
      // Fails if a folder of this name exists.
    } while (!std::filesystem::create_directory(path_));
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

class Runner {
 public:
  Runner(const PredictOptions& options, std::ostream& out, std::ostream& err)
      : options_(options), out_(out), err_(err), program_(options, err) {}

  int Run() {
    if (options_.list_engines) {
      out_ << EngineList(*program_.host, program_.folder, options_.format == OutputFormat::kJson);
      return Finish();
    }
    const std::string problem = HandInputs(options_, program_);
    if (!problem.empty()) {
      Say(problem);
      return exit_status::kInvalid;
    }
    program_.error_lines.clear();
    return options_.deck_only ? PrintDeck() : Predict();
  }

 private:
  void Say(const std::string& text) { err_ << "skyhop-predict: " << text << '\n'; }

  void SayErrors() {
    for (const std::string& line : program_.error_lines) Say(line);
    program_.error_lines.clear();
  }

  int PrintDeck() {
    if (!program_.engine.parameters.PredictionParametersValid()) return exit_status::kInvalid;
    const ScratchFolder folder;
    const std::filesystem::path script = folder.Path() / "deck.txt";
    const bool written = program_.diagnostics.Trap("PredictionRun.PrintDeck", false, [&] {
      return program_.engine.decks.Write(IONCAPModule::InputsOf(program_.engine.parameters.Set()),
                                         script);
    });
    if (!written) {
      SayErrors();
      return exit_status::kInvalid;
    }
    const std::string deck = ReadFile(script, IONCAPModule::Results::kLargestFile);
    out_ << ReplaceAll(deck, "\r\n", "\n");
    return Finish();
  }

  [[nodiscard]] EngineChoice Engine() const { return program_.form.engine; }

  int Predict() {
    const auto until = steady_clock::now() + milliseconds(std::llround(options_.timeout * 1000));
    const auto lock = platform::LockRuns(program_.folder, Left(until));
    if (!lock) {
      Say("another prediction is running in " + PathText(program_.folder));
      return exit_status::kTimeOut;
    }
    const std::vector<std::string> problems = platform::FillProgramFolder(program_.folder);
    for (const std::string& problem : problems) {
      program_.diagnostics.ErrorLog("cannot set up the program folder: " + problem);
    }
    if (!program_.engine.run.LoadEngineData(program_.folder)) {
      SayErrors();
      return exit_status::kEngineFailed;
    }
    if (!EngineAccepted()) return exit_status::kEngineFailed;
    const int messages = program_.messages.Count();
    program_.engine.run.SetTimeout(Left(until));
    if (!program_.engine.run.ForecastPaths()) {
      SayErrors();
      return program_.messages.Count() > messages ? exit_status::kInvalid
                                                  : exit_status::kEngineFailed;
    }
    const int status = WaitForResults(until);
    return status == exit_status::kSuccess ? Report() : status;
  }

  /// Reports when the estimate takes an engine's place and which antennas do not count. Returns
  /// false when the user does not want the estimate.
  bool EngineAccepted() {
    const EngineFinding finding = FindEngine(*program_.host, program_.folder, Engine());
    const bool estimate = IsEstimate(finding, *program_.host);
    if (estimate) {
      fallback_reason_ = FallbackReason(finding);
      Say("the built-in estimate engine " +
          std::string(options_.no_fallback ? "would be used. " : "is used. ") + fallback_reason_);
    }
    if (estimate && options_.no_fallback) return false;
    NoteAntennas(finding, estimate);
    return true;
  }

  std::string FallbackReason(const EngineFinding& finding) {
    if (program_.automatic_engine) {
      const EngineFinding voacap =
          FindEngine(*program_.host, program_.folder, EngineChoice::kVoaCap);
      const std::string missing = MissingParts(EngineChoice::kVoaCap, voacap);
      return missing.empty() ? voacap.reason : PathText(voacap.executable) + ": " + missing;
    }
    if (!finding.reason.empty()) return finding.reason;
    return PathText(finding.executable) + " is a copy of it.";
  }

  void NoteAntennas(const EngineFinding& finding, bool estimate) {
    for (const Station station : {Station::kLocal, Station::kDX}) {
      const std::string problem = AntennaNote(
          station == Station::kLocal ? program_.form.local_antenna : program_.form.dx_antenna,
          Engine(), finding, estimate);
      const char* whose =
          station == Station::kLocal ? "your antenna " : "the DX station's antenna ";
      if (!problem.empty()) Say(whose + problem);
    }
  }

  static milliseconds Left(steady_clock::time_point until) {
    const auto left = std::chrono::duration_cast<milliseconds>(until - steady_clock::now());
    return std::max(left, milliseconds(0));
  }

  int WaitForResults(steady_clock::time_point until) {
    const ProcessId process = program_.engine.run.Job().Process();
    EngineLauncher& launcher = *program_.launcher;
    launcher.EndWithThisProgram(process);
    EngineJob::Outcome outcome = program_.engine.run.Poll();
    while (outcome.state == EngineJob::State::kRunning) {
      launcher.WaitForEnd(process, std::min(kFileCheck, Left(until)));
      outcome = program_.engine.run.Poll();
    }
    if (outcome.failure != EngineJob::Failure::kTimeout &&
        outcome.failure != EngineJob::Failure::kNoResults) {
      program_.engine.run.HandleIonCapTimer();
    }
    program_.engine.run.Abort();
    launcher.EndWithThisProgram(0);
    if (program_.engine.run.LastRunDisplayed()) return exit_status::kSuccess;
    TellFailure(outcome);
    return outcome.failure == EngineJob::Failure::kTimeout ? exit_status::kTimeOut
                                                           : exit_status::kEngineFailed;
  }

  void TellFailure(const EngineJob::Outcome& outcome) {
    SayErrors();
    const EngineJob& job = program_.engine.run.Job();
    const std::string engine = "the engine " + PathText(job.Executable());
    const std::string reason = job.FailureText();
    if (outcome.failure == EngineJob::Failure::kTimeout) {
      Say(engine + " has not finished after " + NumberText(options_.timeout) + " s");
    } else if (outcome.failure == EngineJob::Failure::kNoResults) {
      Say("the engine " + program_.engine.run.DeadEngineText());
    } else if (!reason.empty()) {
      Say(engine + " gave no usable results." + reason);
    }
    for (const std::string& line : EngineOutputLines(program_.launcher->Output(job.Process()))) {
      program_.diagnostics.DebugLog("   engine: " + line);
    }
  }

  PredictionReport MakeReport() {
    const ParameterSet& set = program_.engine.parameters.Set();
    const IONCAPModule::ResultsHeading& heading = program_.engine.results.Heading();
    return {{program_.engine.table, program_.diagnostics, Engine()},
            heading,
            SummaryLine(set, program_.form.distance_miles, {}, program_.diagnostics),
            set.date,
            set.flux,
            NumberText(program_.engine.run.Job().Asked().asked.sunspot_number),
            IONCAPModule::DerivesSunspotNumber(set),
            IONCAPModule::NamesEstimate(heading.engine),
            fallback_reason_};
  }

  int Report() {
    SayErrors();
    const PredictionReport report = MakeReport();
    switch (options_.format) {
      case OutputFormat::kTable:
        out_ << TableReport(report);
        break;
      case OutputFormat::kCsv:
        out_ << CsvReport(report.day, report.heading);
        break;
      case OutputFormat::kJson:
        out_ << JsonReport(report);
        break;
    }
    if (options_.svg_file && !WritePicture(report)) return exit_status::kOutputFailed;
    return Finish();
  }

  std::string DrawChart(const PredictionReport& report) {
    const ParameterSet& set = program_.engine.parameters.Set();
    ChartModel chart(program_.diagnostics);
    chart.DisplayResult(program_.engine.table, report.day.engine);
    chart.title = ChartTitle(set, program_.form.distance_miles, {}, program_.diagnostics);
    AskedPrediction asked;
    asked.sunspot_number = StoreSingle(LeadingNumber(report.sunspot_number));
    asked.from_flux = report.sunspot_number_derived;
    asked.solar_flux = report.solar_flux;
    chart.provenance =
        Provenance(report.heading, report.day.engine, asked, program_.GetClock().UtcNow());
    if (const auto date = ParseDate(report.date)) {
      chart.sun = {ComputeSunRow(set.Local(), *date), ComputeSunRow(set.DX(), *date)};
    }
    // A picture of a whole day has no present time.
    return PictureAsSvg(chart, {.time_index = false});
  }

  bool WritePicture(const PredictionReport& report) {
    const std::string picture = DrawChart(report);
    const std::filesystem::path file = PathFromText(*options_.svg_file);
    try {
      // Something like a pipe can only be written in place.
      std::error_code ignored;
      const bool special = std::filesystem::exists(file, ignored) &&
                           !std::filesystem::is_regular_file(file, ignored);
      if (special) {
        WriteFile(file, picture);
      } else {
        WriteFileAtOnce(file, picture);
      }
    } catch (const Error& error) {
      Say(error.what());
      return false;
    }
    if (options_.format == OutputFormat::kTable) out_ << "Chart: " << *options_.svg_file << "\n";
    return true;
  }

  int Finish() {
    out_.flush();
    if (out_) return exit_status::kSuccess;
    Say("cannot write to standard output");
    return exit_status::kOutputFailed;
  }

  const PredictOptions& options_;
  std::ostream& out_;
  std::ostream& err_;
  PredictionProgram program_;
  std::string fallback_reason_;
};

}  // namespace

int RunPrediction(const PredictOptions& options, std::ostream& out, std::ostream& err) {
  try {
    return Runner(options, out, err).Run();
  } catch (const Error& error) {
    err << "skyhop-predict: " << error.what() << '\n';
    return exit_status::kOutputFailed;
  }
}

}  // namespace skyhop
