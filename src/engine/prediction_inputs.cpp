#include "engine/prediction_inputs.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "common/dates.h"
#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr std::array<const char*, 5> kDXPowers = {"5", "20", "100", "500", "1500"};
constexpr std::int16_t kNoiseOptions = 4;

std::int16_t NoiseIndex(int choice, std::int16_t fallback) {
  return choice >= 0 && choice < kNoiseOptions ? static_cast<std::int16_t>(choice) : fallback;
}

Position PositionIn(const std::string& latitude, const std::string& longitude) {
  return {LatLonModule::LatitudeIn(latitude).value_or(LatLonModule::UndefinedAngle()),
          LatLonModule::LongitudeIn(longitude).value_or(LatLonModule::UndefinedAngle())};
}

/// A text that must be there and in range. A text out of range has two messages: users and support
/// know the pair.
struct Rule {
  std::string text;
  const char* missing;
  bool (*in_range)(const std::string&);
  const char* out_of_range;
  const char* illegal;
};

}  // namespace

std::string DXPower(const PredictionForm& form) {
  const int last = static_cast<int>(kDXPowers.size()) - 1;
  if (form.dx_power < 0 || form.dx_power > last) return "100";
  return kDXPowers.at(static_cast<std::size_t>(form.dx_power));
}

std::int16_t LocalNoiseIndex(const PredictionForm& form) {
  return NoiseIndex(form.local_noise, 3);
}

std::int16_t DXNoiseIndex(const PredictionForm& form) {
  return NoiseIndex(form.dx_noise, 2);
}

/// The only place where the direction decides which station transmits.
ParameterSet ParametersOf(const PredictionForm& form) {
  ParameterSet set;
  const bool to = form.ToDX();
  const Position local = PositionIn(form.local_latitude, form.local_longitude);
  const Position dx = PositionIn(form.dx_latitude, form.dx_longitude);
  set.to_dx = to;
  set.transmitter = to ? local : dx;
  set.receiver = to ? dx : local;
  set.transmitter_antenna = to ? form.local_antenna : form.dx_antenna;
  set.receiver_antenna = to ? form.dx_antenna : form.local_antenna;
  set.power = to ? form.local_power : DXPower(form);
  set.noise = to ? DXNoiseIndex(form) : LocalNoiseIndex(form);
  set.takeoff = form.takeoff;
  set.snr = form.snr;
  set.path = form.path == path_option::kShort ? "Short Path" : "Long Path";
  set.date = form.date;
  set.flux = form.flux;
  set.sunspot_number = form.sunspot_number;
  set.k_index = form.k_index;
  set.availability = form.availability;
  set.engine = form.engine;
  return set;
}

std::vector<std::string> FaultsOf(const ParameterSet& set) {
  if (!ParseDate(set.date)) return {"Illegal Date"};
  const bool has_flux = !Trim(set.flux).empty();
  if (!has_flux && Trim(set.sunspot_number).empty()) return {"Illegal Solar Flux and SSN"};
  if (has_flux && !SolarFluxInRange(set.flux)) return {"Illegal solar flux", "Illegal Solar Flux"};
  const std::array<Rule, 5> rules = {{
      {set.k_index, "No Geomagnetic K-index specified", KindexInRange,
       "Illegal geomagnetic K-index", "Illegal Geomagnetic K-index"},
      {set.power, "No Transmitter Power specified", PowerInRange, "Illegal Transmitter power",
       "Illegal Transmitter Power"},
      {set.snr, "No SNR specified", SNRInRange, "Illegal SNR", "Illegal SNR"},
      {set.availability, "No Availability specified", AvailabilityInRange, "Illegal Availability",
       "Illegal Availability"},
      {set.takeoff, "No Transmitter TakeOff Angle specified", TakeoffInRange,
       "Illegal transmitter takeoff angle", "Illegal Transmitter TakeOff Angle"},
  }};
  for (const Rule& rule : rules) {
    if (Trim(rule.text).empty()) return {rule.missing};
    if (!rule.in_range(rule.text)) return {rule.out_of_range, rule.illegal};
  }
  return {};
}

PredictionInputs InputsOf(const ParameterSet& set) {
  const auto date = ParseDate(set.date);
  if (!date) {
    throw Error(errors::kTypeMismatch, "Type mismatch: \"" + set.date + "\" is not a date");
  }
  PredictionInputs inputs;
  inputs.to_dx = set.to_dx;
  inputs.short_path = EqualsIgnoringCase(set.path, "Short Path");
  inputs.transmitter = set.transmitter;
  inputs.receiver = set.receiver;
  inputs.power = DeckNumber(set.power);
  inputs.takeoff = DeckNumber(set.takeoff);
  inputs.availability = DeckNumber(set.availability);
  inputs.snr = DeckNumber(set.snr);
  inputs.noise = set.noise;
  inputs.date = *date;
  inputs.sunspot_number = SunspotNumber(StoreSingle(LeadingNumber(set.sunspot_number)),
                                        RoundToInteger(LeadingNumber(set.flux)));
  inputs.k_index = StoreSingle(LeadingNumber(set.k_index));
  inputs.transmitter_antenna = set.transmitter_antenna;
  inputs.receiver_antenna = set.receiver_antenna;
  inputs.prefix = set.prefix;
  inputs.engine = set.engine;
  return inputs;
}

bool SolarFluxInRange(const std::string& flux) {
  const double value = LeadingNumber(flux);
  return value >= 64 && value <= 400;
}

bool KindexInRange(const std::string& k_index) {
  // The bound is far above the index's own scale on purpose: it only keeps out typing errors.
  const double value = LeadingNumber(k_index);
  return value >= 0 && value <= 20;
}

bool PowerInRange(const std::string& power) {
  return LeadingNumber(power) >= 0;
}

bool SNRInRange(const std::string& snr) {
  const double value = LeadingNumber(snr);
  return value >= -30 && value < 100;
}

bool AvailabilityInRange(const std::string& availability) {
  const double value = LeadingNumber(availability);
  return value >= 0 && value < 100;
}

bool TakeoffInRange(const std::string& takeoff) {
  const double value = LeadingNumber(takeoff);
  return value >= 0 && value <= 90;
}

bool PowerFitsCard(const std::string& power) {
  return LeadingNumber(power) <= 999990;
}

bool SunspotNumberFitsCard(const std::string& sunspot_number) {
  return LeadingNumber(sunspot_number) <= 999;
}

double DeckNumber(const std::string& text) {
  const double value = LeadingNumber(text);
  if (std::isinf(value)) throw Error(errors::kOverflow, "Overflow: " + text.substr(0, 60));
  return value;
}

float SunspotNumber(float given, std::int16_t solar_flux) {
  if (given != 0) return given;
  const double derived = 33.52 * std::sqrt(std::max(solar_flux + 85.12, 0.0)) - 408.99;
  // Without a flux the formula would go far below zero; a sunspot number of 0 was meant then.
  return static_cast<float>(std::max(std::nearbyint(derived), 0.0));
}

bool DerivesSunspotNumber(const ParameterSet& set) {
  return LeadingNumber(set.sunspot_number) == 0 && !Trim(set.flux).empty();
}

float Magnitude(const Angle& angle) {
  return static_cast<float>(angle.degrees + angle.minutes / 60.0);
}

const char* LatitudeLetter(const Angle& latitude) {
  return latitude.sign == -1 ? "N" : "S";
}

const char* LongitudeLetter(const Angle& longitude) {
  return longitude.sign == -1 ? "W" : "E";
}

const char* NoiseCode(std::int16_t noise_index) {
  switch (noise_index) {
    case 0:
      return "  -1.";
    case 1:
      return "  -2.";
    case 2:
      return "  -3.";
    default:
      return "  -4.";
  }
}

}  // namespace skyhop::IONCAPModule
