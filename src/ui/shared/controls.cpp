#include "ui/shared/controls.h"

#include <array>
#include <cstddef>

namespace skyhop {
namespace {

struct Words {
  std::string_view caption;
  std::string_view tool_tip;
};

constexpr std::array<Words, kTextFieldCount> kTextFields = {{
    {"Latitude", "your latitude (strike Enter to update your Grid Square)"},
    {"Longitude", "your longitude (strike Enter to update your Grid Square)"},
    {"Grid Square", "your Grid Square (strike Enter to update your Latitude and Longitude)"},
    {"Power (watts)", "your transmitter's power, in watts"},
    {"Takeoff Angle", "your transmit antenna's minimum takeoff angle"},
    {"Latitude", "the DX Station's latitude (strike Enter to update its Grid Square)"},
    {"Longitude", "the DX Station's longitude (strike Enter to update its Grid Square)"},
    {"Grid Square",
     "the DX Station's Grid Square (strike Enter to update its Latitude and Longitude)"},
    {"Solar Flux", "solar flux index (64-400)"},
    {"K-index", "geomagnetic K-index (0-20)"},
    {"SSN", "smoothed sunspot number (used instead of the solar flux index when specified)"},
    {"Reliability (%)", "required circuit reliability (0-100)"},
    {"SNR (dB)", "required signal-to-noise ratio, in decibels (-30 to 99)"},
    {"UTC Date", "UTC date (double-click for the current date)"},
    {"Frequency", "the frequency to predict now, in MHz or kHz (strike Enter to predict)"},
}};

constexpr std::array<Words, kOptionGroupCount> kOptionGroups = {{
    {"Man-made Noise", "the level of man-made noise at your station"},
    {"Man-made Noise", "the level of man-made noise at the DX Station"},
    {"Power (watts)", "the DX Station's transmitter power, in watts"},
    {"Path", "the path from station to station: the short one or the long one around the earth"},
    {"Predict Signals", "the direction of the prediction: whose signals, received by whom"},
    {"Mode", "click to select a mode whose SNR will be specified"},
    {"Requested", "whether another program of the suite asked for the last prediction"},
}};

constexpr std::array<Words, kCheckBoxCount> kCheckBoxes = {{
    {"Trac&k Tessera Loc",
     "when checked, the DX Station's location tracks the selected location in Tessera"},
    {"Plot Critical Fre&quencies",
     "display LUF in black, and MUF levels: 10% in blue, 50% in green, and 90% in red"},
    {"Show Open Bands", "show bands with frequencies between LUF and 90% MUF"},
    {"Show Color Keys", "when checked shows Critial Frequency and Solar Position color keys"},
    {"Show C&urrent Time",
     "when checked, keeps the time index at the current time and the date at today"},
    {"SNR at a Frequency",
     "when checked, predicts one frequency for the current hour on both paths; follows the "
     "transceiver"},
    {"Show Table",
     "when checked, shows predictions as a table of bands and hours: percent of the days, or how "
     "open each band is"},
}};

constexpr std::array<Words, kButtonCount> kButtons = {{
    {"&Predict", "start a prediction"},
    {"&Short path to DX", "predict your signals at the DX Station via the short path"},
    {"&Long path to DX", "predict your signals at the DX Station via the long path"},
    {"Short path fro&m DX", "predict the DX Station's signals at your station via the short path"},
    {"Lo&ng path from DX", "predict the DX Station's signals at your station via the long path"},
    {"&Abort", "interrupt a prediction in progress"},
    {"Solar Forecas&t...", "show the forecast of solar flux, A index and K index"},
    {"&Current Conditions...", "show the current solar and geomagnetic conditions"},
    {"Histor&y", "show the history of the solar indices in Gleaner"},
    {"Update SF&I and K", "update solar flux and K-index from the current conditions"},
    {"Up&date SSN", "download the predicted smoothed sunspot number"},
    {"&Beacons...", "show the beacon monitor"},
    {"Confi&guration...", "show the Configuration window"},
    {"Help", "show the help pages in your browser"},
    {"Predict SNR", "predict the signal-to-noise ratio at this frequency now"},
    {"Show Deck and Results", "show the files that the last prediction gave its engine and got"},
}};

template <std::size_t count, class Control>
constexpr const Words& Find(const std::array<Words, count>& words, Control control) {
  return words.at(static_cast<std::size_t>(control));
}

}  // namespace

std::string_view Caption(TextField field) {
  return Find(kTextFields, field).caption;
}

std::string_view Caption(OptionGroup group) {
  return Find(kOptionGroups, group).caption;
}

std::string_view Caption(CheckBox box) {
  return Find(kCheckBoxes, box).caption;
}

std::string_view Caption(Button button) {
  return Find(kButtons, button).caption;
}

std::string_view Caption(NoticeAction action) {
  switch (action) {
    case NoticeAction::kShowReceiver:
      return "Receiver tab";
    case NoticeAction::kShowConfiguration:
      return "Configuration";
    case NoticeAction::kRetryDownload:
      return "Retry";
    case NoticeAction::kNone:
      break;
  }
  return {};
}

std::string_view ToolTip(TextField field) {
  return Find(kTextFields, field).tool_tip;
}

std::string_view ToolTip(OptionGroup group) {
  return Find(kOptionGroups, group).tool_tip;
}

std::string_view ToolTip(CheckBox box) {
  return Find(kCheckBoxes, box).tool_tip;
}

std::string_view ToolTip(Button button) {
  return Find(kButtons, button).tool_tip;
}

}  // namespace skyhop
