#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "common/diagnostics.h"
#include "common/settings.h"
#include "engine/antenna.h"
#include "engine/results_table.h"

namespace skyhop {

/// Take-off angle and power of your station on one band, as typed; empty if the band uses the
/// window's values.
struct BandSettings {
  std::string takeoff;  ///< degrees
  std::string power;    ///< watts

  friend bool operator==(const BandSettings&, const BandSettings&) = default;
};

/// A mode and the signal-to-noise ratio that it needs, dB in 1 Hz, as text.
struct ModeSettings {
  std::string mode;
  std::string snr;

  friend bool operator==(const ModeSettings&, const ModeSettings&) = default;
};

/// The web addresses that the configuration holds: the pages of the menu, then the downloads of
/// sunspot numbers, of the forecast and of the current conditions.
enum class Address { kURL0, kURL1, kURL2, kURL3, kSSNURL, kSFIURL, kWWVURL };
inline constexpr std::size_t kAddressCount = 7;

/// The address of a fresh installation; empty for `kURL3`.
[[nodiscard]] const char* DefaultUrl(Address address);

/// What the configuration window sets and the rest of the program uses. A change is saved at once
/// and then the listeners are called.
class Configuration {
 public:
  enum class Item {
    kEngine,
    kAntennas,
    kDistanceMiles,
    kFreqDependent,
    kModes,
    kUrls,
    kDiagMode,
    kShowToolTips,
    kDualMonitor,
    kDownloadSsnAtStart,
  };
  using Listener = std::function<void(Item)>;

  Configuration(const Common::Settings& settings, Diagnostics& diagnostics);

  /// The engine of a fresh installation, an EngineChoice; IONCAP unless set.
  void SetDefaultEngine(int engine) { default_engine_ = engine; }

  /// Restores all values. Replaces the former unencrypted address of the space-weather page by the
  /// secure one and saves that at once. Listeners are not called.
  void Load();

  /// Calls `listener` after each change; listeners are called in the order of registration.
  void AddListener(Listener listener) { listeners_.push_back(std::move(listener)); }

  /// Index of the engine's option, an EngineChoice.
  [[nodiscard]] int Engine() const { return engine_; }
  [[nodiscard]] const Antenna& AntennaOf(Station station) const {
    return antennas_.at(static_cast<std::size_t>(station));
  }
  [[nodiscard]] bool DistanceMiles() const { return distance_miles_; }
  [[nodiscard]] bool FreqDependentEnabled() const { return freq_dependent_enabled_; }
  [[nodiscard]] const BandSettings& Band(std::size_t band) const { return bands_.at(band); }
  /// In the order in which `ModeSNRCombo` offers them.
  [[nodiscard]] const std::vector<ModeSettings>& Modes() const { return modes_; }
  [[nodiscard]] const std::string& Url(Address address) const {
    return urls_.at(static_cast<std::size_t>(address));
  }
  [[nodiscard]] bool DiagMode() const { return diag_mode_; }
  [[nodiscard]] bool ShowToolTips() const { return show_tool_tips_; }
  [[nodiscard]] bool DualMonitor() const { return dual_monitor_; }
  /// Whether the start of the program downloads the sunspot number.
  [[nodiscard]] bool DownloadSsnAtStart() const { return download_ssn_at_start_; }

  // Each setter returns whether the value is saved; the value holds for this run in any case.
  // Setting an unchanged value saves nothing, calls no listener and returns true.
  /// Returns false and changes nothing for an index that is no EngineChoice.
  bool SetEngine(int engine);
  /// Returns false and changes nothing for an antenna with a problem, see AntennaProblem.
  bool SetAntenna(Station station, const Antenna& antenna);
  bool SetDistanceMiles(bool miles);
  bool SetFreqDependentEnabled(bool enabled);
  bool SetBand(std::size_t band, const BandSettings& settings);
  /// Returns false and changes nothing when a mode's name is empty, occurs twice (in any case),
  /// contains a comma or cannot be part of a setting's name. Ignores blanks around the texts.
  bool SetModes(const std::vector<ModeSettings>& modes);
  bool SetUrl(Address address, const std::string& text);
  bool SetDiagMode(bool on);
  bool SetShowToolTips(bool show);
  bool SetDualMonitor(bool dual);
  bool SetDownloadSsnAtStart(bool download);

  /// Saves all addresses, also those that the user has not changed.
  void SaveUrls();

 private:
  template <class Value>
  bool Change(Item item, Value& member, const Value& value,
              const std::vector<SettingEntry>& entries);

  void LoadUrls();

  const Common::Settings* settings_;
  Diagnostics* diagnostics_;
  std::vector<Listener> listeners_;

  int default_engine_ = 0;
  int engine_ = 0;
  std::array<Antenna, 2> antennas_;
  bool distance_miles_ = true;
  bool freq_dependent_enabled_ = false;
  std::array<BandSettings, kBandCount> bands_;
  std::vector<ModeSettings> modes_;
  std::array<std::string, kAddressCount> urls_;
  bool diag_mode_ = false;
  bool show_tool_tips_ = true;
  bool dual_monitor_ = false;
  bool download_ssn_at_start_ = true;
};

/// The stored antenna of a station; one without a file if the stored one cannot be used.
[[nodiscard]] Antenna StoredAntenna(const Common::Settings& settings, Station station);

/// The modes of a fresh installation. Each requires its usual signal-to-noise ratio in a receiver's
/// bandwidth B (Hz), plus 10 log10(B) dB to convert it to 1 Hz.
[[nodiscard]] std::vector<ModeSettings> DefaultModes();

}  // namespace skyhop
