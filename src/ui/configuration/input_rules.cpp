#include "ui/configuration/input_rules.h"

#include <limits>
#include <optional>

#include "common/numbers.h"
#include "common/settings_store.h"
#include "common/text.h"

namespace skyhop {
namespace {

constexpr double kHighestTakeoff = 90;
constexpr double kLowestSnr = -30;
constexpr double kHighestSnr = 99;
constexpr std::size_t kLongestModeName = 20;

bool IsNumberWithin(const std::string& text, double least, double most) {
  const std::optional<double> value = WholeNumberText(text);
  return value && *value >= least && *value <= most;
}

}  // namespace

std::string Refusal(const BandSettings& settings, const std::string& band) {
  if (!settings.takeoff.empty() && !IsNumberWithin(settings.takeoff, 0, kHighestTakeoff)) {
    return "The take-off angle on " + band + " has to be a number of degrees from 0 to 90";
  }
  if (!settings.power.empty() &&
      !IsNumberWithin(settings.power, 0, std::numeric_limits<double>::max())) {
    return "The power on " + band + " has to be a number of watts, 0 or more";
  }
  return {};
}

std::string Refusal(const ModeSettings& mode, const std::vector<ModeSettings>& modes,
                    std::size_t row) {
  if (mode.mode.empty()) return "A mode needs a name";
  if (mode.mode.size() > kLongestModeName) {
    return "The name of a mode may have " + std::to_string(kLongestModeName) +
           " characters at most";
  }
  if (!IsSettingName(mode.mode) || mode.mode.find(',') != std::string::npos) {
    return "The name of a mode may hold no comma, no bracket, no \"=\" and no \"\\\", and may not "
           "begin with \";\" or \"#\"";
  }
  for (std::size_t other = 0; other < modes.size(); ++other) {
    if (other != row && EqualsIgnoringCase(modes[other].mode, mode.mode)) {
      return "There is a mode " + modes[other].mode + " already";
    }
  }
  if (!IsNumberWithin(mode.snr, kLowestSnr, kHighestSnr)) {
    return "The required SNR of " + mode.mode + " has to be a number of decibels from -30 to 99";
  }
  return {};
}

}  // namespace skyhop
