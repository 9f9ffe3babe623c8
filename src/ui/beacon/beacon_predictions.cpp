#include "ui/beacon/beacon_predictions.h"

#include <algorithm>

#include "bands/bands.h"
#include "common/dates.h"
#include "common/errors.h"
#include "engine/results_parser.h"

namespace skyhop {
namespace {

using BeaconModule::Beacon;

constexpr std::int16_t kLufMufMethod = 26;
constexpr std::int16_t kSnrMethod = 30;

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

BeaconInputs ReadBeaconInputs(const PredictionPanel& panel,
                              const IONCAPModule::Parameters& parameters) {
  BeaconInputs inputs;
  const auto latitude = LatLonModule::LatitudeIn(panel.Text(PanelText::kLocalLat));
  const auto longitude = LatLonModule::LongitudeIn(panel.Text(PanelText::kLocalLon));
  if (latitude && longitude) inputs.station = {*latitude, *longitude};
  inputs.antenna = panel.AntennaOf(Station::kLocal);
  inputs.flux = panel.Text(PanelText::kFlux);
  inputs.sunspot_number = panel.Text(PanelText::kSSN);
  inputs.k_index = panel.Text(PanelText::kKindex);
  inputs.availability = panel.Text(PanelText::kAvail);
  inputs.snr = panel.Text(PanelText::kSNR);
  inputs.takeoff = panel.Text(PanelText::kLocalTakeOff);
  inputs.noise = parameters.LocalNoiseIndex();
  inputs.engine = static_cast<EngineChoice>(panel.Choice(PanelChoice::kEngineButton));
  return inputs;
}

BeaconPredictions::BeaconPredictions(const Collaborators& collaborators)
    : with_(collaborators),
      parameters_(panel_, messages_, with_.settings, with_.diagnostics),
      cards_(with_.pause, with_.diagnostics),
      ioncap_script_(cards_, panel_, parameters_, with_.diagnostics),
      its_script_(cards_, panel_, parameters_, with_.diagnostics),
      run_({with_.locker, with_.launcher, with_.host, with_.pause, with_.diagnostics,
            with_.program_folder, kFileNames}) {
  panel_.SetChoice(PanelChoice::kPath, path_option::kShort);
  panel_.SetChoice(PanelChoice::kPredictSignals, direction_option::kFromTheDXStation);
}

void BeaconPredictions::Want(const BeaconInputs& inputs, const std::vector<Beacon>& beacons,
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
  if (!HandInputs(queue_.back())) return GiveUp(messages_.last);
  const IONCAPModule::DeckParameters asked =
      IONCAPModule::ReadDeckParameters(panel_, parameters_, with_.diagnostics);
  switch (run_.Start(
      wanted_->inputs.engine, asked, [this](const auto& file) { return WriteDeck(file); }, now)) {
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

bool BeaconPredictions::HandInputs(const Beacon& beacon) {
  const BeaconInputs& inputs = wanted_->inputs;
  panel_.SetText(PanelText::kFlux, inputs.flux);
  panel_.SetText(PanelText::kSSN, inputs.sunspot_number);
  panel_.SetText(PanelText::kKindex, inputs.k_index);
  panel_.SetText(PanelText::kAvail, inputs.availability);
  panel_.SetChoice(PanelChoice::kEngineButton, static_cast<int>(inputs.engine));
  panel_.SetAntenna(Station::kLocal, inputs.antenna);
  parameters_.SetPredictionPower(kPower);
  parameters_.SetPredictionSNR(inputs.snr);
  parameters_.SetPredictionTakeoff(inputs.takeoff);
  parameters_.SetPredictionNoise(inputs.noise);
  parameters_.SetPath("Short Path");
  parameters_.SetDate(DateText(UtcDate(wanted_->hour)));
  parameters_.SetTransmitterLatitude(LatLonModule::LatitudeString(beacon.position));
  parameters_.SetTransmitterLongitude(LatLonModule::LongitudeString(beacon.position));
  if (LatLonModule::IsUndefined(inputs.station)) {
    messages_.last = "your station's location is missing";
    return false;
  }
  parameters_.SetReceiverLatitude(LatLonModule::LatitudeString(inputs.station));
  parameters_.SetReceiverLongitude(LatLonModule::LongitudeString(inputs.station));
  return parameters_.PredictionParametersValid();
}

bool BeaconPredictions::WriteDeck(const std::filesystem::path& file) {
  const EngineChoice engine = wanted_->inputs.engine;
  if (engine == EngineChoice::kIonCap) {
    return ioncap_script_.CreateIONCAPScript(kLufMufMethod, file);
  }
  const std::int16_t method = engine == EngineChoice::kVoaCapSnr ? kSnrMethod : kLufMufMethod;
  return its_script_.CreateScript(engine, method, file);
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
