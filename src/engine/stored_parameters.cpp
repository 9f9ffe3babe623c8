// The part of the parameter set that lives in the settings: restoring, saving, your station.

#include <array>
#include <vector>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "engine/parameters.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr const char* kSection = "Configuration";
constexpr const char* kTessera = "Tessera";
constexpr const char* kQth = "QTH";
constexpr const char* kNoMode = "-1";

/// Texts that are restored and saved as they are.
struct TextSetting {
  const char* key;
  PanelText text;
  const char* default_text;
};

constexpr std::array<TextSetting, 6> kTexts = {{
    {"SFI", PanelText::kFlux, "100"},
    {"SSN", PanelText::kSSN, ""},
    {"Kindex", PanelText::kKindex, "1"},
    {"Availability", PanelText::kAvail, "10"},
    {"TakeoffAngle", PanelText::kLocalTakeOff, "3"},
    {"Power", PanelText::kLocalPwr, "1500"},
}};

constexpr std::array<TextSetting, 4> kWebPages = {{
    {"URL0", PanelText::kURL0, "https://www.swpc.noaa.gov/communities/radio-communications"},
    {"URL1", PanelText::kURL1, "https://www.swpc.noaa.gov/communities/space-weather-enthusiasts"},
    {"URL2", PanelText::kURL2, "https://services.swpc.noaa.gov/images/planetary-k-index.gif"},
    {"URL3", PanelText::kURL3, ""},
}};
constexpr const char* kFormerEnthusiastsPage =
    "http://www.swpc.noaa.gov/communities/space-weather-enthusiasts";

/// Saved here; the space-weather modules restore them.
constexpr std::array<TextSetting, 3> kDownloadAddresses = {{
    {"SSNURL", PanelText::kSSNURL, ""},
    {"SFIURL", PanelText::kSFIURL, ""},
    {"WWVURL", PanelText::kWWVURL, ""},
}};

struct CheckSetting {
  const char* key;
  PanelCheck check;
};

constexpr std::array<CheckSetting, 2> kChartChecks = {{
    {"ShowOpenBands", PanelCheck::kOpenBandEnable},
    {"ShowCriticalFrequencies", PanelCheck::kPlotEnable},
}};
constexpr const char* kTracksTessera = "DXTracksTessera";

struct OptionSetting {
  const char* key;
  PanelChoice choice;
  int count;
  int default_index;
};

constexpr std::array<OptionSetting, 4> kOptions = {{
    {"DXPower", PanelChoice::kDXPwr, 5, 2},
    {"NoiseLevel", PanelChoice::kDXNoiseLevel, 4, 2},
    // The key was misspelt in the first release and has to stay so.
    {"LcoalNoiseLevel", PanelChoice::kLocalNoiseLevel, 4, 2},
    {"PredictSignals", PanelChoice::kPredictSignals, 2, 1},
}};

}  // namespace

std::string Parameters::Stored(const std::string& key, const std::string& default_text) const {
  return settings_->GetStringSetting(kProductName, kSection, key, default_text);
}

/// The stored index of an option group; one that the group does not have is as good as none.
int Parameters::StoredOption(const std::string& key, int count, int default_index) const {
  const int index =
      settings_->GetIntegerSetting(kProductName, kSection, key, std::to_string(default_index));
  return index >= 0 && index < count ? index : default_index;
}

void Parameters::Initialize() {
  diagnostics_->Trap("IONCAPModule.Initialize", [&] {
    for (const TextSetting& setting : kTexts) {
      panel_->SetText(setting.text, Stored(setting.key, setting.default_text));
    }
    SetPredictionTakeoff(panel_->Text(PanelText::kLocalTakeOff));
    SetPredictionPower(panel_->Text(PanelText::kLocalPwr));
    for (const CheckSetting& setting : kChartChecks) {
      panel_->SetChecked(setting.check, LeadingNumber(Stored(setting.key, "1")) != 0);
    }
    panel_->SetChecked(
        PanelCheck::kDXTracksTesseraLocation,
        settings_->GetIntegerSetting(kProductName, kSection, kTracksTessera, "1") != 0);
    for (const OptionSetting& setting : kOptions) {
      int index = StoredOption(setting.key, setting.count, setting.default_index);
      if (setting.choice == PanelChoice::kDXNoiseLevel) {
        // The outer options can be chosen for a session but are not restored for the DX station.
        if (index == 0) index = 1;
        if (index == 3) index = 2;
      }
      panel_->SetChoice(setting.choice, index);
    }
    RestoreModeAndSnr();
    RestoreWebPages();
    LocateQTH();
  });
}

void Parameters::RestoreModeAndSnr() {
  const std::string mode = Stored("SNRMode", kNoMode);
  int index = -1;
  try {
    index = ToInteger(mode);
  } catch (const Error&) {
    // What is no index is no mode either.
  }
  if (index < 0) {
    panel_->SetChoice(PanelChoice::kModeSNRCombo, -1);
    const std::string snr = Stored("SNR", "24");
    panel_->SetText(PanelText::kSNR, snr);
    SetPredictionSNR(snr);
    return;
  }
  panel_->SetChoice(PanelChoice::kModeSNRCombo, index);
}

void Parameters::RestoreWebPages() {
  for (const TextSetting& page : kWebPages) {
    std::string address = Stored(page.key, page.default_text);
    if (page.text == PanelText::kURL1 && address == kFormerEnthusiastsPage) {
      address = page.default_text;
      diagnostics_->Trap("IONCAPModule.Initialize", [&] {
        settings_->Store().SaveSetting(kProductName, kSection, page.key, address);
      });
    }
    panel_->SetText(page.text, address);
  }
}

void Parameters::Finalize() {
  diagnostics_->Trap("IONCAPModule.Finalize", [&] {
    std::vector<SettingEntry> entries;
    const auto add = [&](const char* key, const std::string& value) {
      entries.push_back({kSection, key, value});
    };
    for (const TextSetting& setting : kTexts) add(setting.key, panel_->Text(setting.text));
    for (const TextSetting& page : kWebPages) add(page.key, panel_->Text(page.text));
    for (const TextSetting& url : kDownloadAddresses) add(url.key, panel_->Text(url.text));
    for (const CheckSetting& setting : kChartChecks) {
      add(setting.key, panel_->Checked(setting.check) ? "1" : "0");
    }
    add(kTracksTessera, panel_->Checked(PanelCheck::kDXTracksTesseraLocation) ? "1" : "0");
    for (const OptionSetting& setting : kOptions) {
      const int index = panel_->Choice(setting.choice);
      add(setting.key, std::to_string(index < 0 ? setting.default_index : index));
    }
    const int mode = panel_->Choice(PanelChoice::kModeSNRCombo);
    add("SNRMode", std::to_string(mode));
    // With a mode chosen the field shows the mode's value, not the user's own.
    if (mode < 0) add("SNR", panel_->Text(PanelText::kSNR));
    add("XLat", panel_->Text(PanelText::kLocalLat));
    add("Xlon", panel_->Text(PanelText::kLocalLon));
    settings_->Store().Save(kProductName, entries);
  });
}

/// One coordinate of the location application's station. A value that does not convert is left at
/// what was read so far: half a location is better than none.
Angle Parameters::TesseraAngle(const std::string& degrees_text, const std::string& prefix,
                               int most) {
  const auto sixtieths = [&](const char* name) {
    const std::int16_t value = settings_->GetIntegerSetting(kTessera, kQth, prefix + name, "0");
    return value < 0 || value > 60 ? std::int16_t{0} : value;
  };
  Angle angle{0, 0, 0, 1};
  try {
    angle.degrees = ToInteger(degrees_text);
  } catch (const Error&) {
    angle.degrees = 0;
  }
  angle.minutes = sixtieths("Min");
  angle.seconds = sixtieths("Sec");
  angle.sign = settings_->GetIntegerSetting(kTessera, kQth, prefix + "Sign", "1");
  if (angle.degrees < 0) {
    // The most negative value has no positive counterpart, and is out of range in any case.
    angle.degrees = RoundToInteger(angle.degrees == INT16_MIN ? 0 : -angle.degrees);
    angle.sign = -1;
  }
  if (angle.degrees + angle.minutes / 60.0 + angle.seconds / 3600.0 > most) angle.degrees = 0;
  return angle;
}

void Parameters::LocateQTH() {
  diagnostics_->Trap("IONCAPModule.LocateQTH", [&] {
    const std::string latitude = settings_->GetStringSetting(kTessera, kQth, "LatDeg", "");
    const std::string longitude = settings_->GetStringSetting(kTessera, kQth, "LonDeg", "");
    if (latitude.empty() && longitude.empty()) {
      panel_->SetText(PanelText::kLocalLat, Stored("XLat", ""));
      panel_->SetText(PanelText::kLocalLon, Stored("Xlon", ""));
      return;
    }
    Position station;
    station.latitude = TesseraAngle(latitude, "Lat", 90);
    station.longitude = TesseraAngle(longitude, "Lon", 180);
    panel_->SetText(PanelText::kLocalLat, LatLonModule::LatitudeString(station));
    panel_->SetText(PanelText::kLocalLon, LatLonModule::LongitudeString(station));
  });
}

}  // namespace skyhop::IONCAPModule
