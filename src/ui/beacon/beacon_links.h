#pragma once

#include <functional>
#include <utility>

#include "beacon/follower.h"
#include "interop/dde_client_module.h"
#include "interop/suite.h"

namespace skyhop {

/// Sends the commands of the beacon window through the links to the other programs.
class BeaconLinks : public BeaconModule::BeaconPeers {
 public:
  using Links = DDEClientModule::Links;

  /// `links` returns null while there are no links; commands then do nothing.
  explicit BeaconLinks(std::function<Links*()> links) : links_(std::move(links)) {}

  [[nodiscard]] int Connection(BeaconModule::BeaconPeer peer) const override {
    const bool map = peer == BeaconModule::BeaconPeer::kMap;
    const Links* const links = links_();
    return links ? links->Connection(map ? role::kTessera : role::kTransceiverControl) : 0;
  }
  void SetVfoA() override { Send(&Links::SetVfoA); }
  void SetSplit(bool on) override { Send(&Links::SetSplit, on); }
  void Qsy(const std::string& frequency) override { Send(&Links::Qsy, frequency); }
  void SetTransceiverMode(const std::string& mode) override {
    Send(&Links::SetTransceiverMode, mode);
  }
  void RotateShortPath(std::int16_t bearing) override { Send(&Links::RotateShortPath, bearing); }
  void SelectBearing(std::int16_t bearing) override { Send(&Links::SelectBearing, bearing); }
  void LookUp(const BeaconModule::Beacon& beacon) override {
    Send(&Links::BeaconLookup,
         DDEClientModule::BeaconPlace{beacon.call, beacon.prefix, beacon.latitude, beacon.longitude,
                                      beacon.place, beacon.country, beacon.continent,
                                      beacon.cq_zone, beacon.itu_zone, beacon.time_zone});
  }

 private:
  template <class... Parameters, class... Arguments>
  void Send(void (Links::*command)(Parameters...), const Arguments&... arguments) const {
    if (Links* const links = links_()) (links->*command)(arguments...);
  }

  std::function<Links*()> links_;
};

}  // namespace skyhop
