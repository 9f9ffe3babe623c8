#pragma once

#include <wx/listbox.h>
#include <wx/simplebook.h>
#include <wx/timer.h>

#include "ui/wx/config_events.h"
#include "ui/wx/side_frame.h"

namespace skyhop {

class ConfigAntennaPage;
class ConfigBandPage;
class ConfigDiagnosticsPage;
class ConfigEnginePage;
class ConfigLinksPage;
class ConfigModePage;
class ConfigStationPage;
class ConfigUrlPage;
class ConfigWindowsPage;

/// The configuration window: the list of its pages on the left, the chosen one beside it.
class ConfigurationFrame : public ViewFrame<ConfigurationView> {
 public:
  /// `parent` may be null. The window is not shown.
  explicit ConfigurationFrame(wxWindow* parent);

  /// Sends the window's events to `controller` from now on; it must outlive the window.
  void Attach(IoncapConfig& controller) { events_.Attach(controller); }

  void Select(ConfigOption option, int index) override;
  void SetChecked(ConfigCheck check, bool checked) override;
  void Enable(ConfigCheck check, bool enabled) override;
  void Enable(ConfigButton button, bool enabled) override;
  using wxFrame::Enable;
  using wxFrame::SetLabel;
  void SetLabel(ConfigLabel label, const std::string& text) override;
  void SetEngineFinding(int engine, const std::string& text) override;
  void SetAntenna(Station station, const Antenna& antenna) override;
  void SetAntennaFiles(std::span<const std::string> files) override;
  void SetBand(std::size_t band, const BandSettings& settings) override;
  void EnableBands(bool enabled) override;
  void SetModes(std::span<const ModeSettings> modes, int selected) override;
  void SetMode(std::size_t row, const ModeSettings& settings) override;
  void SetUrl(Address url, const std::string& text) override;
  void EnableOpen(Address url, bool enabled) override;
  void SetUrlNote(Address url, const std::string& text) override;
  void SetPeers(std::span<const PeerState> peers) override;
  void ShowToolTips(bool show) override;
  void StartTestTimer(std::chrono::milliseconds interval) override;
  void StopTestTimer() override;
  bool OpenInBrowser(const std::string& url) override;
  bool OpenFile(const std::filesystem::path& path) override;

 private:
  template <class Page>
  Page* AddPage(const wxString& name);
  void MakeControls() override;
  void UserCloses() override;

  ConfigEvents events_;
  wxListBox* list_ = nullptr;
  wxSimplebook* book_ = nullptr;
  ConfigEnginePage* engine_ = nullptr;
  ConfigStationPage* station_ = nullptr;
  ConfigAntennaPage* antennas_ = nullptr;
  ConfigBandPage* bands_ = nullptr;
  ConfigModePage* modes_ = nullptr;
  ConfigUrlPage* urls_ = nullptr;
  ConfigLinksPage* links_ = nullptr;
  ConfigDiagnosticsPage* diagnostics_ = nullptr;
  ConfigWindowsPage* windows_ = nullptr;
  wxTimer test_timer_;
};

}  // namespace skyhop
