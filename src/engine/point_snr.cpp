#include "engine/point_snr.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/dates.h"
#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"
#include "engine/results_parser.h"

namespace skyhop::IONCAPModule {
namespace {

/// The first band's columns hold the one frequency of the deck.
constexpr std::size_t kBandOfPoint = 1;

constexpr auto kShortPath = static_cast<std::size_t>(path_option::kShort);
constexpr auto kLongPath = static_cast<std::size_t>(path_option::kLong);

constexpr EngineFileNames kShortPathNames = {"sspscript.txt", "spsnr.txt", "spsnr.bat", ""};
constexpr EngineFileNames kLongPathNames = {"slpscript.txt", "lpsnr.txt", "lpsnr.bat", ""};

constexpr const char* kNotStarted = "the engine was not started; the error log has the reason";

constexpr double kLowestFrequency = 1.6;
constexpr double kHighestFrequency = 60;

/// The hour as decks count them.
int HourOfDeck(int hour) {
  return hour == 0 ? 24 : hour;
}

int UtcHour(UtcTime now) {
  const auto since_midnight = now - std::chrono::floor<std::chrono::days>(now);
  return static_cast<int>(std::chrono::floor<std::chrono::hours>(since_midnight).count());
}

void CheckRange(bool in_range, const std::string& what) {
  if (!in_range) throw Error(errors::kInvalidCall, what);
}

/// The faults that a prediction of the chart is refused for, too.
void CheckConditions(const ParameterSet& circuit) {
  const bool has_flux = !Trim(circuit.flux).empty();
  CheckRange(has_flux || !Trim(circuit.sunspot_number).empty(),
             "there is neither a solar flux nor a sunspot number");
  CheckRange(!has_flux || SolarFluxInRange(circuit.flux), "the solar flux is not from 64 to 400");
  CheckRange(BeginsWithNumber(circuit.availability) && AvailabilityInRange(circuit.availability),
             "the required availability is not from 0 to below 100 %");
}

void CheckPosition(const Position& position, const char* whose) {
  CheckRange(!LatLonModule::IsUndefined(position),
             std::string(whose) + " coordinates are missing or not valid");
}

}  // namespace

bool PointReception::Finished() const {
  return std::none_of(paths.begin(), paths.end(), [](const PathReception& path) {
    return path.state == PathReception::State::kWaiting;
  });
}

PointSnr::PointSnr(const Collaborators& collaborators)
    : with_(collaborators),
      runs_{{{EngineJob(with_.launcher, with_.pause, with_.diagnostics), std::nullopt},
             {EngineJob(with_.launcher, with_.pause, with_.diagnostics), std::nullopt}}} {}

PointSnr::~PointSnr() {
  Cancel();
}

std::string PointSnr::PredictSNR(const PointRequest& request, Time now) {
  std::string problem = "the point prediction could not be started; the error log has the reason";
  with_.diagnostics.Trap("IONCAPModule.PredictSNR", [&] {
    with_.diagnostics.DebugLog(
        "IONCAPModule.PredictSNR, theFreq = " + NumberText(request.frequency) +
        ", theMode = " + request.mode + ", theSNR = " + request.circuit.snr);
    Cancel();
    try {
      Start(request, now);
      running_ = true;
      problem.clear();
    } catch (const Error& error) {
      if (error.Number() != errors::kInvalidCall) throw;
      // Of values that a user or a peer has given there is nothing to log.
      problem = error.what();
      with_.diagnostics.DebugLog("   " + problem);
    }
  });
  return problem;
}

PredictionInputs PointSnr::Inputs(const PointRequest& request) const {
  ParameterSet circuit = request.circuit;
  CheckRange(request.frequency >= kLowestFrequency && request.frequency <= kHighestFrequency,
             "the frequency is not from 1.6 to 60 MHz");
  CheckRange(BeginsWithNumber(circuit.snr) && SNRInRange(circuit.snr),
             "the required SNR is not from -30 to 99 dB");
  CheckRange(BeginsWithNumber(circuit.takeoff) && TakeoffInRange(circuit.takeoff),
             "the take-off angle is not from 0 to 90 degrees");
  CheckConditions(circuit);
  CheckPosition(circuit.Local(), "Your Station's");
  CheckPosition(circuit.DX(), "the DX station's");
  circuit.date = DateText(UtcDate(with_.clock.UtcNow()));
  circuit.engine = EngineChoice::kVoaCapSnr;
  PredictionInputs inputs = InputsOf(circuit);
  CheckRange(inputs.power > 0, "the transmitter has no power");
  return inputs;
}

void PointSnr::Start(const PointRequest& request, Time now) {
  reception_ = {};
  reception_.request = request;
  reception_.hour = UtcHour(with_.clock.UtcNow());
  const PredictionInputs inputs = Inputs(request);
  const EngineFinding finding =
      FindEngine(with_.host, with_.program_folder, EngineChoice::kVoaCapSnr, EngineUse::kPoint);
  if (!finding.reason.empty()) with_.diagnostics.DebugLog("   " + FindingText(finding));
  for (const std::size_t path : {kShortPath, kLongPath}) {
    runs_.at(path).request = Prepare(path, inputs, finding);
  }
  StartPath(kShortPath, now);
  // Only the native engine takes a run folder. Two runs in one folder would share its temporary
  // files, so the long path waits for the end of the short path's run.
  if (finding.kind == EngineKind::kNative) StartPath(kLongPath, now);
  if (reception_.paths.at(kShortPath).state == PathReception::State::kFailed) {
    for (PathRun& run : runs_) run.job.End();
    throw Error(errors::kInvalidCall, reception_.paths.at(kShortPath).problem);
  }
}

/// Deletes the old results of a path and writes its deck.
EngineJob::Request PointSnr::Prepare(std::size_t path, PredictionInputs inputs,
                                     const EngineFinding& finding) {
  const bool short_path = path == kShortPath;
  const std::filesystem::path folder =
      with_.program_folder / EngineFolder(EngineChoice::kVoaCapSnr, EngineUse::kPoint);
  // Give each path its own run folder where the engine takes one, so that temporary files cannot
  // collide.
  const bool own_folder = finding.kind == EngineKind::kNative;
  inputs.short_path = short_path;
  EngineJob::Request request;
  request.finding = finding;
  request.files = FilesIn(own_folder ? folder / (short_path ? "short" : "long") : folder,
                          EngineChoice::kVoaCapSnr, short_path ? kShortPathNames : kLongPathNames,
                          with_.launcher);
  request.asked = inputs;
  request.snr = true;
  request.timeout = EngineJob::kTimeout;
  runs_.at(path).job.Prepare(request.files);
  if (!with_.decks.WritePoint(inputs, {HourOfDeck(reception_.hour), reception_.request.frequency},
                              request.files.deck)) {
    throw Error(errors::kInvalidCall, kNotStarted);
  }
  return request;
}

void PointSnr::StartPath(std::size_t path, Time now) {
  PathRun& run = runs_.at(path);
  const EngineJob::Request request = *std::exchange(run.request, std::nullopt);
  if (!run.job.Start(request, now)) {
    Fail(path, kNotStarted);
    return;
  }
  with_.diagnostics.DebugLog((path == kShortPath ? "   SP PID = " : "   LP PID = ") +
                             std::to_string(run.job.Process()));
}

void PointSnr::Fail(std::size_t path, const std::string& problem) {
  PathReception& reception = reception_.paths.at(path);
  reception.state = PathReception::State::kFailed;
  reception.problem = problem;
}

void PointSnr::Cancel() {
  with_.diagnostics.Trap("IONCAPModule.CancelSNR", [&] {
    running_ = false;
    for (PathRun& run : runs_) run.job.End();
  });
}

bool PointSnr::Poll(Time now) {
  return with_.diagnostics.Trap("IONCAPModule.HandleSNRTimer", false, [&] {
    if (!running_) return false;
    bool changed = false;
    for (std::size_t path = 0; path < runs_.size(); ++path) {
      if (reception_.paths.at(path).state != PathReception::State::kWaiting) continue;
      if (runs_.at(path).request) {
        if (reception_.paths.at(kShortPath).state == PathReception::State::kWaiting) continue;
        StartPath(path, now);
        changed = true;
      }
      changed = PollPath(path, now) || changed;
    }
    running_ = !reception_.Finished();
    return changed;
  });
}

bool PointSnr::PollPath(std::size_t path, Time now) {
  PathReception& reception = reception_.paths.at(path);
  EngineJob& job = runs_.at(path).job;
  if (reception.state != PathReception::State::kWaiting) return false;
  const EngineJob::Outcome outcome = job.Poll(now);
  if (outcome.state == EngineJob::State::kRunning) return false;
  job.End();
  if (outcome.state == EngineJob::State::kComplete) {
    ReadResults(outcome.text, reception);
  } else {
    Fail(path, outcome.text);
  }
  if (reception.state == PathReception::State::kFailed) {
    with_.diagnostics.ErrorLog("IONCAPModule.HandleSNRTimer: " +
                               PathText(job.Asked().files.results) + ": " + reception.problem);
  }
  return true;
}

void PointSnr::ReadResults(const std::string& text, PathReception& reception) {
  const auto hour = static_cast<std::size_t>(HourOfDeck(reception_.hour));
  ResultsTable table;
  reception.state = PathReception::State::kFailed;
  Method30Outcome outcome;
  try {
    outcome = ParseMethod30Results(text, "point prediction", table);
  } catch (const Error& error) {
    reception.problem = error.what();
    return;
  }
  const auto known = [&](BandQuantity quantity) {
    return table.Known(quantity, kBandOfPoint, hour);
  };
  if (!outcome.header_found) {
    reception.problem = "results missing expected header";
  } else if (!known(BandQuantity::kSnr) || !known(BandQuantity::kReliability) ||
             !known(BandQuantity::kMode) || !known(BandQuantity::kSignalPower)) {
    reception.problem = outcome.faults.empty()
                            ? "the results lack hour " + std::to_string(reception_.hour)
                            : outcome.faults.front();
  } else {
    reception.state = PathReception::State::kDone;
    reception.snr = table.snr[kBandOfPoint][hour];
    reception.reliability = table.reliability[kBandOfPoint][hour];
    reception.mode = Trim(table.mode[kBandOfPoint][hour]);
    reception.signal_power = table.signal_power[kBandOfPoint][hour];
    reception_.engine = ReadHeading(text).engine;
  }
}

int DecibelMilliwatts(std::int16_t decibel_watts) {
  return decibel_watts + 30;
}

std::string SUnits(int decibel_milliwatts, double frequency) {
  static constexpr int kDecibelsPerUnit = 6;
  static constexpr double kVeryHighFrequency = 30;
  const int s9 = frequency < kVeryHighFrequency ? -73 : -93;
  const int above = decibel_milliwatts - s9;
  if (above > 0) return "S9+" + std::to_string(above);
  const int unit = 9 - static_cast<int>(std::ceil(-above / static_cast<double>(kDecibelsPerUnit)));
  return "S" + std::to_string(std::max(unit, 0));
}

}  // namespace skyhop::IONCAPModule
