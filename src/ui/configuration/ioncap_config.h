#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "bands/bands.h"
#include "common/diagnostics.h"
#include "common/settings.h"
#include "common/user_messages.h"
#include "engine/engine_probe.h"
#include "ui/configuration/configuration_view.h"
#include "ui/shared/configuration.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// The services that the configuration window needs from the program.
class ConfigurationHost {
 public:
  virtual ~ConfigurationHost() = default;
  /// Moves all windows to the places and sizes of a fresh installation.
  virtual void ResetWindows() = 0;
};

/// Lists the applications of the suite and their connections. A program without links uses this
/// class itself: it shows no connection.
class PeerOverview {
 public:
  virtual ~PeerOverview() = default;
  [[nodiscard]] virtual std::vector<PeerState> Peers() const;
  /// Tries to connect to the peer in `row` of Peers.
  virtual void Connect(std::size_t /*row*/) {}
};

/// The rules of the configuration window `IoncapConfig`: one method for each of its events. A
/// change takes effect and is saved at once. For invalid input, the window shows the reason and
/// keeps the last valid value. Closing the window hides it.
class IoncapConfig : public ConfigurationWindow {
 public:
  using Time = EngineProbe::Time;

  /// The controller must outlive the last change of the configuration.
  struct Collaborators {
    ConfigurationView& view;
    Configuration& configuration;
    FreqDependentModule::BandTable& bands;
    EngineProbe& probe;
    const EngineHost& machine;
    PeerOverview& peers;
    const SpaceWeather& space_weather;
    ConfigurationHost& host;
    UserMessages& messages;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
    std::filesystem::path program_folder;
  };

  explicit IoncapConfig(Collaborators collaborators);

  void Form_Load() override;
  void Show() override;
  void ResetWindows() override;
  void Form_Unload() override;
  /// The user closes the window.
  void Form_QueryUnload();
  /// The window comes to the front. Reads again what may have changed outside the program.
  void Form_Activate();

  /// There is no band file, so frequency-dependent settings have no use. For the BandTable's
  /// `on_missing`.
  void BandsMissing();
  /// The state of a link changed.
  void Peers_Change() override;
  /// The Connect button of the peer in `row`.
  void ConnectCmd_Click(std::size_t row);

  // Engine.
  void EngineButton_Click(int index);
  void TestCmd_Click(Time now);
  void TestTimer_Tick(Time now);

  // Stations, bands, modes.
  /// The user chose an antenna or left a field of it.
  void Antenna_Change(Station station, const Antenna& antenna);
  void DistanceUnit_Click(int index);
  void FreqDependentEnabled_Click(bool checked);
  /// The user left a field of a band's row.
  void Band_Change(std::size_t band, const BandSettings& settings);
  /// The user left a field of the mode in `row`.
  void Mode_Change(std::size_t row, const ModeSettings& settings);
  void AddModeCmd_Click();
  void RemoveModeCmd_Click(std::size_t row);
  void RestoreModesCmd_Click();

  // Addresses.
  void URL_Change(Address url, const std::string& text);
  void OpenURLCmd_Click(Address url);
  void RestoreURLsCmd_Click();

  // Diagnostics and windows.
  void DiagMode_Click(bool checked);
  void OpenLogCmd_Click();
  void OpenFolderCmd_Click();
  void ShowToolTips_Click(bool checked);
  void DualMonitor_Click(bool checked);
  void DownloadSsnAtStart_Click(bool checked);
  void ResetWindowsCmd_Click();

 private:
  void Fill();
  void FillBands();
  void FillUrl(Address url);
  void ShowUrlNotes();
  void ShowModes(int selected);
  void ShowFindings();
  [[nodiscard]] std::string PointFinding(const EngineFinding& chart) const;
  void ShowAntennas();
  void ShowAntennaFiles();
  void ShowStationSource();
  void ShowErrorLog();
  void ConfigurationChanged(Configuration::Item item);
  void SavePosition();
  void ShowOutcome(const EngineProbe::Outcome& outcome);
  void SaveModes(const std::vector<ModeSettings>& modes, int selected);
  /// Shows a message if a change was not saved.
  void Check(bool saved);
  void Refuse(const std::string& text);

  Collaborators with_;
  bool bands_missing_ = false;
  bool filled_ = false;  ///< the view has controls
  /// The name of the running test in its result.
  std::string tested_;
};

}  // namespace skyhop
