#include "beacon/follower.h"

#include <utility>

#include "common/numbers.h"

namespace skyhop::BeaconModule {

void Follower::SetOptions(const FollowOptions& options) {
  // While an option was off, the user may have moved what it controls.
  if (!options.retune) done_.tuned.reset();
  if (!options.rotate) done_.rotated.reset();
  if (!options.look_up) done_.looked_up.reset();
  if (!options.select_bearing) done_.selected.reset();
  options_ = options;
}

void Follower::Follow(const std::optional<Transmission>& target, double frequency,
                      const Beacon* beacon, std::optional<std::int16_t> bearing) {
  if (!target) return;
  Tune(*target, frequency);
  Point(target->call, beacon, bearing);
}

void Follower::Tune(const Transmission& target, double frequency) {
  const int connection = peers_->Connection(BeaconPeer::kTransceiver);
  if (!options_.retune || connection == 0) return;
  const Tuning tuning{connection, target};
  if (std::exchange(done_.tuned, tuning) == tuning) return;
  // Set VFO and mode first: each may change the frequency.
  peers_->SetVfoA();
  peers_->SetSplit(false);
  peers_->SetTransceiverMode("CW");
  peers_->Qsy(NumberText(frequency));
}

void Follower::Point(const std::string& call, const Beacon* beacon,
                     std::optional<std::int16_t> bearing) {
  const int connection = peers_->Connection(BeaconPeer::kMap);
  if (connection == 0) return;
  const Pointing pointing{connection, call, bearing.value_or(0)};
  const Pointing place{connection, call, 0};
  if (options_.rotate && bearing && std::exchange(done_.rotated, pointing) != pointing) {
    peers_->RotateShortPath(*bearing);
  }
  if (options_.look_up && beacon != nullptr && std::exchange(done_.looked_up, place) != place) {
    peers_->LookUp(*beacon);
  }
  if (options_.select_bearing && bearing && std::exchange(done_.selected, pointing) != pointing) {
    peers_->SelectBearing(*bearing);
  }
}

}  // namespace skyhop::BeaconModule
