// The commands that this program sends to its peers.

#include "interop/dde_client_module.h"
#include "interop/suite.h"

namespace skyhop::DDEClientModule {

void Links::Send(std::int16_t role, const char* word, const std::string& argument) {
  with_.diagnostics.Trap(std::string("DDEClientModule.") + word, [&] {
    LinkConversation* const link = CommandLink(role);
    with_.diagnostics.DebugLog(std::string("DDEClientModule.") + word + " " + argument +
                               (link == nullptr ? " (not connected)" : ""));
    if (link != nullptr) link->Execute(DDECommon::OwnCommand(word, argument));
  });
}

void Links::Qsy(const std::string& frequency) {
  Send(role::kTransceiverControl, "qsy", frequency);
}

void Links::SetTransceiverMode(const std::string& mode) {
  Send(role::kTransceiverControl, "xcvrsetmodecmd",
       with_.records.EncodeField("xcvrsetmodearg", mode));
}

void Links::SetVfoA() {
  Send(role::kTransceiverControl, "setvfoa");
}

void Links::SetSplit(bool on) {
  Send(role::kTransceiverControl, "setsplit", on ? "on" : "off");
}

void Links::BeaconLookup(const BeaconPlace& place) {
  const struct {
    const char* name;
    const std::string& value;
  } fields[] = {
      {"call", place.call},          {"prefix", place.prefix}, {"lat", place.latitude},
      {"lon", place.longitude},      {"qth", place.qth},       {"country", place.country},
      {"cont", place.continent},     {"cq", place.cq_zone},    {"itu", place.itu_zone},
      {"timezone", place.time_zone},
  };
  std::string record;
  for (const auto& [name, value] : fields) record += with_.records.EncodeField(name, value);
  Send(role::kTessera, "beaconlookup", record);
}

void Links::SelectBearing(std::int16_t bearing) {
  Send(role::kTessera, "selectbearing", std::to_string(bearing));
}

void Links::RotateShortPath(std::int16_t bearing) {
  Send(role::kTessera, "rotatesp", std::to_string(bearing));
}

void Links::DisplaySolarHistory() {
  Send(role::kSpots, "displaysolarhistory");
}

}  // namespace skyhop::DDEClientModule
