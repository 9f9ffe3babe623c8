#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "engine/parameters.h"
#include "engine/prediction_panel.h"

namespace skyhop::IONCAPModule {

/// The parameter set as the script cards want it: texts turned into numbers, which each script
/// rounds as its cards demand.
struct DeckParameters {
  bool short_path = true;
  Position transmitter;
  Position receiver;
  double power = 0;         ///< watts
  double takeoff = 0;       ///< degrees
  double availability = 0;  ///< required reliability, percent
  double snr = 0;           ///< required SNR, dB in 1 Hz
  std::int16_t noise = 0;   ///< man-made noise index
  std::int16_t year = 0;
  std::int16_t month = 0;    ///< 1 to 12
  float sunspot_number = 0;  ///< smoothed sunspot number, given or derived
  float k_index = 0;         ///< geomagnetic K index
  Antenna transmitter_antenna;
  Antenna receiver_antenna;
  /// Names of the stations, printable ASCII: which of the two it is and the DX station's prefix or
  /// the grid square.
  std::string transmitter_name;
  std::string receiver_name;

  friend bool operator==(const DeckParameters&, const DeckParameters&) = default;
};

/// The number at the start of a text, 0 when there is none. Throws Error 6 for one beyond the range
/// of double.
[[nodiscard]] double DeckNumber(const std::string& text);

/// Reads the parameters. Numbers are the leading numbers of their texts.
/// Throws Error 6 for a number beyond its type's range, Error 13 when the date is not one.
[[nodiscard]] DeckParameters ReadDeckParameters(const PredictionPanel& panel,
                                                const Parameters& parameters,
                                                Diagnostics& diagnostics);

/// The same for a prediction beside the chart's, which has no part in the parameter set: stations,
/// power, take-off angle and noise come from the panel as they are there now, in the roles of the
/// selected direction. Path and required SNR are left for the caller.
/// Throws Error 5 when a station's coordinates cannot be read, Error 6 as above.
[[nodiscard]] DeckParameters ReadPointParameters(const PredictionPanel& panel,
                                                 const Parameters& parameters,
                                                 std::chrono::year_month_day date,
                                                 Diagnostics& diagnostics);

/// The same without the stations' names, which no result depends on.
[[nodiscard]] DeckParameters ReadUnnamedParameters(const PredictionPanel& panel,
                                                   const Parameters& parameters,
                                                   std::chrono::year_month_day date,
                                                   Diagnostics& diagnostics);

/// The sunspot number that a prediction uses: the given one unless it is 0, else the one that
/// belongs to the solar flux, SSN = 33.52 sqrt(flux + 85.12) - 408.99, rounded to a whole number
/// (a flux of 150 gives 105) and never negative.
[[nodiscard]] float SunspotNumber(float given, std::int16_t solar_flux);

/// Degrees of an angle without regard to its hemisphere. The seconds are not used: the cards show
/// hundredths of a degree, and whole minutes are what the users of the engines compare.
[[nodiscard]] float Magnitude(const Angle& angle);

/// "N" or "S", "W" or "E" of an angle.
[[nodiscard]] const char* LatitudeLetter(const Angle& latitude);
[[nodiscard]] const char* LongitudeLetter(const Angle& longitude);

/// The noise code of the SYSTEM card, five columns wide.
[[nodiscard]] const char* NoiseCode(std::int16_t noise_index);

}  // namespace skyhop::IONCAPModule
