#include "ui/beacon/known_beacons.h"

#include <algorithm>

#include "common/dates.h"

namespace skyhop {
namespace {

/// Reads the table column by column, so that the beacons are in their order on one frequency.
std::vector<std::string> CallsOf(const BeaconModule::SlotTable& table) {
  std::vector<std::string> calls;
  for (std::size_t column = 0; column < table.frequencies.size(); ++column) {
    for (const std::vector<std::string>& slot : table.slots) {
      const std::string& call = slot[column];
      const bool known = std::find(calls.begin(), calls.end(), call) != calls.end();
      if (!call.empty() && !known) calls.push_back(call);
    }
  }
  return calls;
}

}  // namespace

void KnownBeacons::ReadFiles(bool custom) {
  files_ = BeaconModule::ReadBeaconFiles(with_.program_folder, custom, with_.diagnostics);
  schedule_.reset();
  frequencies_.clear();
  calls_.clear();
  if (files_.schedule) {
    schedule_.emplace(*files_.schedule);
    frequencies_ = files_.schedule->frequencies;
    calls_ = CallsOf(*files_.schedule);
  }
  Locate();
}

void KnownBeacons::TakeInputs() {
  typed_.reset();
  const ParameterSet inputs = BeaconParameters(with_.read_form());
  const bool moved = inputs.receiver != inputs_.receiver;
  inputs_ = inputs;
  if (moved) Locate();
}

void KnownBeacons::WatchInputs(std::chrono::milliseconds passed) {
  const PredictionForm form = with_.read_form();
  const Typed typed{BeaconParameters(form), form.local_latitude, form.local_longitude};
  if (typed.inputs == inputs_) {
    typed_.reset();
  } else if (typed_ != typed) {
    typed_ = typed;
    typed_since_ = passed;
  } else if (passed - typed_since_ >= kSettled) {
    TakeInputs();
  }
  if (form.distance_miles != miles_) Locate();
}

void KnownBeacons::Locate() {
  miles_ = with_.read_form().distance_miles;
  ways_.clear();
  for (const BeaconModule::Beacon& beacon : files_.locations.beacons) {
    ways_.push_back(
        BeaconModule::WayTo(inputs_.receiver, beacon.position, miles_, with_.diagnostics));
  }
  ++revision_;
}

KnownBeacons::Known KnownBeacons::Of(const std::string& call) const {
  const BeaconModule::Beacon* const beacon = files_.locations.Find(call);
  if (beacon == nullptr) return {};
  return {beacon, ways_.at(static_cast<std::size_t>(beacon - files_.locations.beacons.data()))};
}

BeaconModule::BeaconFacts KnownBeacons::Facts(UtcTime now) const {
  BeaconModule::BeaconFacts facts;
  facts.octant = [this](const std::string& call) -> std::optional<BeaconModule::Octant> {
    const Known known = Of(call);
    if (!known.way) return std::nullopt;
    return BeaconModule::OctantOf(known.way->azimuth);
  };
  facts.on_air = [this](const std::string& call) {
    const BeaconModule::Beacon* const beacon = files_.locations.Find(call);
    return beacon == nullptr || beacon->on_air;
  };
  facts.open_level = [this, now](const std::string& call, std::size_t frequency) {
    return int{Level(call, Frequencies()[frequency], now).value_or(0)};
  };
  return facts;
}

std::vector<BeaconModule::Beacon> KnownBeacons::Predictable() const {
  std::vector<BeaconModule::Beacon> beacons;
  for (const std::string& call : calls_) {
    const Known known = Of(call);
    const bool here = known.way && known.way->short_distance == 0;
    if (known.beacon != nullptr && !here) beacons.push_back(*known.beacon);
  }
  return beacons;
}

const BeaconPredictions::Levels* KnownBeacons::Levels(
    const std::optional<std::chrono::sys_days>& day, const std::string& call,
    double frequency) const {
  return day ? with_.predictions.Before(*day, call, frequency)
             : with_.predictions.Of(call, frequency);
}

std::optional<std::int16_t> KnownBeacons::Level(const std::string& call, double frequency,
                                                UtcTime now) const {
  const BeaconPredictions::Levels* const levels = Levels(std::nullopt, call, frequency);
  if (levels == nullptr) return std::nullopt;
  return levels->at(static_cast<std::size_t>(UtcHourMinute(now).hour));
}

}  // namespace skyhop
