#include "ui/beacon/beacon_links.h"

#include "interop/suite.h"

namespace skyhop {

int BeaconLinks::Connection(BeaconModule::BeaconPeer peer) const {
  const DDEClientModule::Links* const links = links_();
  if (links == nullptr) return 0;
  const bool map = peer == BeaconModule::BeaconPeer::kMap;
  return links->Connection(map ? role::kTessera : role::kTransceiverControl);
}

void BeaconLinks::SetVfoA() {
  if (auto* const links = links_()) links->SetVfoA();
}

void BeaconLinks::SetSplit(bool on) {
  if (auto* const links = links_()) links->SetSplit(on);
}

void BeaconLinks::Qsy(const std::string& frequency) {
  if (auto* const links = links_()) links->Qsy(frequency);
}

void BeaconLinks::SetTransceiverMode(const std::string& mode) {
  if (auto* const links = links_()) links->SetTransceiverMode(mode);
}

void BeaconLinks::RotateShortPath(std::int16_t bearing) {
  if (auto* const links = links_()) links->RotateShortPath(bearing);
}

void BeaconLinks::SelectBearing(std::int16_t bearing) {
  if (auto* const links = links_()) links->SelectBearing(bearing);
}

void BeaconLinks::LookUp(const BeaconModule::Beacon& beacon) {
  auto* const links = links_();
  if (links == nullptr) return;
  DDEClientModule::BeaconPlace place;
  place.call = beacon.call;
  place.prefix = beacon.prefix;
  place.latitude = beacon.latitude;
  place.longitude = beacon.longitude;
  place.qth = beacon.place;
  place.country = beacon.country;
  place.continent = beacon.continent;
  place.cq_zone = beacon.cq_zone;
  place.itu_zone = beacon.itu_zone;
  place.time_zone = beacon.time_zone;
  links->BeaconLookup(place);
}

}  // namespace skyhop
