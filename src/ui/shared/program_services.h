#pragma once

#include <optional>
#include <string>

#include "common/instance_guard.h"
#include "engine/run_lock.h"
#include "interop/command_target.h"
#include "ui/shared/configuration.h"
#include "ui/shared/controls.h"

namespace skyhop {

// The parts of the program that the prediction window starts, ends and commands but knows nothing
// else about. A part that this build does not have is stood in for by the class itself: each
// operation does nothing.

/// Serves the commands of peer applications.
class CommandServer {
 public:
  virtual ~CommandServer() = default;
  virtual void Initialize() {}
  /// Tells the suite's launcher that the program has started.
  virtual void AcknowledgeLauncher() {}
  virtual void Terminate() {}
};

/// The links to peer applications.
class PeerLinks {
 public:
  virtual ~PeerLinks() = default;
  virtual void Initialize() {}
  virtual void Terminate() {}
  /// The transceiver's frequency in kHz; nothing while the application that controls it is not
  /// connected.
  [[nodiscard]] virtual std::optional<double> TransceiverFrequency() { return std::nullopt; }
  /// Whether the application that collects spots is connected.
  [[nodiscard]] virtual bool HasSolarHistory() { return false; }
  /// Asks it to show its solar history.
  virtual void DisplaySolarHistory() {}
  /// Tries peers that are not connected again.
  virtual void ServerRetryTimer_Tick() {}
  /// Hands the values on that peers have published since the last tick.
  virtual void PeerValuesTimer_Tick() {}
};

/// What downloads do to the prediction window.
class DownloadWindow {
 public:
  virtual ~DownloadWindow() = default;
  /// Enables or disables every command that starts a download, all together.
  virtual void EnableDownloads(bool enable) = 0;
  /// Shows in the caption what is being downloaded; an empty text restores the caption.
  virtual void ShowDownload(const std::string& status) = 0;
  /// Puts a downloaded text into a field.
  virtual void PutDownloaded(TextField field, const std::string& text) = 0;
};

/// Downloads of solar and geomagnetic data.
class SpaceWeather {
 public:
  virtual ~SpaceWeather() = default;
  /// Whether this build can download at all.
  [[nodiscard]] virtual bool Available() const { return false; }
  /// `window` is what the downloads act on from now on; null before it goes.
  virtual void Attach(DownloadWindow* /*window*/) {}
  /// The program ends: the windows save their places.
  virtual void Terminate() {}
  virtual void DownloadSSN() {}
  /// Whether the last download of the sunspot number failed.
  [[nodiscard]] virtual bool SunspotNumberFailed() const { return false; }
  /// Shows the forecast window and has the forecast refreshed at the next tick of its timer.
  virtual void ShowForecast() {}
  /// One tick of the forecast's timer.
  virtual void SolarForecastTimer_Tick() {}
  /// Updates solar flux and K index from the current conditions bulletin.
  virtual void UpdateCurrentConditions() {}
  /// The same, and shows the bulletin.
  virtual void ShowCurrentConditions() {}
  /// Where the value in the field comes from and how old it is, for a tool tip; empty for fields
  /// that no download fills.
  [[nodiscard]] virtual std::string OriginOf(TextField /*field*/) const { return {}; }
  /// What a download address gave last and how old that is; empty for addresses of web pages.
  [[nodiscard]] virtual std::string LastGiven(Address /*url*/) const { return {}; }
};

/// Predicts the signal-to-noise ratio at one frequency.
class PointPrediction : public SNRService {
 public:
  /// `frequency` in MHz, `snr` in dB in 1 Hz; empty for the one that the mode needs.
  virtual void Predict(double /*frequency*/, const std::string& /*mode*/,
                       const std::string& /*snr*/) {}
  /// The transceiver is on another frequency or mode: predicts for it when it stays there and the
  /// display is active.
  virtual void Follow(double /*frequency*/, const std::string& /*mode*/) {}
  /// Stations, conditions, settings or the hour may be others now: marks what is shown as that of
  /// before when they are. Returns whether the transceiver's frequency needs a new prediction.
  [[nodiscard]] virtual bool InputsChanged() { return false; }
  virtual void SNRExecuteTimer_Tick() {}
  /// Shows or hides what was predicted.
  virtual void SetDisplayActive(bool /*active*/) {}
  /// The program ends: so do running predictions.
  virtual void Terminate() {}
  [[nodiscard]] std::string ValidatedSNR(const std::string& snr) override { return snr; }
  void PredictSNR(const SNRRequest& /*request*/) override {}
};

/// The beacon monitor, a window of its own.
class BeaconMonitor {
 public:
  virtual ~BeaconMonitor() = default;
  [[nodiscard]] virtual bool Available() const { return false; }
  virtual void Show() {}
  /// The program ends.
  virtual void Form_Unload() {}
};

/// A window that shows a text as it is.
class TextWindow {
 public:
  virtual ~TextWindow() = default;
  virtual void ShowText(const std::string& /*text*/) {}
  /// The program ends.
  virtual void Form_Unload() {}
};

/// The configuration window `IoncapConfig`.
class ConfigurationWindow {
 public:
  virtual ~ConfigurationWindow() = default;
  /// Restores the configuration; once, at start-up, before the window is ever shown.
  virtual void Form_Load() = 0;
  virtual void Show() = 0;
  /// The state of a link to a peer changed.
  virtual void Peers_Change() = 0;
  /// Puts all windows of the program to their default places.
  virtual void ResetWindows() = 0;
  /// The program ends.
  virtual void Form_Unload() = 0;
};

}  // namespace skyhop
