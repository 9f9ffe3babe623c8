#include "engine/deck_parameters.h"

#include <algorithm>
#include <cmath>

#include "common/dates.h"
#include "common/errors.h"
#include "common/numbers.h"

namespace skyhop::IONCAPModule {

DeckParameters ReadDeckParameters(const PredictionPanel& panel, const Parameters& parameters) {
  const auto date = ParseDate(parameters.Date());
  if (!date) {
    throw Error(errors::kTypeMismatch,
                "Type mismatch: \"" + parameters.Date() + "\" is not a date");
  }
  DeckParameters deck;
  deck.short_path = panel.Choice(PanelChoice::kPath) == path_option::kShort;
  deck.transmitter = parameters.GetTransmitterLocation();
  deck.receiver = parameters.GetReceiverLocation();
  deck.power = RoundToLong(LeadingNumber(parameters.Power()));
  deck.takeoff = RoundToInteger(LeadingNumber(parameters.Takeoff()));
  deck.availability = RoundToInteger(LeadingNumber(panel.Text(PanelText::kAvail)));
  deck.snr = RoundToInteger(LeadingNumber(parameters.Snr()));
  deck.noise = parameters.Noise();
  deck.year = RoundToInteger(static_cast<int>(date->year()));
  deck.month = RoundToInteger(static_cast<unsigned>(date->month()));
  deck.sunspot_number = SunspotNumber(StoreSingle(LeadingNumber(panel.Text(PanelText::kSSN))),
                                      RoundToInteger(LeadingNumber(panel.Text(PanelText::kFlux))));
  return deck;
}

float SunspotNumber(float given, std::int16_t solar_flux) {
  if (given != 0) return given;
  const double derived = 33.52 * std::sqrt(std::max(solar_flux + 85.12, 0.0)) - 408.99;
  // Without a flux the formula would go far below zero; a sunspot number of 0 was meant then.
  return static_cast<float>(std::max(std::nearbyint(derived), 0.0));
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
