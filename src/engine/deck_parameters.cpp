#include "engine/deck_parameters.h"

#include <algorithm>
#include <cmath>

#include "common/dates.h"
#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "geo/dx_grid.h"

namespace skyhop::IONCAPModule {

namespace {

/// A text as decks can hold it: what is not printable ASCII becomes a question mark.
std::string AsciiText(std::string_view text) {
  std::string ascii;
  for (const char c : text) {
    const bool continues = (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
    if (!continues) ascii += c >= ' ' && c <= '~' ? c : '?';
  }
  return ascii;
}

std::string StationName(const std::string& station, const Position& position,
                        Diagnostics& diagnostics) {
  return AsciiText(station) + " " + DXGridModule::GetGridSquare(position, diagnostics);
}

/// The stations' names, each in the role that it has in the selected direction.
void NameStations(const PredictionPanel& panel, const Parameters& parameters,
                  Diagnostics& diagnostics, DeckParameters& deck) {
  const std::string prefix(Trim(parameters.Prefix()));
  const std::string dx = prefix.empty() ? "DX STATION" : "DX " + prefix;
  const bool to = panel.Choice(PanelChoice::kPredictSignals) == direction_option::kToTheDXStation;
  deck.transmitter_name = StationName(to ? "YOUR STATION" : dx, deck.transmitter, diagnostics);
  deck.receiver_name = StationName(to ? dx : "YOUR STATION", deck.receiver, diagnostics);
}

/// Their antennas in the same way.
void ReadAntennas(const PredictionPanel& panel, DeckParameters& deck) {
  const bool to = panel.Choice(PanelChoice::kPredictSignals) == direction_option::kToTheDXStation;
  deck.transmitter_antenna = panel.AntennaOf(to ? Station::kLocal : Station::kDX);
  deck.receiver_antenna = panel.AntennaOf(to ? Station::kDX : Station::kLocal);
}

/// What holds for both stations.
void ReadConditions(const PredictionPanel& panel, std::chrono::year_month_day date,
                    DeckParameters& deck) {
  deck.availability = DeckNumber(panel.Text(PanelText::kAvail));
  deck.year = RoundToInteger(static_cast<int>(date.year()));
  deck.month = RoundToInteger(static_cast<unsigned>(date.month()));
  deck.sunspot_number = SunspotNumber(StoreSingle(LeadingNumber(panel.Text(PanelText::kSSN))),
                                      RoundToInteger(LeadingNumber(panel.Text(PanelText::kFlux))));
  deck.k_index = StoreSingle(LeadingNumber(panel.Text(PanelText::kKindex)));
}

}  // namespace

double DeckNumber(const std::string& text) {
  const double value = LeadingNumber(text);
  if (std::isinf(value)) throw Error(errors::kOverflow, "Overflow: " + text.substr(0, 60));
  return value;
}

DeckParameters ReadDeckParameters(const PredictionPanel& panel, const Parameters& parameters,
                                  Diagnostics& diagnostics) {
  const auto date = ParseDate(parameters.Date());
  if (!date) {
    throw Error(errors::kTypeMismatch,
                "Type mismatch: \"" + parameters.Date() + "\" is not a date");
  }
  DeckParameters deck;
  deck.short_path = panel.Choice(PanelChoice::kPath) == path_option::kShort;
  deck.transmitter = parameters.GetTransmitterLocation();
  deck.receiver = parameters.GetReceiverLocation();
  deck.power = DeckNumber(parameters.Power());
  deck.takeoff = DeckNumber(parameters.Takeoff());
  deck.snr = DeckNumber(parameters.Snr());
  deck.noise = parameters.Noise();
  ReadConditions(panel, *date, deck);
  NameStations(panel, parameters, diagnostics, deck);
  ReadAntennas(panel, deck);
  return deck;
}

DeckParameters ReadPointParameters(const PredictionPanel& panel, const Parameters& parameters,
                                   std::chrono::year_month_day date, Diagnostics& diagnostics) {
  DeckParameters deck = ReadUnnamedParameters(panel, parameters, date, diagnostics);
  NameStations(panel, parameters, diagnostics, deck);
  return deck;
}

DeckParameters ReadUnnamedParameters(const PredictionPanel& panel, const Parameters& parameters,
                                     std::chrono::year_month_day date, Diagnostics& diagnostics) {
  const auto position = [&](PanelText latitude, PanelText longitude, const char* whose) {
    const Position read{LatLonModule::ParseAngle(panel.Text(latitude), diagnostics),
                        LatLonModule::ParseAngle(panel.Text(longitude), diagnostics)};
    if (LatLonModule::IsUndefined(read)) {
      throw Error(errors::kInvalidCall,
                  std::string(whose) + " coordinates are missing or not valid");
    }
    return read;
  };
  const Position local = position(PanelText::kLocalLat, PanelText::kLocalLon, "Your Station's");
  const Position dx = position(PanelText::kDXLat, PanelText::kDXLon, "the DX station's");
  const bool to = panel.Choice(PanelChoice::kPredictSignals) == direction_option::kToTheDXStation;
  DeckParameters deck;
  deck.transmitter = to ? local : dx;
  deck.receiver = to ? dx : local;
  deck.power = DeckNumber(to ? panel.Text(PanelText::kLocalPwr) : parameters.DXPower());
  deck.takeoff = DeckNumber(panel.Text(PanelText::kLocalTakeOff));
  // Noise is what the receiver hears.
  deck.noise = to ? parameters.DXNoiseIndex() : parameters.LocalNoiseIndex();
  ReadConditions(panel, date, deck);
  ReadAntennas(panel, deck);
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
