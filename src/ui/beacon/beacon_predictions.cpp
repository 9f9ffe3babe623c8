#include "ui/beacon/beacon_predictions.h"

#include <algorithm>

#include "common/dates.h"
#include "common/errors.h"
#include "engine/results_parser.h"

namespace skyhop {
namespace {

using BeaconModule::Beacon;

constexpr std::int16_t kLufMufMethod = 26;
constexpr std::int16_t kSnrMethod = 30;

bool SameBeacons(const std::vector<Beacon>& a, const std::vector<Beacon>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Beacon& x, const Beacon& y) {
    return x.call == y.call && x.position == y.position;
  });
}

}  // namespace

BeaconInputs ReadBeaconInputs(const PredictionPanel& panel,
                              const IONCAPModule::Parameters& parameters) {
  BeaconInputs inputs;
  inputs.latitude = panel.Text(PanelText::kLocalLat);
  inputs.longitude = panel.Text(PanelText::kLocalLon);
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
      chart_(table_, EvenLayout({0, 0, 960, 500}, 14), with_.diagnostics, with_.clock),
      run_({with_.locker, with_.launcher, with_.host, with_.pause, with_.diagnostics,
            with_.program_folder}) {
  panel_.SetChoice(PanelChoice::kPath, path_option::kShort);
  panel_.SetChoice(PanelChoice::kPredictSignals, direction_option::kFromTheDXStation);
}

void BeaconPredictions::Want(const BeaconInputs& inputs, const std::vector<Beacon>& beacons,
                             const std::vector<double>& frequencies, UtcTime now) {
  const UtcTime hour = std::chrono::floor<std::chrono::hours>(now);
  const bool same = wanted_ && wanted_->inputs == inputs && wanted_->frequencies == frequencies &&
                    SameBeacons(wanted_->beacons, beacons);
  if (same && wanted_->hour == hour) return;
  // The last hour's predictions are better than none until there are new ones.
  if (!same) levels_.clear();
  run_.Cancel();
  problem_.clear();
  wanted_ = {inputs, beacons, frequencies, hour};
  queue_.assign(beacons.rbegin(), beacons.rend());
}

void BeaconPredictions::Forget() {
  run_.Cancel();
  queue_.clear();
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
    const Beacon beacon = queue_.back();
    if (outcome->good) {
      const bool taken =
          with_.diagnostics.Trap("BeaconPredictions.Take", [&] { Take(outcome->text); });
      if (!taken) problem_ = "The results for " + beacon.call + " cannot be read";
    } else {
      problem_ = "No prediction for " + beacon.call + ": " + outcome->text;
      with_.diagnostics.ErrorLog("BeaconPredictions.Poll: " + problem_);
    }
    queue_.pop_back();
    if (!queue_.empty()) Begin(now);
    return true;
  });
}

/// Starts the next run. What cannot be started for one beacon cannot be for the others.
void BeaconPredictions::Begin(Time now) {
  if (wanted_->inputs.engine == EngineChoice::kNone) return GiveUp("no engine is selected");
  if (!HandInputs(queue_.back())) return GiveUp(messages_.last);
  switch (run_.Start(
      wanted_->inputs.engine, [this](const auto& file) { return WriteDeck(file); }, now)) {
    case CircuitRun::Started::kRuns:
    case CircuitRun::Started::kBusy:  // asked again at the next poll
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
  parameters_.SetPredictionPower(kPower);
  parameters_.SetPredictionSNR(inputs.snr);
  parameters_.SetPredictionTakeoff(inputs.takeoff);
  parameters_.SetPredictionNoise(inputs.noise);
  parameters_.SetPath("Short Path");
  parameters_.SetDate(DateText(UtcDate(wanted_->hour)));
  parameters_.SetTransmitterLatitude(LatLonModule::LatitudeString(beacon.position));
  parameters_.SetTransmitterLongitude(LatLonModule::LongitudeString(beacon.position));
  if (!LatLonModule::ValidLatitude(inputs.latitude, with_.diagnostics) ||
      !LatLonModule::ValidLongitude(inputs.longitude, with_.diagnostics)) {
    messages_.last = "your station's location is missing";
    return false;
  }
  parameters_.SetReceiverLatitude(inputs.latitude);
  parameters_.SetReceiverLongitude(inputs.longitude);
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
    if (!outcome.header_found) throw Error(errors::kInputPastEnd, "no results for " + call);
  } else {
    IONCAPModule::ParseLufMufResults(results, call, true, table_);
  }
  chart_.ComputeAxis(engine);
  for (const double frequency : wanted_->frequencies) {
    Levels& levels = levels_[{call, frequency}];
    for (std::size_t hour = 0; hour < kHours; ++hour) {
      levels.at(hour) =
          chart_.FreqOpen(static_cast<float>(frequency / 1000), static_cast<std::int16_t>(hour));
    }
  }
}

const BeaconPredictions::Levels* BeaconPredictions::Of(const std::string& call,
                                                       double frequency) const {
  const auto found = levels_.find({call, frequency});
  return found == levels_.end() ? nullptr : &found->second;
}

}  // namespace skyhop
