#include "engine/point_snr.h"

#include <algorithm>
#include <cmath>

#include "common/dates.h"
#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"
#include "engine/echo_check.h"
#include "engine/engine_output.h"
#include "engine/results.h"

namespace skyhop::IONCAPModule {
namespace {

/// The first band's columns hold the one frequency of the deck.
constexpr std::size_t kBandOfPoint = 1;

constexpr auto kShortPath = static_cast<std::size_t>(path_option::kShort);
constexpr auto kLongPath = static_cast<std::size_t>(path_option::kLong);

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

/// What a chart's prediction is refused for, too.
void CheckConditions(const PredictionPanel& panel) {
  const std::string flux = panel.Text(PanelText::kFlux);
  const bool has_flux = !Trim(flux).empty();
  CheckRange(has_flux || !Trim(panel.Text(PanelText::kSSN)).empty(),
             "there is neither a solar flux nor a sunspot number");
  CheckRange(!has_flux || Parameters::SolarFluxInRange(flux),
             "the solar flux is not from 64 to 400");
  const std::string availability = panel.Text(PanelText::kAvail);
  CheckRange(BeginsWithNumber(availability) && Parameters::AvailabilityInRange(availability),
             "the required availability is not from 0 to below 100 %");
}

}  // namespace

bool PointReception::Finished() const {
  return std::none_of(paths.begin(), paths.end(), [](const PathReception& path) {
    return path.state == PathReception::State::kWaiting;
  });
}

PointSnr::~PointSnr() {
  Cancel();
}

std::string PointSnr::PredictSNR(const PointRequest& request, Time now) {
  std::string problem = "the point prediction could not be started; the error log has the reason";
  with_.diagnostics.Trap("IONCAPModule.PredictSNR", [&] {
    with_.diagnostics.DebugLog(
        "IONCAPModule.PredictSNR, theFreq = " + NumberText(request.frequency) +
        ", theMode = " + request.mode + ", theSNR = " + request.snr);
    Cancel();
    try {
      Start(request);
      started_ = now;
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

DeckParameters PointSnr::Deck(const PointRequest& request) const {
  CheckRange(request.frequency >= kLowestFrequency && request.frequency <= kHighestFrequency,
             "the frequency is not from 1.6 to 60 MHz");
  CheckRange(BeginsWithNumber(request.snr) && Parameters::SNRInRange(request.snr),
             "the required SNR is not from -30 to 99 dB");
  const std::string takeoff =
      Trim(request.takeoff).empty() ? with_.panel.Text(PanelText::kLocalTakeOff) : request.takeoff;
  CheckRange(BeginsWithNumber(takeoff) && Parameters::TakeoffInRange(takeoff),
             "the take-off angle is not from 0 to 90 degrees");
  CheckConditions(with_.panel);
  DeckParameters deck = ReadPointParameters(with_.panel, with_.parameters,
                                            UtcDate(with_.clock.UtcNow()), with_.diagnostics);
  deck.snr = DeckNumber(request.snr);
  deck.takeoff = DeckNumber(takeoff);
  if (!Trim(request.power).empty()) deck.power = DeckNumber(request.power);
  CheckRange(deck.power > 0, "the transmitter has no power");
  return deck;
}

void PointSnr::Start(const PointRequest& request) {
  reception_ = {};
  reception_.request = request;
  reception_.hour = UtcHour(with_.clock.UtcNow());
  deck_ = Deck(request);
  CheckRange(!with_.run.Paths().snr_folder.empty(), "the engines' folders are not known");
  with_.run.FindSnrEngine();
  const EnginePaths& paths = with_.run.Paths();
  CreateFolder(paths.short_path_snr_results.parent_path());
  CreateFolder(paths.long_path_snr_results.parent_path());
  const PointOfDeck point{HourOfDeck(reception_.hour), request.frequency};
  const auto write = [&](bool short_path, const std::filesystem::path& results,
                         const std::filesystem::path& script) {
    if (!DeleteWithRetries(results, with_.pause)) {
      throw Error(errors::kPathFileAccess, "cannot delete " + PathText(results));
    }
    deck_.short_path = short_path;
    return with_.script.CreatePointScript(deck_, point, script);
  };
  const bool started =
      write(true, paths.short_path_snr_results, paths.short_path_snr_script) &&
      write(false, paths.long_path_snr_results, paths.long_path_snr_script) &&
      with_.run.RunScript(true, paths.snr_executable, paths.short_path_snr_batch, {},
                          paths.short_path_snr_script, paths.short_path_snr_results);
  if (!started) {
    for (std::size_t path = 0; path < reception_.paths.size(); ++path) EndEngine(path);
    throw Error(errors::kInvalidCall, "the engine was not started; the error log has the reason");
  }
}

PointSnr::Path PointSnr::PathOf(std::size_t path) const {
  const EnginePaths& paths = with_.run.Paths();
  if (path == kShortPath) {
    return {paths.short_path_snr_results, with_.run.ShortPathSnrProcess()};
  }
  return {paths.long_path_snr_results, with_.run.LongPathSnrProcess()};
}

void PointSnr::EndEngine(std::size_t path) {
  const ProcessId process = PathOf(path).process;
  if (process != 0) with_.launcher.End(process);
}

void PointSnr::Cancel() {
  with_.diagnostics.Trap("IONCAPModule.CancelSNR", [&] {
    if (!running_) return;
    running_ = false;
    for (std::size_t path = 0; path < reception_.paths.size(); ++path) EndEngine(path);
  });
}

bool PointSnr::Poll(Time now) {
  return with_.diagnostics.Trap("IONCAPModule.HandleSNRTimer", false, [&] {
    if (!running_) return false;
    bool changed = false;
    for (std::size_t path = 0; path < reception_.paths.size(); ++path) {
      if (reception_.paths.at(path).state != PathReception::State::kWaiting) continue;
      if (path == kLongPath && with_.run.LongPathSnrWaits()) {
        if (reception_.paths.at(kShortPath).state == PathReception::State::kWaiting) continue;
        if (!StartLongPath(now)) {
          changed = true;
          continue;
        }
      }
      changed = PollPath(path, now) || changed;
    }
    running_ = !reception_.Finished();
    return changed;
  });
}

bool PointSnr::StartLongPath(Time now) {
  started_ = now;
  if (with_.run.StartLongPathSnr()) return true;
  PathReception& reception = reception_.paths.at(kLongPath);
  reception.state = PathReception::State::kFailed;
  reception.problem = "the engine was not started; the error log has the reason";
  return false;
}

bool PointSnr::PollPath(std::size_t path, Time now) {
  const auto [results, process] = PathOf(path);
  PathReception& reception = reception_.paths.at(path);
  const bool too_long = now - started_ >= kLongest;
  const bool ended = process != 0 && !with_.run.IsPidRunning(process);
  if (!ended && !too_long && !ResultsComplete(results)) return false;
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(results, error);
  if (!error && size > 0) {
    try {
      ReadResults(path, reception);
    } catch (const Error& unreadable) {
      reception.problem = unreadable.what();
    }
  } else if (ended) {
    const std::string reason = EngineFailureText(EngineChoice::kVoaCapSnr, with_.run.SnrFinding(),
                                                 with_.launcher.Output(process));
    reception.problem = "the engine ended without results" + (reason.empty() ? "" : "." + reason);
  } else {
    reception.problem = "no answer within " + std::to_string(kLongest.count()) + " s";
  }
  // What still runs serves nobody any more.
  EndEngine(path);
  const bool failed = !reception.problem.empty();
  reception.state = failed ? PathReception::State::kFailed : PathReception::State::kDone;
  if (failed) {
    with_.diagnostics.ErrorLog("IONCAPModule.HandleSNRTimer: " + PathText(results) + ": " +
                               reception.problem);
  }
  return true;
}

void PointSnr::ReadResults(std::size_t path, PathReception& reception) {
  const std::filesystem::path& file = PathOf(path).results;
  const auto hour = static_cast<std::size_t>(HourOfDeck(reception_.hour));
  const std::string text = ReadFile(file, Results::kLargestFile);
  const ResultsHeading heading = ReadHeading(text);
  deck_.short_path = path == kShortPath;
  reception.problem = EchoDifference(heading, deck_, EngineChoice::kVoaCapSnr);
  if (!reception.problem.empty()) return;
  ResultsTable table;
  const Method30Outcome outcome = ParseMethod30Results(text, PathText(file), table);
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
    reception.snr = table.snr[kBandOfPoint][hour];
    reception.reliability = table.reliability[kBandOfPoint][hour];
    reception.mode = Trim(table.mode[kBandOfPoint][hour]);
    reception.signal_power = table.signal_power[kBandOfPoint][hour];
    reception_.engine = heading.engine;
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
