#include "ui/beacon/beacon_view.h"

namespace skyhop {
namespace {

struct Words {
  std::string_view caption;
  std::string_view tool_tip;
};

constexpr std::array<Words, kBeaconCheckCount> kCheckWords = {{
    {"&Follow", "tune the transceiver to each beacon as it begins, in CW"},
    {"&Turn antenna", "while following, turn the antenna to each beacon along the short path"},
    {"Look &up", "while following, look each beacon up in the location application"},
    {"Show &bearing", "while following, show each beacon's bearing on the map"},
    {"&Custom schedule", "use the schedule in CustomBeaconSchedule.txt"},
}};

constexpr std::array<Words, kBeaconButtonCount> kButtonWords = {{
    {"&Heard (F2)", "note that you hear the beacon that is transmitting now"},
    {"&Not heard (F3)", "note that you do not hear the beacon that is transmitting now"},
    {"&Export...", "write the marks of the shown day into a file of comma-separated values"},
    {"&Reload", "read the beacon files again"},
    {"E&arlier", "show the day before"},
    {"&Later", "show the day after"},
}};

}  // namespace

std::string_view Caption(BeaconCheck check) {
  return kCheckWords.at(static_cast<std::size_t>(check)).caption;
}

std::string_view Caption(BeaconButton button) {
  return kButtonWords.at(static_cast<std::size_t>(button)).caption;
}

std::string_view ToolTip(BeaconCheck check) {
  return kCheckWords.at(static_cast<std::size_t>(check)).tool_tip;
}

std::string_view ToolTip(BeaconButton button) {
  return kButtonWords.at(static_cast<std::size_t>(button)).tool_tip;
}

}  // namespace skyhop
