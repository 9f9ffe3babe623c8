#include "ui/prediction/mode_names.h"

#include "common/text.h"

namespace skyhop {

std::string ListedMode(const std::string& text) {
  std::string mode = UpperCase(Trim(text));
  if (mode == "PSK") return "PSK31";
  if (mode == "USB" || mode == "LSB") return "SSB";
  return mode;
}

double Megahertz(double frequency) {
  // Frequencies of the bands lie far below it in MHz and far above it in kHz.
  static constexpr double kSmallestKilohertz = 1000;
  return frequency < kSmallestKilohertz ? frequency : frequency / 1000;
}

}  // namespace skyhop
