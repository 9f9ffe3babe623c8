#pragma once

#include <string>

#include "engine/antenna.h"

namespace skyhop {

/// Texts that the prediction engine reads from and writes into the prediction window. Each stands
/// for the control of that name; the last three are what the window shows about a prediction.
enum class PanelText {
  kLocalLat,
  kLocalLon,
  kDXLat,
  kDXLon,
  kFlux,
  kSSN,
  kKindex,
  kAvail,
  kSNR,
  kLocalPwr,
  kLocalTakeOff,
  kURL0,
  kURL1,
  kURL2,
  kURL3,
  kSSNURL,
  kSFIURL,
  kWWVURL,
  kLastPrefix,
  kSummary,
};

/// Groups of options and lists; the value is the index of the chosen one, -1 when none is.
enum class PanelChoice {
  kLocalNoiseLevel,  ///< 0 "Industrial", 1 "Residential", 2 "Rural", 3 "Remote"
  kDXNoiseLevel,     ///< the same for the DX station
  kDXPwr,            ///< 0 to 4: 5, 20, 100, 500, 1500 W
  kPath,             ///< 0 short, 1 long
  kPredictSignals,   ///< 0 "From the DX Station", 1 "To the DX Station"
  kEngineButton,     ///< an EngineChoice
  kModeSNRCombo,     ///< the mode whose required SNR is used
};

enum class PanelCheck {
  kOpenBandEnable,
  kPlotEnable,
  kDXTracksTesseraLocation,
  kDistanceMiles,  ///< distances in statute miles, else in kilometres
};

namespace path_option {
inline constexpr int kShort = 0;
inline constexpr int kLong = 1;
}  // namespace path_option

namespace direction_option {
inline constexpr int kFromTheDXStation = 0;
inline constexpr int kToTheDXStation = 1;
}  // namespace direction_option

/// The inputs of the prediction window as the engine folder sees them. The window's fields are the
/// authoritative copy of most parameters; a program without a window keeps them in plain variables.
class PredictionPanel {
 public:
  virtual ~PredictionPanel() = default;

  [[nodiscard]] virtual std::string Text(PanelText text) const = 0;
  virtual void SetText(PanelText text, const std::string& value) = 0;

  [[nodiscard]] virtual int Choice(PanelChoice choice) const = 0;
  virtual void SetChoice(PanelChoice choice, int index) = 0;

  [[nodiscard]] virtual bool Checked(PanelCheck check) const = 0;
  virtual void SetChecked(PanelCheck check, bool on) = 0;

  /// The antenna of a station; without a choice it radiates alike in all directions.
  [[nodiscard]] virtual Antenna AntennaOf(Station /*station*/) const { return {}; }

  /// Name of the settings set in use, empty for the ordinary one.
  [[nodiscard]] virtual std::string SettingsName() const { return {}; }

  /// Restores a minimised or maximised window, so that the field a message is about can be seen.
  virtual void RestoreWindow() = 0;

  /// A station's coordinates were written: bearing, distance and captions have to follow.
  virtual void StationsChanged() = 0;
};

}  // namespace skyhop
