#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/antenna.h"
#include "engine/prediction_form.h"
#include "engine/results_table.h"
#include "geo/lat_lon.h"

namespace skyhop {

/// The one parameter set that every deck is written from: the texts of a form in the roles that the
/// direction gives to the stations.
struct ParameterSet {
  bool to_dx = true;  ///< your station transmits to the DX station
  Position transmitter;
  Position receiver;
  Antenna transmitter_antenna;
  Antenna receiver_antenna;
  std::string power = "1500";  ///< of the transmitter, watts
  std::string takeoff = "3";   ///< minimum take-off angle of the transmit antenna, degrees
  std::string snr = "24";      ///< required SNR, dB in 1 Hz
  std::int16_t noise = 2;      ///< man-made noise at the receiver, 0 "Industrial" to 3 "Remote"
  std::string path = "Short Path";
  std::string date;    ///< UTC, "dd-mmm-yy"
  std::string prefix;  ///< call sign prefix of the DX station
  std::string flux;
  std::string sunspot_number;
  std::string k_index;
  std::string availability;  ///< required reliability, percent
  EngineChoice engine = EngineChoice::kNone;

  [[nodiscard]] const Position& Local() const { return to_dx ? transmitter : receiver; }
  [[nodiscard]] const Position& DX() const { return to_dx ? receiver : transmitter; }

  friend bool operator==(const ParameterSet&, const ParameterSet&) = default;
};

/// Everything that a prediction depends on, as numbers. Each deck rounds them as its cards demand.
struct PredictionInputs {
  bool to_dx = true;
  bool short_path = true;
  Position transmitter;
  Position receiver;
  double power = 0;         ///< watts
  double takeoff = 0;       ///< degrees
  double availability = 0;  ///< required reliability, percent
  double snr = 0;           ///< required SNR, dB in 1 Hz
  std::int16_t noise = 0;   ///< man-made noise index
  std::chrono::year_month_day date;
  float sunspot_number = 0;  ///< smoothed sunspot number, given or derived
  float k_index = 0;         ///< geomagnetic K index
  Antenna transmitter_antenna;
  Antenna receiver_antenna;
  std::string prefix;  ///< of the DX station, for the label of a deck
  EngineChoice engine = EngineChoice::kNone;

  [[nodiscard]] int Year() const { return static_cast<int>(date.year()); }
  [[nodiscard]] int Month() const { return static_cast<int>(static_cast<unsigned>(date.month())); }

  friend bool operator==(const PredictionInputs&, const PredictionInputs&) = default;
};

namespace IONCAPModule {

/// The parameter set of a form. Coordinates that are no valid latitude or longitude are undefined.
/// The set has no prefix.
[[nodiscard]] ParameterSet ParametersOf(const PredictionForm& form);

/// Why no prediction can be made from `set`: the messages for the user in their order, those of the
/// first fault only. None when the set is valid.
[[nodiscard]] std::vector<std::string> FaultsOf(const ParameterSet& set);

/// The numbers of a set. A number is the leading number of its text.
/// Throws Error 6 for a number beyond its type's range, Error 13 when the date is not one.
[[nodiscard]] PredictionInputs InputsOf(const ParameterSet& set);

// Range checks. They read a text without a number as 0.
[[nodiscard]] bool SolarFluxInRange(const std::string& flux);
[[nodiscard]] bool KindexInRange(const std::string& k_index);
[[nodiscard]] bool PowerInRange(const std::string& power);
[[nodiscard]] bool SNRInRange(const std::string& snr);
[[nodiscard]] bool AvailabilityInRange(const std::string& availability);
[[nodiscard]] bool TakeoffInRange(const std::string& takeoff);

/// Whether the engines' cards have room for the value: at most 999990 W and 999.
[[nodiscard]] bool PowerFitsCard(const std::string& power);
[[nodiscard]] bool SunspotNumberFitsCard(const std::string& sunspot_number);
inline constexpr const char* kPowerTooLarge = "The engines cannot take more than 999990 W";
inline constexpr const char* kSunspotNumberTooLarge =
    "The engines cannot take a sunspot number above 999";

/// The number at the start of a text, 0 when there is none. Throws Error 6 for one beyond the range
/// of double.
[[nodiscard]] double DeckNumber(const std::string& text);

/// The sunspot number that a prediction uses: the given one unless it is 0, else the one that
/// belongs to the solar flux, SSN = 33.52 sqrt(flux + 85.12) - 408.99, rounded to a whole number
/// (a flux of 150 gives 105) and never negative.
[[nodiscard]] float SunspotNumber(float given, std::int16_t solar_flux);
/// Whether that number is derived from the flux.
[[nodiscard]] bool DerivesSunspotNumber(const ParameterSet& set);

/// Degrees of an angle without regard to its hemisphere. The seconds are not used: the cards show
/// hundredths of a degree, and whole minutes are what the users of the engines compare.
[[nodiscard]] float Magnitude(const Angle& angle);

/// "N" or "S", "W" or "E" of an angle.
[[nodiscard]] const char* LatitudeLetter(const Angle& latitude);
[[nodiscard]] const char* LongitudeLetter(const Angle& longitude);

/// The noise code of the SYSTEM card, five columns wide.
[[nodiscard]] const char* NoiseCode(std::int16_t noise_index);

}  // namespace IONCAPModule
}  // namespace skyhop
