#pragma once

#include <functional>
#include <utility>

#include "beacon/follower.h"
#include "interop/dde_client_module.h"

namespace skyhop {

/// The followers of the beacons as the links with the other programs reach them.
class BeaconLinks : public BeaconModule::BeaconPeers {
 public:
  /// `links` yields the links, null while there are none.
  explicit BeaconLinks(std::function<DDEClientModule::Links*()> links) : links_(std::move(links)) {}

  [[nodiscard]] int Connection(BeaconModule::BeaconPeer peer) const override;
  void SetVfoA() override;
  void SetSplit(bool on) override;
  void Qsy(const std::string& frequency) override;
  void SetTransceiverMode(const std::string& mode) override;
  void RotateShortPath(std::int16_t bearing) override;
  void SelectBearing(std::int16_t bearing) override;
  void LookUp(const BeaconModule::Beacon& beacon) override;

 private:
  std::function<DDEClientModule::Links*()> links_;
};

}  // namespace skyhop
