#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ui/configuration/configuration_view.h"

namespace skyhop::testing {

/// Keeps the values that the window would show.
class FakeConfigurationView : public ConfigurationView {
 public:
  void Select(ConfigOption option, int index) override { options[option] = index; }
  void SetChecked(ConfigCheck check, bool on) override { checked[check] = on; }
  void Enable(ConfigCheck check, bool on) override { checks_enabled[check] = on; }
  void Enable(ConfigButton button, bool on) override { buttons_enabled[button] = on; }
  void SetLabel(ConfigLabel label, const std::string& text) override { labels[label] = text; }
  void SetEngineFinding(int engine, const std::string& text) override { findings[engine] = text; }
  void SetAntenna(Station station, const Antenna& antenna) override { antennas[station] = antenna; }
  void SetAntennaFiles(std::span<const std::string> all) override {
    antenna_files.assign(all.begin(), all.end());
  }
  void SetBand(std::size_t band, const BandSettings& settings) override { bands[band] = settings; }
  void EnableBands(bool on) override { bands_enabled = on; }
  void SetModes(std::span<const ModeSettings> all, int selected) override {
    modes.assign(all.begin(), all.end());
    selected_mode = selected;
  }
  void SetMode(std::size_t row, const ModeSettings& settings) override { modes.at(row) = settings; }
  void SetUrl(Address url, const std::string& text) override { urls[url] = text; }
  void EnableOpen(Address url, bool on) override { open_enabled[url] = on; }
  void SetUrlNote(Address url, const std::string& text) override { url_notes[url] = text; }
  void SetPeers(std::span<const PeerState> all) override { peers.assign(all.begin(), all.end()); }
  void ShowToolTips(bool show) override { tool_tips = show; }

  void CreateControls() override {}
  void ShowWindow() override { shown = true; }
  void HideWindow() override { shown = false; }
  [[nodiscard]] bool Visible() const override { return shown; }
  [[nodiscard]] WindowPlacement Placement() const override { return placement; }
  void SetPlacement(const WindowPlacement& place) override { placement = place; }
  [[nodiscard]] std::vector<Monitor> Monitors() const override { return {{0, 0, 1920, 1080}}; }

  void StartTestTimer(std::chrono::milliseconds) override { timer_runs = true; }
  void StopTestTimer() override { timer_runs = false; }
  bool OpenInBrowser(const std::string& url) override {
    opened.push_back(url);
    return can_open;
  }
  bool OpenFile(const std::filesystem::path& path) override {
    opened.push_back(path.string());
    return can_open;
  }

  std::map<ConfigOption, int> options;
  std::map<ConfigCheck, bool> checked;
  std::map<ConfigCheck, bool> checks_enabled;
  std::map<ConfigButton, bool> buttons_enabled;
  std::map<ConfigLabel, std::string> labels;
  std::map<int, std::string> findings;
  std::map<Station, Antenna> antennas;
  std::vector<std::string> antenna_files;
  std::map<std::size_t, BandSettings> bands;
  std::optional<bool> bands_enabled;
  std::vector<ModeSettings> modes;
  int selected_mode = -1;
  std::map<Address, std::string> urls;
  std::map<Address, bool> open_enabled;
  std::map<Address, std::string> url_notes;
  std::vector<PeerState> peers;
  bool tool_tips = false;
  bool shown = false;
  WindowPlacement placement{100, 80, 800, 560, WindowPlacement::State::kNormal};
  bool timer_runs = false;
  bool can_open = true;
  std::vector<std::string> opened;
};

}  // namespace skyhop::testing
