#include "ui/wx/configuration_frame.h"

#include <wx/log.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/statline.h>
#include <wx/tooltip.h>
#include <wx/utils.h>

#include "common/files.h"
#include "ui/wx/commit_field.h"
#include "ui/wx/config_antenna_page.h"
#include "ui/wx/config_band_page.h"
#include "ui/wx/config_engine_page.h"
#include "ui/wx/config_links_page.h"
#include "ui/wx/config_mode_page.h"
#include "ui/wx/config_program_pages.h"
#include "ui/wx/config_station_page.h"
#include "ui/wx/config_url_page.h"
#include "ui/wx/wx_text.h"

namespace skyhop {

ConfigurationFrame::ConfigurationFrame(wxWindow* parent)
    : ViewFrame(parent, "Skyhop Configuration", "IoncapConfig", wxSize(800, 560)),
      test_timer_(this) {
  Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
    events_.Send(&IoncapConfig::TestTimer_Tick, std::chrono::steady_clock::now());
  });
  Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
    if (event.GetActive()) events_.Send(&IoncapConfig::Form_Activate);
    event.Skip();
  });
}

template <class Page>
Page* ConfigurationFrame::AddPage(const wxString& name) {
  auto* page = new Page(book_, events_);
  book_->AddPage(page, name);
  list_->Append(name);
  return page;
}

void ConfigurationFrame::MakeControls() {
  auto* base = new wxPanel(this);
  list_ = new wxListBox(base, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, nullptr,
                        wxLB_SINGLE | wxBORDER_NONE);
  book_ = new wxSimplebook(base);
  engine_ = AddPage<ConfigEnginePage>("Engine");
  station_ = AddPage<ConfigStationPage>("Stations and units");
  antennas_ = AddPage<ConfigAntennaPage>("Antennas");
  bands_ = AddPage<ConfigBandPage>("Frequency-dependent settings");
  modes_ = AddPage<ConfigModePage>("Mode-dependent settings");
  urls_ = AddPage<ConfigUrlPage>("Prediction URLs");
  links_ = AddPage<ConfigLinksPage>("Links");
  diagnostics_ = AddPage<ConfigDiagnosticsPage>("Diagnostics");
  windows_ = AddPage<ConfigWindowsPage>("Windows");
  list_->SetSelection(0);
  list_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent& event) {
    if (event.GetSelection() >= 0) {
      book_->ChangeSelection(static_cast<std::size_t>(event.GetSelection()));
    }
  });

  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(list_, wxSizerFlags().Expand());
  row->Add(new wxStaticLine(base, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxLI_VERTICAL),
           wxSizerFlags().Expand());
  row->Add(book_, wxSizerFlags(1).Expand());
  base->SetSizer(row);
  auto* outer = new wxBoxSizer(wxVERTICAL);
  outer->Add(base, wxSizerFlags(1).Expand());
  SetSizer(outer);
}

void ConfigurationFrame::UserCloses() {
  // Commit the field that still has the focus, since the user has not left it.
  if (auto* field = dynamic_cast<CommitField*>(wxWindow::FindFocus())) field->Commit();
  events_.Send(&IoncapConfig::Form_QueryUnload);
}

// --- What the controller sets -------------------------------------------------------------------

void ConfigurationFrame::Select(ConfigOption option, int index) {
  if (option == ConfigOption::kEngineButton) {
    engine_->Select(index);
  } else {
    station_->SelectUnit(index);
  }
}

void ConfigurationFrame::SetChecked(ConfigCheck check, bool checked) {
  switch (check) {
    case ConfigCheck::kFreqDependentEnabled:
      return bands_->SetEnabled(checked);
    case ConfigCheck::kDiagMode:
      return diagnostics_->SetDiagMode(checked);
    case ConfigCheck::kShowToolTips:
      return windows_->SetShowToolTips(checked);
    case ConfigCheck::kDualMonitor:
      return windows_->SetDualMonitor(checked);
    case ConfigCheck::kDownloadSsnAtStart:
      return urls_->SetDownloadSsnAtStart(checked);
  }
}

void ConfigurationFrame::Enable(ConfigCheck check, bool enabled) {
  if (check != ConfigCheck::kFreqDependentEnabled) return;
  bands_->EnableCheckBox(enabled);
}

void ConfigurationFrame::Enable(ConfigButton button, bool enabled) {
  switch (button) {
    case ConfigButton::kTestCmd:
      return engine_->EnableTest(enabled);
    case ConfigButton::kRemoveModeCmd:
      return modes_->EnableRemove(enabled);
    case ConfigButton::kOpenLogCmd:
      return diagnostics_->EnableOpenLog(enabled);
  }
}

void ConfigurationFrame::SetLabel(ConfigLabel label, const std::string& text) {
  switch (label) {
    case ConfigLabel::kTestResult:
      return engine_->SetTestResult(text);
    case ConfigLabel::kAntennaFiles:
      return antennas_->SetNote(text);
    case ConfigLabel::kStationSource:
      return station_->SetSource(text);
    case ConfigLabel::kBandsMissing:
      return bands_->SetMissing(text);
    case ConfigLabel::kErrorLog:
      return diagnostics_->SetErrorLog(text);
    case ConfigLabel::kProgramFolder:
      return diagnostics_->SetProgramFolder(text);
  }
}

void ConfigurationFrame::SetEngineFinding(int engine, const std::string& text) {
  engine_->SetFinding(engine, text);
}

void ConfigurationFrame::SetAntenna(Station station, const Antenna& antenna) {
  antennas_->SetAntenna(station, antenna);
}

void ConfigurationFrame::SetAntennaFiles(std::span<const std::string> files) {
  antennas_->SetFiles(files);
}

void ConfigurationFrame::SetBand(std::size_t band, const BandSettings& settings) {
  bands_->SetBand(band, settings);
}

void ConfigurationFrame::EnableBands(bool enabled) {
  bands_->EnableBands(enabled);
}

void ConfigurationFrame::SetModes(std::span<const ModeSettings> modes, int selected) {
  modes_->SetModes(modes, selected);
}

void ConfigurationFrame::SetMode(std::size_t row, const ModeSettings& settings) {
  modes_->SetMode(row, settings);
}

void ConfigurationFrame::SetUrl(Address url, const std::string& text) {
  urls_->SetUrl(url, text);
}

void ConfigurationFrame::EnableOpen(Address url, bool enabled) {
  urls_->EnableOpen(url, enabled);
}

void ConfigurationFrame::SetUrlNote(Address url, const std::string& text) {
  urls_->SetNote(url, text);
}

void ConfigurationFrame::SetPeers(std::span<const PeerState> peers) {
  links_->SetPeers(peers);
}

void ConfigurationFrame::ShowToolTips(bool show) {
  wxToolTip::Enable(show);
}

// --- The window itself --------------------------------------------------------------------------

void ConfigurationFrame::StartTestTimer(std::chrono::milliseconds interval) {
  test_timer_.Start(static_cast<int>(interval.count()));
}

void ConfigurationFrame::StopTestTimer() {
  test_timer_.Stop();
}

bool ConfigurationFrame::OpenInBrowser(const std::string& url) {
  const wxLogNull quiet;  // the controller shows its own message
  return wxLaunchDefaultBrowser(ToWx(url));
}

bool ConfigurationFrame::OpenFile(const std::filesystem::path& path) {
  const wxLogNull quiet;
  return wxLaunchDefaultApplication(ToWx(PathText(path)));
}

}  // namespace skyhop
