#pragma once

#include <string>
#include <utility>
#include <vector>

#include "beacon/follower.h"

namespace skyhop::testing {

/// Keeps the commands, each with its name and argument.
class FakeBeaconPeers : public BeaconModule::BeaconPeers {
 public:
  [[nodiscard]] int Connection(BeaconModule::BeaconPeer peer) const override {
    return peer == BeaconModule::BeaconPeer::kMap ? map : transceiver;
  }
  void SetVfoA() override { commands.emplace_back("vfo a"); }
  void SetSplit(bool on) override { commands.emplace_back(on ? "split on" : "split off"); }
  void Qsy(const std::string& frequency) override { commands.push_back("qsy " + frequency); }
  void SetTransceiverMode(const std::string& mode) override { commands.push_back("mode " + mode); }
  void RotateShortPath(std::int16_t bearing) override {
    commands.push_back("rotate " + std::to_string(bearing));
  }
  void SelectBearing(std::int16_t bearing) override {
    commands.push_back("bearing " + std::to_string(bearing));
  }
  void LookUp(const BeaconModule::Beacon& beacon) override {
    commands.push_back("lookup " + beacon.call + " " + beacon.place);
  }

  /// The commands since the last call.
  std::vector<std::string> Take() { return std::exchange(commands, {}); }

  int transceiver = 1;  ///< numbers of the connections
  int map = 1;
  std::vector<std::string> commands;
};

}  // namespace skyhop::testing
