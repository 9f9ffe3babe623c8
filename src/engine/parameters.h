#pragma once

#include <cstdint>
#include <string>

#include "common/diagnostics.h"
#include "common/settings.h"
#include "common/user_messages.h"
#include "engine/prediction_panel.h"
#include "geo/lat_lon.h"

namespace skyhop::IONCAPModule {

/// The one parameter set that every engine script is written from.
///
/// Numbers are held as the texts that the user typed. The panel's fields are the authoritative copy
/// of solar flux, sunspot number, K index and availability; the others are held here. The setters
/// store what they are given: it is the window that refuses a value, and
/// `PredictionParametersValid` that judges the set before a run.
class Parameters {
 public:
  /// All arguments must outlive this object.
  Parameters(PredictionPanel& panel, UserMessages& messages, const Common::Settings& settings,
             Diagnostics& diagnostics);

  /// Restores the parameter set, the chart options and your station from the settings.
  void Initialize();
  /// Saves what Initialize restores, all of it or, when the store fails, nothing.
  void Finalize();

  /// Watts of your transmitter.
  void SetPredictionPower(const std::string& power);
  /// Required signal-to-noise ratio in dB (in a 1 Hz band).
  void SetPredictionSNR(const std::string& snr);
  /// Minimum take-off angle of the transmit antenna in degrees.
  void SetPredictionTakeoff(const std::string& takeoff);
  /// Man-made noise at the receiver, 0 "Industrial" to 3 "Remote".
  void SetPredictionNoise(std::int16_t noise);
  /// "Short Path" or "Long Path".
  void SetPath(const std::string& path) { path_ = path; }
  /// UTC date, "dd-mmm-yy".
  void SetDate(const std::string& date) { date_ = date; }
  /// Callsign prefix of the DX station that was looked up last; shown in the window.
  void SetLastPrefix(const std::string& prefix);
  /// Makes the last prefix the prediction's prefix.
  void SetPrefix();

  /// Parse the text and store the angle (degrees 360 when it cannot be read). A readable value is
  /// written back, formatted, into the field of the station that has this role in the selected
  /// direction.
  void SetReceiverLatitude(const std::string& text);
  void SetReceiverLongitude(const std::string& text);
  void SetTransmitterLatitude(const std::string& text);
  void SetTransmitterLongitude(const std::string& text);

  [[nodiscard]] Position GetReceiverLocation() const { return receiver_; }
  [[nodiscard]] Position GetTransmitterLocation() const { return transmitter_; }
  [[nodiscard]] const std::string& Power() const { return power_; }
  [[nodiscard]] const std::string& Takeoff() const { return takeoff_; }
  [[nodiscard]] const std::string& Snr() const { return snr_; }
  [[nodiscard]] std::int16_t Noise() const { return noise_; }
  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] const std::string& Date() const { return date_; }
  [[nodiscard]] const std::string& Prefix() const { return prefix_; }

  /// Watts of the DX station: the caption of the selected option, "100" when none is.
  [[nodiscard]] std::string DXPower() const;
  /// Noise index of your station, 3 when no option is selected.
  [[nodiscard]] std::int16_t LocalNoiseIndex() const;
  /// Noise index of the DX station, 2 when no option is selected.
  [[nodiscard]] std::int16_t DXNoiseIndex() const;

  /// Fills your station's coordinates from the location application's settings, else from the ones
  /// that this program saved.
  void LocateQTH();

  /// Checks the set in a fixed order, stops at the first failure and tells the user about it.
  /// Returns whether all checks passed.
  [[nodiscard]] bool PredictionParametersValid();

  // Range checks without user messages. A text without a number counts as 0.
  [[nodiscard]] static bool SolarFluxInRange(const std::string& flux);
  [[nodiscard]] static bool KindexInRange(const std::string& k_index);
  [[nodiscard]] static bool PowerInRange(const std::string& power);
  [[nodiscard]] static bool SNRInRange(const std::string& snr);
  [[nodiscard]] static bool AvailabilityInRange(const std::string& availability);
  [[nodiscard]] static bool TakeoffInRange(const std::string& takeoff);

  /// Whether the engines' cards have room for the value: at most 999990 W and 999.
  [[nodiscard]] static bool PowerFitsCard(const std::string& power);
  [[nodiscard]] static bool SunspotNumberFitsCard(const std::string& sunspot_number);
  static constexpr const char* kPowerTooLarge = "The engines cannot take more than 999990 W";
  static constexpr const char* kSunspotNumberTooLarge =
      "The engines cannot take a sunspot number above 999";

  /// One range check: tells the user and returns false when the value is out of range.
  [[nodiscard]] bool SolarFluxValid(const std::string& flux);
  [[nodiscard]] bool KindexValid(const std::string& k_index);
  [[nodiscard]] bool PowerValid(const std::string& power);
  [[nodiscard]] bool SNRValid(const std::string& snr);
  [[nodiscard]] bool AvailabilityValid(const std::string& availability);
  [[nodiscard]] bool TakeoffValid(const std::string& takeoff);

  /// A required SNR that came from outside the window, clamped to -30 ... 99.
  [[nodiscard]] static std::string ValidatedSNR(const std::string& snr);

  /// Shows a validation message and logs it.
  void ParameterError(const std::string& text);

 private:
  enum class Role { kReceiver, kTransmitter };
  enum class Part { kLatitude, kLongitude };

  struct Rule;

  void SetAngle(const std::string& operation, const std::string& text, Role role, Part part);
  [[nodiscard]] bool InRange(bool in_range, const std::string& message);
  [[nodiscard]] bool Refuse(const std::string& message);
  [[nodiscard]] bool Present(const std::string& text, const std::string& message);
  void RestoreModeAndSnr();
  void RestoreWebPages();
  [[nodiscard]] Angle TesseraAngle(const std::string& degrees_text, const std::string& prefix,
                                   int most);
  [[nodiscard]] std::string Stored(const std::string& key, const std::string& default_text) const;
  [[nodiscard]] int StoredOption(const std::string& key, int count, int default_index) const;

  PredictionPanel* panel_;
  UserMessages* messages_;
  const Common::Settings* settings_;
  Diagnostics* diagnostics_;

  Position receiver_;
  Position transmitter_;
  std::string power_ = "1500";
  std::string takeoff_ = "3";
  std::string snr_ = "24";
  std::int16_t noise_ = 2;
  std::string path_ = "Short Path";
  std::string date_;
  std::string prefix_;
  std::string last_prefix_;
};

}  // namespace skyhop::IONCAPModule
