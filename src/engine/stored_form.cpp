// The part of the parameter set that lives in the settings: restoring, saving, your station.

#include <array>
#include <vector>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/program.h"
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
  std::string PredictionForm::*text;
  const char* default_text;
};

constexpr std::array<TextSetting, 6> kTexts = {{
    {"SFI", &PredictionForm::flux, "100"},
    {"SSN", &PredictionForm::sunspot_number, ""},
    {"Kindex", &PredictionForm::k_index, "1"},
    {"Availability", &PredictionForm::availability, "10"},
    {"TakeoffAngle", &PredictionForm::takeoff, "3"},
    {"Power", &PredictionForm::local_power, "1500"},
}};

constexpr const char* kOpenBands = "ShowOpenBands";
constexpr const char* kCriticalFrequencies = "ShowCriticalFrequencies";
constexpr const char* kTracksTessera = "DXTracksTessera";

struct OptionSetting {
  const char* key;
  int PredictionForm::*choice;
  int count;
  int default_index;
};

constexpr std::array<OptionSetting, 4> kOptions = {{
    {"DXPower", &PredictionForm::dx_power, 5, 2},
    {"NoiseLevel", &PredictionForm::dx_noise, 4, 2},
    // The key was misspelt in the first release and has to stay so.
    {"LcoalNoiseLevel", &PredictionForm::local_noise, 4, 2},
    {"PredictSignals", &PredictionForm::direction, 2, 1},
}};

}  // namespace

std::string Parameters::Stored(const std::string& key, const std::string& default_text) const {
  return settings_->GetStringSetting(kProductName, kSection, key, default_text);
}

/// The stored index of an option group; the default for an index that the group does not have.
int Parameters::StoredOption(const std::string& key, int count, int default_index) const {
  const int index =
      settings_->GetIntegerSetting(kProductName, kSection, key, std::to_string(default_index));
  return index >= 0 && index < count ? index : default_index;
}

PredictionForm Parameters::Initialize() {
  PredictionForm form;
  diagnostics_->Trap("IONCAPModule.Initialize", [&] {
    for (const TextSetting& setting : kTexts) {
      form.*setting.text = Stored(setting.key, setting.default_text);
    }
    SetPredictionTakeoff(form.takeoff);
    SetPredictionPower(form.local_power);
    form.show_open_bands = LeadingNumber(Stored(kOpenBands, "1")) != 0;
    form.show_critical_frequencies = LeadingNumber(Stored(kCriticalFrequencies, "1")) != 0;
    form.dx_tracks_tessera =
        settings_->GetIntegerSetting(kProductName, kSection, kTracksTessera, "1") != 0;
    for (const OptionSetting& setting : kOptions) {
      form.*setting.choice = StoredOption(setting.key, setting.count, setting.default_index);
    }
    // The DX station's outer noise levels hold for a session only.
    if (form.dx_noise == 0) form.dx_noise = 1;
    if (form.dx_noise == 3) form.dx_noise = 2;
    RestoreModeAndSnr(form);
    LocateQTH(form);
  });
  return form;
}

/// With a mode, the SNR is the mode's and is left empty here.
void Parameters::RestoreModeAndSnr(PredictionForm& form) {
  try {
    form.mode = ToInteger(Stored("SNRMode", kNoMode));
  } catch (const Error&) {
    // A text that is no index means no mode.
  }
  if (form.mode >= 0) return;
  form.mode = -1;
  form.snr = Stored("SNR", "24");
  SetPredictionSNR(form.snr);
}

void Parameters::Finalize(const PredictionForm& form) {
  diagnostics_->Trap("IONCAPModule.Finalize", [&] {
    std::vector<SettingEntry> entries;
    const auto add = [&](const char* key, const std::string& value) {
      entries.push_back({kSection, key, value});
    };
    for (const TextSetting& setting : kTexts) add(setting.key, form.*setting.text);
    add(kOpenBands, form.show_open_bands ? "1" : "0");
    add(kCriticalFrequencies, form.show_critical_frequencies ? "1" : "0");
    add(kTracksTessera, form.dx_tracks_tessera ? "1" : "0");
    for (const OptionSetting& setting : kOptions) {
      const int index = form.*setting.choice;
      add(setting.key, std::to_string(index < 0 ? setting.default_index : index));
    }
    add("SNRMode", std::to_string(form.mode));
    // With a mode chosen the field shows the mode's value, not the user's own.
    if (form.mode < 0) add("SNR", form.snr);
    add("XLat", form.local_latitude);
    add("Xlon", form.local_longitude);
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

void Parameters::LocateQTH(PredictionForm& form) {
  diagnostics_->Trap("IONCAPModule.LocateQTH", [&] {
    const std::string latitude = settings_->GetStringSetting(kTessera, kQth, "LatDeg", "");
    const std::string longitude = settings_->GetStringSetting(kTessera, kQth, "LonDeg", "");
    if (latitude.empty() && longitude.empty()) {
      form.local_latitude = Stored("XLat", "");
      form.local_longitude = Stored("Xlon", "");
      return;
    }
    Position station;
    station.latitude = TesseraAngle(latitude, "Lat", 90);
    station.longitude = TesseraAngle(longitude, "Lon", 180);
    form.local_latitude = LatLonModule::LatitudeString(station);
    form.local_longitude = LatLonModule::LongitudeString(station);
  });
}

}  // namespace skyhop::IONCAPModule
