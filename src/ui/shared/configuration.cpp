#include "ui/shared/configuration.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "bands/bands.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"

namespace skyhop {
namespace {

constexpr const char* kGeneral = "General";
constexpr const char* kWindows = "Windows";
constexpr const char* kConfiguration = "Configuration";
constexpr const char* kPerBand = "FreqDependentSettings";
constexpr const char* kAntennas = "Antennas";
constexpr const char* kPerMode = "ModeDependentSettings";

constexpr const char* kEngineKey = "Engine";
constexpr const char* kDistanceMilesKey = "DistanceMiles";
constexpr const char* kDiagModeKey = "DiagMode";
constexpr const char* kFreqDependentEnabledKey = "FreqDependentEnabled";
constexpr const char* kTakeoffKey = "FreqDependentTakeoff";
constexpr const char* kPowerKey = "FreqDependentPower";
constexpr const char* kModesKey = "Modes";
constexpr const char* kModeKey = "SNR ";
constexpr const char* kShowToolTipsKey = "ShowToolTips";
constexpr const char* kDualMonitorKey = "DualMonitor";
constexpr const char* kDownloadSsnKey = "DownloadSSNAtStart";

constexpr int kEngineCount = 4;

/// Required SNR of an unknown mode without a stored value: that of a fresh parameter set.
constexpr const char* kUnknownModeSnr = "24";

struct UrlSetting {
  const char* key;
  const char* default_text;
};

/// By Address. The data and the first three pages are those of NOAA's Space Weather Prediction
/// Center.
constexpr std::array<UrlSetting, kAddressCount> kUrls = {{
    {"URL0", "https://www.swpc.noaa.gov/communities/radio-communications"},
    {"URL1", "https://www.swpc.noaa.gov/communities/space-weather-enthusiasts"},
    {"URL2", "https://services.swpc.noaa.gov/images/planetary-k-index.gif"},
    {"URL3", ""},
    {"SSNURL", "https://services.swpc.noaa.gov/json/solar-cycle/predicted-solar-cycle.json"},
    {"SFIURL", "https://services.swpc.noaa.gov/text/45-day-ap-forecast.txt"},
    {"WWVURL", "https://services.swpc.noaa.gov/text/wwv.txt"},
}};

/// Of "URL1".
constexpr const char* kFormerEnthusiastsPage =
    "http://www.swpc.noaa.gov/communities/space-weather-enthusiasts";

/// The key of a setting for a station's antenna.
std::string StationKey(Station station, const char* key) {
  return std::string(station == Station::kLocal ? "Local" : "DX") + key;
}

constexpr const char* kAntennaKey = "Antenna";
constexpr const char* kAntennaGainKey = "AntennaGain";
constexpr const char* kAntennaAzimuthKey = "AntennaAzimuth";

std::string BandKey(const char* prefix, std::size_t band) {
  return std::string(prefix).append(kBandNames.at(band));
}

bool HasMode(const std::vector<ModeSettings>& modes, std::string_view name) {
  return std::any_of(modes.begin(), modes.end(), [&](const ModeSettings& known) {
    return EqualsIgnoringCase(known.mode, name);
  });
}

/// Whether another mode can have this name. The store keeps the list of names with commas, and a
/// value under each name.
bool IsNewModeName(const std::vector<ModeSettings>& modes, const std::string& name) {
  return !name.empty() && name.find(',') == std::string::npos && IsSettingName(kModeKey + name) &&
         !HasMode(modes, name);
}

std::string ModeList(const std::vector<ModeSettings>& modes) {
  std::string list;
  for (const ModeSettings& mode : modes) {
    if (!list.empty()) list += ',';
    list += mode.mode;
  }
  return list;
}

std::string DefaultSnr(const std::string& mode) {
  for (const ModeSettings& known : DefaultModes()) {
    if (EqualsIgnoringCase(known.mode, mode)) return known.snr;
  }
  return kUnknownModeSnr;
}

std::vector<ModeSettings> StoredModes(const Common::Settings& settings) {
  const std::string list =
      settings.GetStringSetting(kProductName, kPerMode, kModesKey, ModeList(DefaultModes()));
  std::vector<ModeSettings> modes;
  for (std::string_view rest = list; !rest.empty();) {
    const std::size_t comma = rest.find(',');
    const std::string name(Trim(rest.substr(0, comma)));
    rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    if (!IsNewModeName(modes, name)) continue;
    modes.push_back({name, settings.GetStringSetting(kProductName, kPerMode, kModeKey + name,
                                                     DefaultSnr(name))});
  }
  return modes;
}

}  // namespace

const char* DefaultUrl(Address address) {
  return kUrls.at(static_cast<std::size_t>(address)).default_text;
}

Antenna StoredAntenna(const Common::Settings& settings, Station station) {
  const auto text = [&](const char* key) {
    return settings.GetStringSetting(kProductName, kAntennas, StationKey(station, key), "");
  };
  Antenna antenna{text(kAntennaKey), text(kAntennaGainKey), text(kAntennaAzimuthKey)};
  return AntennaProblem(antenna).empty() ? antenna : Antenna();
}

Configuration::Configuration(const Common::Settings& settings, Diagnostics& diagnostics)
    : settings_(&settings), diagnostics_(&diagnostics), modes_(DefaultModes()) {
  for (std::size_t url = 0; url < kUrls.size(); ++url) urls_.at(url) = kUrls.at(url).default_text;
}

void Configuration::Load() {
  const auto text = [&](const char* section, const std::string& key, const char* default_text) {
    return settings_->GetStringSetting(kProductName, section, key, default_text);
  };
  const auto flag = [&](const char* section, const char* key, bool default_value) {
    return settings_->GetBooleanSetting(kProductName, section, key, BooleanText(default_value));
  };
  engine_ = settings_->GetIntegerSetting(kProductName, kConfiguration, kEngineKey,
                                         std::to_string(default_engine_));
  if (engine_ < 0 || engine_ >= kEngineCount) engine_ = default_engine_;
  for (const Station station : {Station::kLocal, Station::kDX}) {
    antennas_.at(static_cast<std::size_t>(station)) = StoredAntenna(*settings_, station);
  }
  distance_miles_ = flag(kConfiguration, kDistanceMilesKey, true);
  diag_mode_ = flag(kConfiguration, kDiagModeKey, false);
  download_ssn_at_start_ = flag(kConfiguration, kDownloadSsnKey, true);
  LoadUrls();
  freq_dependent_enabled_ = flag(kPerBand, kFreqDependentEnabledKey, false);
  for (std::size_t band = 0; band < kBandCount; ++band) {
    bands_.at(band) = {text(kPerBand, BandKey(kTakeoffKey, band), ""),
                       text(kPerBand, BandKey(kPowerKey, band), "")};
  }
  modes_ = StoredModes(*settings_);
  show_tool_tips_ = flag(kGeneral, kShowToolTipsKey, true);
  dual_monitor_ = flag(kWindows, kDualMonitorKey, false);
}

void Configuration::LoadUrls() {
  for (std::size_t url = 0; url < kUrls.size(); ++url) {
    urls_.at(url) = settings_->GetStringSetting(kProductName, kConfiguration, kUrls.at(url).key,
                                                kUrls.at(url).default_text);
  }
  std::string& page = urls_.at(static_cast<std::size_t>(Address::kURL1));
  if (page != kFormerEnthusiastsPage) return;
  page = DefaultUrl(Address::kURL1);
  diagnostics_->Trap("IoncapConfig.Load", [&] {
    settings_->Store().SaveSetting(kProductName, kConfiguration, "URL1", page);
  });
}

bool Configuration::SetEngine(int engine) {
  if (engine < 0 || engine >= kEngineCount) return false;
  return Change(Item::kEngine, engine_, engine,
                {{kConfiguration, kEngineKey, std::to_string(engine)}});
}

bool Configuration::SetAntenna(Station station, const Antenna& antenna) {
  if (!AntennaProblem(antenna).empty()) return false;
  return Change(Item::kAntennas, antennas_.at(static_cast<std::size_t>(station)), antenna,
                {{kAntennas, StationKey(station, kAntennaKey), antenna.file},
                 {kAntennas, StationKey(station, kAntennaGainKey), antenna.gain},
                 {kAntennas, StationKey(station, kAntennaAzimuthKey), antenna.azimuth}});
}

bool Configuration::SetDistanceMiles(bool miles) {
  return Change(Item::kDistanceMiles, distance_miles_, miles,
                {{kConfiguration, kDistanceMilesKey, BooleanText(miles)}});
}

bool Configuration::SetFreqDependentEnabled(bool enabled) {
  return Change(Item::kFreqDependent, freq_dependent_enabled_, enabled,
                {{kPerBand, kFreqDependentEnabledKey, BooleanText(enabled)}});
}

bool Configuration::SetBand(std::size_t band, const BandSettings& settings) {
  return Change(Item::kFreqDependent, bands_.at(band), settings,
                {{kPerBand, BandKey(kTakeoffKey, band), settings.takeoff},
                 {kPerBand, BandKey(kPowerKey, band), settings.power}});
}

bool Configuration::SetModes(const std::vector<ModeSettings>& modes) {
  std::vector<ModeSettings> accepted;
  std::vector<SettingEntry> entries;
  for (const ModeSettings& mode : modes) {
    // The store keeps texts without the blanks around them.
    const std::string name(Trim(mode.mode));
    const std::string snr(Trim(mode.snr));
    if (!IsNewModeName(accepted, name)) return false;
    accepted.push_back({name, snr});
    entries.push_back({kPerMode, kModeKey + name, snr});
  }
  entries.push_back({kPerMode, kModesKey, ModeList(accepted)});
  return Change(Item::kModes, modes_, accepted, entries);
}

bool Configuration::SetUrl(Address address, const std::string& text) {
  const auto index = static_cast<std::size_t>(address);
  return Change(Item::kUrls, urls_.at(index), text, {{kConfiguration, kUrls.at(index).key, text}});
}

bool Configuration::SetDiagMode(bool on) {
  return Change(Item::kDiagMode, diag_mode_, on, {{kConfiguration, kDiagModeKey, BooleanText(on)}});
}

bool Configuration::SetShowToolTips(bool show) {
  return Change(Item::kShowToolTips, show_tool_tips_, show,
                {{kGeneral, kShowToolTipsKey, BooleanText(show)}});
}

bool Configuration::SetDualMonitor(bool dual) {
  return Change(Item::kDualMonitor, dual_monitor_, dual,
                {{kWindows, kDualMonitorKey, BooleanText(dual)}});
}

bool Configuration::SetDownloadSsnAtStart(bool download) {
  return Change(Item::kDownloadSsnAtStart, download_ssn_at_start_, download,
                {{kConfiguration, kDownloadSsnKey, BooleanText(download)}});
}

void Configuration::SaveUrls() {
  std::vector<SettingEntry> entries;
  for (std::size_t url = 0; url < kUrls.size(); ++url) {
    entries.push_back({kConfiguration, kUrls.at(url).key, urls_.at(url)});
  }
  diagnostics_->Trap("IoncapConfig.Save", [&] { settings_->Store().Save(kProductName, entries); });
}

template <class Value>
bool Configuration::Change(Item item, Value& member, const Value& value,
                           const std::vector<SettingEntry>& entries) {
  if (member == value) return true;
  member = value;
  const bool saved = diagnostics_->Trap("IoncapConfig.Save",
                                        [&] { settings_->Store().Save(kProductName, entries); });
  // A listener may add further listeners.
  const std::vector<Listener> listeners = listeners_;
  for (const Listener& listener : listeners) listener(item);
  return saved;
}

std::vector<ModeSettings> DefaultModes() {
  /// The required signal-to-noise ratio of a mode, in the bandwidth that is usual for it. For the
  /// digital modes the bandwidth is always 2500 Hz, and the ratio is the weakest that their
  /// decoders are said to copy.
  struct UsualSnr {
    const char* mode;
    double snr;        // dB
    double bandwidth;  // Hz
  };
  static constexpr UsualSnr kUsual[] = {
      {"CW", 0, 250},      {"SSB", 10, 2700},  {"AM", 13, 6000},   {"FM", 15, 12500},
      {"RTTY", 12, 250},   {"PSK31", 9, 62.5}, {"FT8", -21, 2500}, {"FT4", -17.5, 2500},
      {"JT65", -25, 2500}, {"JT9", -27, 2500}, {"JS8", -24, 2500}, {"OLIVIA", -12, 2500},
      {"DV", -2, 3000},
  };
  std::vector<ModeSettings> modes;
  for (const UsualSnr& usual : kUsual) {
    // In 1 Hz there is less noise by this factor. Round up, so that the whole number of dB is
    // enough.
    const double in_one_hertz = usual.snr + 10.0 * std::log10(usual.bandwidth);
    modes.push_back({usual.mode, FixedText(std::ceil(in_one_hertz), 0)});
  }
  return modes;
}

}  // namespace skyhop
