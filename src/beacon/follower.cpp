#include "beacon/follower.h"

#include "common/numbers.h"

namespace skyhop::BeaconModule {

void Follower::SetOptions(const FollowOptions& options) {
  // What was off may be anywhere by now.
  if (!options.retune) done_.tuned.reset();
  if (!options.rotate) done_.rotated.clear();
  if (!options.look_up) done_.looked_up.clear();
  if (!options.select_bearing) done_.selected.clear();
  options_ = options;
}

void Follower::Follow(const std::optional<Transmission>& target, double frequency,
                      const Beacon* beacon, std::optional<std::int16_t> bearing) {
  if (!target) return;
  if (options_.retune && done_.tuned != target) {
    done_.tuned = target;
    peers_->Qsy(NumberText(frequency));
    peers_->SetTransceiverMode("CW");
  }
  if (options_.rotate && bearing && done_.rotated != target->call) {
    done_.rotated = target->call;
    peers_->RotateShortPath(*bearing);
  }
  if (options_.look_up && beacon != nullptr && done_.looked_up != target->call) {
    done_.looked_up = target->call;
    peers_->LookUp(*beacon);
  }
  if (options_.select_bearing && bearing && done_.selected != target->call) {
    done_.selected = target->call;
    peers_->SelectBearing(*bearing);
  }
}

}  // namespace skyhop::BeaconModule
