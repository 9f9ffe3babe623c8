#pragma once

#include <cstdint>
#include <string>

#include "engine/antenna.h"
#include "engine/results_table.h"

namespace skyhop {

namespace path_option {
inline constexpr int kShort = 0;
inline constexpr int kLong = 1;
}  // namespace path_option

namespace direction_option {
inline constexpr int kFromTheDXStation = 0;
inline constexpr int kToTheDXStation = 1;
}  // namespace direction_option

/// The inputs of a prediction as the user types and chooses them, station by station. The window's
/// controls and the command line's options fill it; the settings store it between runs.
///
/// A choice is the index of an option, -1 for no choice.
struct PredictionForm {
  std::string local_latitude;
  std::string local_longitude;
  std::string dx_latitude;
  std::string dx_longitude;
  Antenna local_antenna;
  Antenna dx_antenna;
  std::string local_power;  ///< watts
  int dx_power = -1;        ///< 0 to 4: 5, 20, 100, 500, 1500 W
  std::string takeoff;      ///< minimum take-off angle, degrees
  int local_noise = -1;     ///< 0 "Industrial", 1 "Residential", 2 "Rural", 3 "Remote"
  int dx_noise = -1;        ///< the same for the DX station
  std::string flux;
  std::string sunspot_number;
  std::string k_index;
  std::string availability;  ///< required reliability, percent
  std::string snr;           ///< required SNR, dB in 1 Hz
  int mode = -1;             ///< the mode whose required SNR is used
  std::string date;          ///< UTC
  int path = path_option::kShort;
  int direction = direction_option::kToTheDXStation;
  EngineChoice engine = EngineChoice::kNone;

  // How the window shows a prediction.
  bool distance_miles = true;  ///< distances in statute miles, else in kilometres
  bool show_open_bands = true;
  bool show_critical_frequencies = true;
  bool dx_tracks_tessera = true;

  /// Whether your station transmits to the DX station.
  [[nodiscard]] bool ToDX() const { return direction == direction_option::kToTheDXStation; }
};

namespace IONCAPModule {

/// Watts of the DX station: the caption of the selected option, "100" when none is selected.
[[nodiscard]] std::string DXPower(const PredictionForm& form);
/// Noise index of your station, 3 when no option is selected.
[[nodiscard]] std::int16_t LocalNoiseIndex(const PredictionForm& form);
/// Noise index of the DX station, 2 when no option is selected.
[[nodiscard]] std::int16_t DXNoiseIndex(const PredictionForm& form);

}  // namespace IONCAPModule
}  // namespace skyhop
