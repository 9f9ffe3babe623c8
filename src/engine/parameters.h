#pragma once

#include <cstdint>
#include <string>

#include "common/diagnostics.h"
#include "common/settings.h"
#include "common/user_messages.h"
#include "engine/prediction_inputs.h"

namespace skyhop::IONCAPModule {

/// What the parameter set does to the window that shows it. Without a window nothing happens.
class ParametersWindow {
 public:
  virtual ~ParametersWindow() = default;
  /// Shows a station's coordinate in the form in which it was understood.
  virtual void ShowCoordinate(Station /*station*/, LatLonModule::Axis /*axis*/,
                              const std::string& /*text*/) {}
  /// Shows the DX station's prefix; "&" is doubled in it, since a label takes a single one for the
  /// mark of a shortcut.
  virtual void ShowPrefix(const std::string& /*prefix*/) {}
  /// Restores a minimised or maximised window, so that the user sees the field that a message
  /// names.
  virtual void RestoreWindow() {}
};

/// Keeps the parameter set that the chart's predictions are made from.
///
/// Numbers are held as the texts that the user typed. The setters store what they are given: the
/// window refuses a value, and `PredictionParametersValid` judges the set before a run.
class Parameters {
 public:
  Parameters(UserMessages& messages, const Common::Settings& settings, Diagnostics& diagnostics);

  /// `window` follows the setters from now on; null before it goes.
  void Attach(ParametersWindow* window);

  /// Restores a form from the settings, with your station, and hands power, take-off angle and
  /// required SNR over to the set.
  [[nodiscard]] PredictionForm Initialize();
  /// Saves what Initialize restores: everything or, when the store fails, nothing.
  void Finalize(const PredictionForm& form);
  /// Fills in your station's coordinates from the location application's settings, else from those
  /// that this program saved.
  void LocateQTH(PredictionForm& form);

  /// Watts of the transmitter.
  void SetPredictionPower(const std::string& power);
  /// Required signal-to-noise ratio in dB (in a 1 Hz band).
  void SetPredictionSNR(const std::string& snr);
  /// Minimum take-off angle of the transmit antenna in degrees.
  void SetPredictionTakeoff(const std::string& takeoff);
  /// Man-made noise at the receiver, 0 "Industrial" to 3 "Remote".
  void SetPredictionNoise(std::int16_t noise);
  /// "Short Path" or "Long Path".
  void SetPath(const std::string& path) { set_.path = path; }
  /// UTC date, "dd-mmm-yy".
  void SetDate(const std::string& date) { set_.date = date; }
  /// Call sign prefix of the DX station that was looked up last; shown in the window.
  void SetLastPrefix(const std::string& prefix);
  [[nodiscard]] const std::string& LastPrefix() const { return last_prefix_; }
  /// Makes the last prefix the prediction's prefix.
  void SetPrefix();

  /// Parse the text and store the angle (degrees 360 when it cannot be read). A readable value is
  /// shown in the field of the station that has this role in the direction of the set.
  void SetReceiverLatitude(const std::string& text);
  void SetReceiverLongitude(const std::string& text);
  void SetTransmitterLatitude(const std::string& text);
  void SetTransmitterLongitude(const std::string& text);

  /// Hands over a form's power, take-off angle and noise.
  void SetTransmitterAndNoise(const PredictionForm& form);
  /// Hands over everything else that a form holds, except the required SNR.
  void SetCircuit(const PredictionForm& form);

  [[nodiscard]] Position GetReceiverLocation() const { return set_.receiver; }
  [[nodiscard]] Position GetTransmitterLocation() const { return set_.transmitter; }
  [[nodiscard]] const ParameterSet& Set() const { return set_; }

  /// Checks the set in a fixed order, stops at the first fault and shows the user its messages.
  /// Returns whether there was none.
  [[nodiscard]] bool PredictionParametersValid();

  /// A required SNR that came from outside the window, clamped to -30 ... 99.
  [[nodiscard]] static std::string ValidatedSNR(const std::string& snr);

  /// Shows a validation message and logs it.
  void ParameterError(const std::string& text);

 private:
  enum class Role { kReceiver, kTransmitter };

  void SetAngle(const std::string& operation, const std::string& text, Role role,
                LatLonModule::Axis axis);
  void RestoreModeAndSnr(PredictionForm& form);
  [[nodiscard]] Angle TesseraAngle(const std::string& degrees_text, const std::string& prefix,
                                   int most);
  [[nodiscard]] std::string Stored(const std::string& key, const std::string& default_text) const;
  [[nodiscard]] int StoredOption(const std::string& key, int count, int default_index) const;

  UserMessages* messages_;
  const Common::Settings* settings_;
  Diagnostics* diagnostics_;
  ParametersWindow no_window_;
  ParametersWindow* window_ = &no_window_;
  ParameterSet set_;
  std::string last_prefix_;
};

}  // namespace skyhop::IONCAPModule
