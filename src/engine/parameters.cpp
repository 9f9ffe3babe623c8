#include "engine/parameters.h"

#include <array>
#include <vector>

#include "common/dates.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr std::array<const char*, 5> kDXPowers = {"5", "20", "100", "500", "1500"};
constexpr std::int16_t kNoiseOptions = 4;

bool IsOption(int index, std::size_t count) {
  return index >= 0 && index < static_cast<int>(count);
}

}  // namespace

Parameters::Parameters(PredictionPanel& panel, UserMessages& messages,
                       const Common::Settings& settings, Diagnostics& diagnostics)
    : panel_(&panel), messages_(&messages), settings_(&settings), diagnostics_(&diagnostics) {}

void Parameters::SetPredictionPower(const std::string& power) {
  diagnostics_->DebugLog("IONCAPModule.SetPredictionPower, thePower = " + power);
  power_ = power;
}

void Parameters::SetPredictionSNR(const std::string& snr) {
  diagnostics_->DebugLog("IONCAPModule.SetPredictionSNR, theSNR = " + snr);
  snr_ = snr;
}

void Parameters::SetPredictionTakeoff(const std::string& takeoff) {
  diagnostics_->DebugLog("IONCAPModule.SetPredictionTakeoff, theTakeoff = " + takeoff);
  takeoff_ = takeoff;
}

void Parameters::SetPredictionNoise(std::int16_t noise) {
  diagnostics_->DebugLog("IONCAPModule.SetPredictionNoise, theNoise = " + std::to_string(noise));
  noise_ = noise;
}

void Parameters::SetLastPrefix(const std::string& prefix) {
  last_prefix_ = prefix;
  // A label takes a single "&" for the mark of a shortcut.
  panel_->SetText(PanelText::kLastPrefix, ReplaceAll(prefix, "&", "&&"));
}

void Parameters::SetPrefix() {
  diagnostics_->DebugLog("IONCAPModule.SetPrefix: " + last_prefix_);
  prefix_ = last_prefix_;
}

void Parameters::SetReceiverLatitude(const std::string& text) {
  SetAngle("IONCAPModule.SetReceiverLatitude", text, Role::kReceiver, Part::kLatitude);
}

void Parameters::SetReceiverLongitude(const std::string& text) {
  SetAngle("IONCAPModule.SetReceiverLongitude", text, Role::kReceiver, Part::kLongitude);
}

void Parameters::SetTransmitterLatitude(const std::string& text) {
  SetAngle("IONCAPModule.SetTransmitterLatitude", text, Role::kTransmitter, Part::kLatitude);
}

void Parameters::SetTransmitterLongitude(const std::string& text) {
  SetAngle("IONCAPModule.SetTransmitterLongitude", text, Role::kTransmitter, Part::kLongitude);
}

void Parameters::SetAngle(const std::string& operation, const std::string& text, Role role,
                          Part part) {
  diagnostics_->Trap(operation, [&] {
    Position& position = role == Role::kReceiver ? receiver_ : transmitter_;
    Angle& angle = part == Part::kLatitude ? position.latitude : position.longitude;
    angle = LatLonModule::ParseAngle(text, *diagnostics_);
    if (LatLonModule::IsUndefined(angle)) return;

    const int direction = panel_->Choice(PanelChoice::kPredictSignals);
    const bool from = direction == direction_option::kFromTheDXStation;
    const bool to = direction == direction_option::kToTheDXStation;
    if (!from && !to) return;
    const bool local = from == (role == Role::kReceiver);
    if (part == Part::kLatitude) {
      panel_->SetText(local ? PanelText::kLocalLat : PanelText::kDXLat,
                      LatLonModule::LatitudeString(position));
    } else {
      panel_->SetText(local ? PanelText::kLocalLon : PanelText::kDXLon,
                      LatLonModule::LongitudeString(position));
    }
    panel_->StationsChanged();
  });
}

std::string Parameters::DXPower() const {
  return diagnostics_->Trap("IONCAPModule.DXPower", std::string("100"), [&] {
    const int index = panel_->Choice(PanelChoice::kDXPwr);
    return std::string(
        IsOption(index, kDXPowers.size()) ? kDXPowers.at(static_cast<std::size_t>(index)) : "100");
  });
}

std::int16_t Parameters::LocalNoiseIndex() const {
  return diagnostics_->Trap("IONCAPModule.LocalNoiseIndex", std::int16_t{3}, [&] {
    const int index = panel_->Choice(PanelChoice::kLocalNoiseLevel);
    return IsOption(index, kNoiseOptions) ? static_cast<std::int16_t>(index) : std::int16_t{3};
  });
}

std::int16_t Parameters::DXNoiseIndex() const {
  return diagnostics_->Trap("IONCAPModule.DXNoiseIndex", std::int16_t{2}, [&] {
    const int index = panel_->Choice(PanelChoice::kDXNoiseLevel);
    return IsOption(index, kNoiseOptions) ? static_cast<std::int16_t>(index) : std::int16_t{2};
  });
}

// Validation. A failed range check tells its own message first and the validation then its own one
// as well: users and support know the pair.

struct Parameters::Rule {
  std::string text;
  const char* missing;
  bool (Parameters::*in_range)(const std::string&);
  const char* illegal;
};

bool Parameters::PredictionParametersValid() {
  return diagnostics_->Trap("IONCAPModule.PredictionParametersValid", false, [&] {
    if (!ParseDate(date_)) return Refuse("Illegal Date");

    const std::string flux = panel_->Text(PanelText::kFlux);
    const bool has_flux = !Trim(flux).empty();
    if (!has_flux && Trim(panel_->Text(PanelText::kSSN)).empty()) {
      return Refuse("Illegal Solar Flux and SSN");
    }
    if (has_flux && !SolarFluxValid(flux)) {
      ParameterError("Illegal Solar Flux");
      return false;
    }
    const std::array<Rule, 5> rules = {{
        {panel_->Text(PanelText::kKindex), "No Geomagnetic K-index specified",
         &Parameters::KindexValid, "Illegal Geomagnetic K-index"},
        {power_, "No Transmitter Power specified", &Parameters::PowerValid,
         "Illegal Transmitter Power"},
        {snr_, "No SNR specified", &Parameters::SNRValid, "Illegal SNR"},
        {panel_->Text(PanelText::kAvail), "No Availability specified",
         &Parameters::AvailabilityValid, "Illegal Availability"},
        {takeoff_, "No Transmitter TakeOff Angle specified", &Parameters::TakeoffValid,
         "Illegal Transmitter TakeOff Angle"},
    }};
    for (const Rule& rule : rules) {
      if (!Present(rule.text, rule.missing)) return false;
      if (!(this->*rule.in_range)(rule.text)) {
        ParameterError(rule.illegal);
        return false;
      }
    }
    return true;
  });
}

bool Parameters::SolarFluxInRange(const std::string& flux) {
  const double value = LeadingNumber(flux);
  return value >= 64 && value <= 400;
}

bool Parameters::KindexInRange(const std::string& k_index) {
  // The bound is far above the index's own scale on purpose: it only keeps out typing errors.
  const double value = LeadingNumber(k_index);
  return value >= 0 && value <= 20;
}

bool Parameters::PowerInRange(const std::string& power) {
  return LeadingNumber(power) >= 0;
}

bool Parameters::PowerFitsCard(const std::string& power) {
  return LeadingNumber(power) <= 999990;
}

bool Parameters::SunspotNumberFitsCard(const std::string& sunspot_number) {
  return LeadingNumber(sunspot_number) <= 999;
}

bool Parameters::SNRInRange(const std::string& snr) {
  const double value = LeadingNumber(snr);
  return value >= -30 && value < 100;
}

bool Parameters::AvailabilityInRange(const std::string& availability) {
  const double value = LeadingNumber(availability);
  return value >= 0 && value < 100;
}

bool Parameters::TakeoffInRange(const std::string& takeoff) {
  const double value = LeadingNumber(takeoff);
  return value >= 0 && value <= 90;
}

bool Parameters::SolarFluxValid(const std::string& flux) {
  return InRange(SolarFluxInRange(flux), "Illegal solar flux");
}

bool Parameters::KindexValid(const std::string& k_index) {
  return InRange(KindexInRange(k_index), "Illegal geomagnetic K-index");
}

bool Parameters::PowerValid(const std::string& power) {
  return InRange(PowerInRange(power), "Illegal Transmitter power");
}

bool Parameters::SNRValid(const std::string& snr) {
  return InRange(SNRInRange(snr), "Illegal SNR");
}

bool Parameters::AvailabilityValid(const std::string& availability) {
  return InRange(AvailabilityInRange(availability), "Illegal Availability");
}

bool Parameters::TakeoffValid(const std::string& takeoff) {
  return InRange(TakeoffInRange(takeoff), "Illegal transmitter takeoff angle");
}

bool Parameters::InRange(bool in_range, const std::string& message) {
  return in_range || Refuse(message);
}

bool Parameters::Present(const std::string& text, const std::string& message) {
  return !Trim(text).empty() || Refuse(message);
}

bool Parameters::Refuse(const std::string& message) {
  panel_->RestoreWindow();
  ParameterError(message);
  return false;
}

std::string Parameters::ValidatedSNR(const std::string& snr) {
  const double value = LeadingNumber(snr);
  if (value < -30) return "-30";
  if (value >= 100) return "99";
  return snr;
}

void Parameters::ParameterError(const std::string& text) {
  diagnostics_->Trap("IONCAPModule.ParameterError", [&] {
    messages_->Show(text, kProductName);
    diagnostics_->DebugLog("IONCAPModule.ParameterError: " + text);
  });
}

}  // namespace skyhop::IONCAPModule
