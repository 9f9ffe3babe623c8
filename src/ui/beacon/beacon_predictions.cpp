#include "ui/beacon/beacon_predictions.h"

#include <algorithm>

#include "bands/bands.h"
#include "common/dates.h"
#include "common/errors.h"
#include "engine/results_parser.h"

namespace skyhop {
namespace {

using BeaconModule::Beacon;

constexpr EngineFileNames kFileNames = {"beacon.txt", "beaconresults.txt", "beacon.bat",
                                        "beacondrive.txt"};

/// Predictions change with the sun's height at both ends; older ones than this are none.
constexpr std::chrono::hours kLongestUse{2};

bool SameBeacons(const std::vector<Beacon>& a, const std::vector<Beacon>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Beacon& x, const Beacon& y) {
    return x.call == y.call && x.position == y.position;
  });
}

}  // namespace

ParameterSet BeaconParameters(const PredictionForm& form) {
  PredictionForm from_beacon = form;
  from_beacon.direction = direction_option::kFromTheDXStation;
  from_beacon.path = path_option::kShort;
  from_beacon.dx_latitude.clear();
  from_beacon.dx_longitude.clear();
  from_beacon.dx_antenna = {};
  from_beacon.date.clear();
  ParameterSet set = IONCAPModule::ParametersOf(from_beacon);
  set.power = BeaconPredictions::kPower;
  return set;
}

BeaconPredictions::BeaconPredictions(const Collaborators& collaborators)
    : with_(collaborators),
      run_({with_.locker, with_.launcher, with_.host, with_.pause, with_.diagnostics,
            with_.program_folder, kFileNames}) {}

void BeaconPredictions::Want(const ParameterSet& inputs, const std::vector<Beacon>& beacons,
                             const std::vector<double>& frequencies, UtcTime now) {
  const UtcTime hour = std::chrono::floor<std::chrono::hours>(now);
  const bool same = wanted_ && wanted_->inputs == inputs && wanted_->frequencies == frequencies &&
                    SameBeacons(wanted_->beacons, beacons);
  if (same && wanted_->hour == hour) return;
  KeepDay(now);
  // The last hour's predictions are better than none until there are new ones.
  if (!same) predictions_.clear();
  std::erase_if(predictions_,
                [&](const auto& entry) { return hour - entry.second.hour >= kLongestUse; });
  run_.End();
  busy_.reset();
  problem_.clear();
  with_.diagnostics.DebugLog("BeaconPredictions.Want: " + std::to_string(beacons.size()) +
                             " beacons, engine " + std::to_string(static_cast<int>(inputs.engine)));
  wanted_ = {inputs, beacons, frequencies, hour};
  queue_.assign(beacons.rbegin(), beacons.rend());
}

/// When a day is over, what was predicted on it goes with it into the past.
void BeaconPredictions::KeepDay(UtcTime now) {
  using std::chrono::days;
  if (!wanted_) return;
  const auto day = std::chrono::floor<days>(wanted_->hour);
  if (day == std::chrono::floor<days>(now) || predictions_.empty()) return;
  before_ = predictions_;
  day_before_ = day;
}

void BeaconPredictions::Forget() {
  run_.End();
  queue_.clear();
  predictions_.clear();
  before_.clear();
  wanted_.reset();
}

bool BeaconPredictions::Poll(Time now) {
  return with_.diagnostics.Trap("BeaconPredictions.Poll", false, [&] {
    if (queue_.empty()) return false;
    if (!run_.Running()) {
      Begin(now);
      return false;
    }
    const std::optional<CircuitRun::Outcome> outcome = run_.Poll(now);
    if (!outcome) return false;
    run_.End();
    Finish(*outcome);
    queue_.pop_back();
    return true;
  });
}

void BeaconPredictions::Finish(const CircuitRun::Outcome& outcome) {
  const std::string& call = queue_.back().call;
  if (!outcome.good) {
    problem_ = "No prediction for " + call + ": " + outcome.text;
    with_.diagnostics.ErrorLog("BeaconPredictions.Poll: " + problem_);
    return;
  }
  const bool taken = with_.diagnostics.Trap("BeaconPredictions.Take", [&] { Take(outcome.text); });
  if (!taken) problem_ = "The results for " + call + " cannot be read";
}

/// Starts the next run. What cannot be started for one beacon cannot be for the others.
void BeaconPredictions::Begin(Time now) {
  if (busy_ && now - *busy_ < kBusyPause) return;
  busy_.reset();
  if (wanted_->inputs.engine == EngineChoice::kNone) return GiveUp("no engine is selected");
  const ParameterSet set = SetFor(queue_.back());
  if (LatLonModule::IsUndefined(set.receiver)) {
    return GiveUp("your station's location is missing");
  }
  const std::vector<std::string> faults = IONCAPModule::FaultsOf(set);
  if (!faults.empty()) return GiveUp(faults.back());
  switch (run_.Start(IONCAPModule::InputsOf(set), now)) {
    case CircuitRun::Started::kRuns:
      return;
    case CircuitRun::Started::kBusy:
      busy_ = now;
      return;
    case CircuitRun::Started::kFailed:
      return GiveUp(run_.Problem());
  }
}

void BeaconPredictions::GiveUp(const std::string& problem) {
  problem_ = "No predictions: " + problem;
  queue_.clear();
}

ParameterSet BeaconPredictions::SetFor(const Beacon& beacon) const {
  ParameterSet set = wanted_->inputs;
  set.transmitter = beacon.position;
  set.date = DateText(UtcDate(wanted_->hour));
  return set;
}

void BeaconPredictions::Take(const std::string& results) {
  const EngineChoice engine = wanted_->inputs.engine;
  const std::string& call = queue_.back().call;
  if (engine == EngineChoice::kVoaCapSnr) {
    const auto outcome = IONCAPModule::ParseMethod30Results(results, call, table_);
    if (outcome.complete_hours == 0) throw Error(errors::kInputPastEnd, "no results for " + call);
    if (outcome.complete_hours < static_cast<int>(kHours)) {
      problem_ = "The results for " + call + " are not complete";
      with_.diagnostics.ErrorLog("BeaconPredictions.Take: " + problem_);
    }
  } else {
    IONCAPModule::ParseLufMufResults(results, call, true, table_);
  }
  for (const double frequency : wanted_->frequencies) {
    predictions_.erase({call, frequency});
    if (const auto levels = LevelsOf(frequency)) {
      predictions_[{call, frequency}] = {*levels, wanted_->hour};
    }
  }
}

/// The levels of the hours that the table holds; nothing when it holds none.
std::optional<BeaconPredictions::Levels> BeaconPredictions::LevelsOf(double frequency) const {
  const auto megahertz = static_cast<float>(frequency / 1000);
  const EngineChoice engine = wanted_->inputs.engine;
  const bool by_band = engine == EngineChoice::kVoaCapSnr;
  const std::int16_t band = by_band ? IONCAPModule::BandForFreq(megahertz) : std::int16_t{0};
  if (band < 0) return std::nullopt;
  Levels levels;
  bool any = false;
  for (std::size_t hour = 0; hour < kHours; ++hour) {
    const bool known =
        !by_band || table_.Known(BandQuantity::kReliability, static_cast<std::size_t>(band), hour);
    if (known) {
      levels.at(hour) = IONCAPModule::FreqOpen(table_, engine, megahertz,
                                               static_cast<std::int16_t>(hour), with_.diagnostics);
    }
    any = any || known;
  }
  if (!any) return std::nullopt;
  return levels;
}

const BeaconPredictions::Levels* BeaconPredictions::Of(const std::string& call,
                                                       double frequency) const {
  const auto found = predictions_.find({call, frequency});
  return found == predictions_.end() ? nullptr : &found->second.levels;
}

const BeaconPredictions::Levels* BeaconPredictions::Before(std::chrono::sys_days day,
                                                           const std::string& call,
                                                           double frequency) const {
  if (day != day_before_) return nullptr;
  const auto found = before_.find({call, frequency});
  return found == before_.end() ? nullptr : &found->second.levels;
}

}  // namespace skyhop
