#include "ui/shared/mode_names.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "common/text.h"

namespace skyhop {
namespace {

using Names = std::span<const std::string_view>;

constexpr std::string_view kCw[] = {"CW"};
constexpr std::string_view kSsb[] = {"SSB"};
constexpr std::string_view kAm[] = {"AM"};
constexpr std::string_view kFm[] = {"FM"};
constexpr std::string_view kRtty[] = {"RTTY"};
constexpr std::string_view kPsk[] = {"PSK31"};
constexpr std::string_view kVoice[] = {"DV"};
/// The usual ones first.
constexpr std::string_view kDigital[] = {"FT8",  "FT4", "JS8",    "PSK31",
                                         "JT65", "JT9", "OLIVIA", "RTTY"};

/// Transceivers' names for a kind of modulation, without "-", "_" and blanks, and the modes that
/// they mean.
struct ModeFamily {
  std::string_view names;  ///< each between blanks
  Names modes;
};

constexpr ModeFamily kFamilies[] = {
    {" CW CWR CWU CWL CWN CWREV ", kCw},
    {" SSB USB LSB USBN LSBN ", kSsb},
    {" AM AMN AMS SAM ", kAm},
    {" FM FMN NFM WFM FMD DATAFM PKTFM ", kFm},
    {" RTTY RTTYR RTTYU RTTYL RTTYLSB RTTYUSB FSK FSKR ", kRtty},
    {" PSK PSKR PSK31 BPSK BPSK31 ", kPsk},
    {" DV DSTAR C4FM ", kVoice},
    {" DATA DATAU DATAL DATAR DATAUSB DATALSB DIG DIGU DIGL DIGI USBD LSBD PKT PKTU PKTL PKTUSB "
     "PKTLSB ",
     kDigital},
};

/// Converts to capitals and removes the separators that transceivers use in names.
std::string PlainName(const std::string& text) {
  std::string name = UpperCase(Trim(text));
  std::erase_if(name, [](char c) { return c == '-' || c == '_' || c == ' '; });
  return name;
}

std::optional<std::size_t> Find(std::string_view name, const std::vector<ModeSettings>& modes) {
  const auto found = std::find_if(modes.begin(), modes.end(), [&](const ModeSettings& mode) {
    return EqualsIgnoringCase(mode.mode, name);
  });
  if (found == modes.end()) return std::nullopt;
  return static_cast<std::size_t>(found - modes.begin());
}

}  // namespace

std::optional<std::size_t> NearestMode(const std::string& text,
                                       const std::vector<ModeSettings>& modes,
                                       const std::string& current) {
  if (const auto listed = Find(Trim(text), modes)) return listed;
  const std::string name = PlainName(text);
  if (name.empty()) return std::nullopt;
  const auto* const family =
      std::find_if(std::begin(kFamilies), std::end(kFamilies), [&](const ModeFamily& one) {
        return one.names.find(" " + name + " ") != std::string_view::npos;
      });
  if (family == std::end(kFamilies)) return Find(name, modes);
  const Names names = family->modes;
  const auto selected = Find(current, modes);
  if (selected && std::find(names.begin(), names.end(), UpperCase(current)) != names.end()) {
    return selected;
  }
  for (const std::string_view mode : names) {
    if (const auto listed = Find(mode, modes)) return listed;
  }
  return std::nullopt;
}

double Megahertz(double frequency) {
  // The bands' frequencies are far below this value in MHz and far above it in kHz.
  static constexpr double kSmallestKilohertz = 1000;
  return frequency < kSmallestKilohertz ? frequency : frequency / 1000;
}

}  // namespace skyhop
