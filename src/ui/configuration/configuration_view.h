#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/shared/configuration.h"
#include "ui/shared/window_placement.h"

namespace skyhop {

// The controls of the configuration window by their names.

enum class ConfigOption {
  kEngineButton,  ///< an EngineChoice
  kDistanceUnit,  ///< see distance_unit
};

namespace distance_unit {
inline constexpr int kMiles = 0;
inline constexpr int kKilometres = 1;
}  // namespace distance_unit

enum class ConfigCheck {
  kFreqDependentEnabled,
  kDiagMode,
  kShowToolTips,
  kDualMonitor,
  kDownloadSsnAtStart,
};

enum class ConfigButton {
  kTestCmd,
  kRemoveModeCmd,
  kOpenLogCmd,
};

enum class ConfigLabel {
  kAntennaFiles,   ///< the source of the antenna files, or why there are none
  kTestResult,     ///< the result of an engine's test
  kStationSource,  ///< the source of your station's location
  kBandsMissing,   ///< why the frequency-dependent settings cannot be used; empty if they can
  kErrorLog,       ///< path and size of the error log
  kProgramFolder,  ///< path of the program folder
};

/// The captions of `EngineButton`; a doubled "&" shows as one.
inline constexpr std::array<const char*, 4> kEngineCaptions = {
    "IONCAP LUF && MUF", "ICEPAC LUF && MUF", "VOACAP LUF && MUF", "VOACAP SNR && Prob"};

/// An address in the configuration, and the label of its field.
struct ConfigUrl {
  Address url;
  const char* label;
};
/// First the downloads, then the web pages.
inline constexpr std::array<ConfigUrl, 7> kConfigUrls = {{
    {Address::kSFIURL, "Predicted SFI and A-index"},
    {Address::kSSNURL, "Predicted Sunspot Numbers"},
    {Address::kWWVURL, "Predicted Solar and Geomagnetic Conditions"},
    {Address::kURL0, "Web page 1"},
    {Address::kURL1, "Web page 2"},
    {Address::kURL2, "Web page 3"},
    {Address::kURL3, "Web page 4"},
}};

/// A row of the window's list of the suite's applications.
struct PeerState {
  std::string name;
  std::string purpose;  ///< the purpose of the link
  bool connected = false;
  bool can_connect = false;  ///< whether its Connect button can be used

  friend bool operator==(const PeerState&, const PeerState&) = default;
};

/// The configuration window without its rules: it shows values and passes events on. The controller
/// decides everything.
///
/// Setting a value here never raises the event of a user's input. Texts are UTF-8.
class ConfigurationView : public SideView {
 public:
  virtual void Select(ConfigOption option, int index) = 0;
  virtual void SetChecked(ConfigCheck check, bool checked) = 0;
  virtual void Enable(ConfigCheck check, bool enabled) = 0;
  virtual void Enable(ConfigButton button, bool enabled) = 0;
  virtual void SetLabel(ConfigLabel label, const std::string& text) = 0;

  /// Shows what FindEngine found for the engine of option `engine`.
  virtual void SetEngineFinding(int engine, const std::string& text) = 0;
  virtual void SetAntenna(Station station, const Antenna& antenna) = 0;
  /// The antenna files that can be chosen.
  virtual void SetAntennaFiles(std::span<const std::string> files) = 0;
  /// A band's values; `band` is its index.
  virtual void SetBand(std::size_t band, const BandSettings& settings) = 0;
  /// Whether the band table can be edited.
  virtual void EnableBands(bool enabled) = 0;
  /// The whole table of modes, with the row to select; -1 for none.
  virtual void SetModes(std::span<const ModeSettings> modes, int selected) = 0;
  /// One row of the modes; selection and the other rows stay.
  virtual void SetMode(std::size_t row, const ModeSettings& settings) = 0;
  virtual void SetUrl(Address url, const std::string& text) = 0;
  /// Whether the address can be opened.
  virtual void EnableOpen(Address url, bool enabled) = 0;
  /// The result of the last download from the address, shown below it; empty for none.
  virtual void SetUrlNote(Address url, const std::string& text) = 0;
  virtual void SetPeers(std::span<const PeerState> peers) = 0;
  virtual void ShowToolTips(bool show) = 0;

  /// Starts the timer that follows an engine's test. It ticks until it is stopped.
  virtual void StartTestTimer(std::chrono::milliseconds interval) = 0;
  virtual void StopTestTimer() = 0;

  /// Opens an address in the user's browser. Returns whether the browser started.
  virtual bool OpenInBrowser(const std::string& url) = 0;
  /// Opens a file or a folder in the desktop's program for it. Returns whether that program
  /// started.
  virtual bool OpenFile(const std::filesystem::path& path) = 0;
};

}  // namespace skyhop
