#include "ui/configuration/ioncap_config.h"

#include <algorithm>
#include <utility>

#include "common/files.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "ui/configuration/default_urls.h"
#include "ui/configuration/input_rules.h"

namespace skyhop {
namespace {

constexpr const char* kWindowName = "IoncapConfig";
constexpr std::chrono::milliseconds kTestInterval{50};

/// The address of a page that a browser may be given: nothing that would start a program instead.
bool IsWebAddress(const std::string& text) {
  const std::string lower = LowerCase(text);
  return lower.starts_with("http://") || lower.starts_with("https://");
}

std::string SizeText(std::uintmax_t bytes) {
  constexpr double thousand = 1000;
  const auto size = static_cast<double>(bytes);
  if (size < thousand) return std::to_string(bytes) + " bytes";
  if (size < thousand * thousand) return FixedText(size / thousand, 1) + " kB";
  return FixedText(size / (thousand * thousand), 1) + " MB";
}

std::string FindingText(const EngineFinding& finding) {
  const std::string path = PathText(finding.executable);
  if (!finding.exists) return "Not found; expected at " + path;
  if (!finding.can_run) return "Found, but it cannot be executed: " + path;
  return "Found: " + path;
}

/// A name that no mode has yet.
std::string NewModeName(const std::vector<ModeSettings>& modes) {
  for (int number = 1;; ++number) {
    std::string name = "Mode " + std::to_string(number);
    if (Refusal({name, "0"}, modes, modes.size()).empty()) return name;
  }
}

constexpr const char* kNewModeSnr = "24";

}  // namespace

std::vector<PeerState> PeerOverview::Peers() const {
  return {{"Gleaner", "spots and solar indices", false},
          {"Tessera", "locations and antenna rotation", false},
          {"Tuneward", "transceiver control", false}};
}

IoncapConfig::IoncapConfig(Collaborators collaborators) : with_(std::move(collaborators)) {
  with_.configuration.AddListener([this](Configuration::Item item) { ConfigurationChanged(item); });
}

void IoncapConfig::Form_Load() {
  with_.diagnostics.Trap("IoncapConfig.Form_Load", [&] {
    with_.diagnostics.DebugLog("IoncapConfig.Form_Load");
    with_.configuration.Load();
    with_.diagnostics.SetDebug(with_.configuration.DiagMode());
    with_.bands.InitializeBandArray();
    Fill();
    with_.view.SetPlacement(RestoreWindowPosition(kWindowName, with_.view.Placement(),
                                                  with_.view.Monitors(), with_.settings));
  });
}

void IoncapConfig::Show() {
  with_.diagnostics.Trap("IoncapConfig.Show", [&] {
    with_.diagnostics.DebugLog("IoncapConfig.Show");
    Form_Activate();
    with_.view.ShowWindow();
  });
}

void IoncapConfig::Form_Activate() {
  with_.diagnostics.Trap("IoncapConfig.Form_Activate", [&] {
    ShowFindings();
    ShowStationSource();
    ShowErrorLog();
    Peers_Change();
  });
}

void IoncapConfig::Form_QueryUnload() {
  with_.diagnostics.Trap("IoncapConfig.Form_QueryUnload", [&] {
    SavePosition();
    with_.view.HideWindow();
  });
}

void IoncapConfig::Form_Unload() {
  with_.diagnostics.Trap("IoncapConfig.Form_Unload", [&] {
    with_.diagnostics.DebugLog("IoncapConfig.Form_Unload");
    with_.view.StopTestTimer();
    with_.probe.Cancel();
    SavePosition();
  });
}

void IoncapConfig::SavePosition() {
  SaveWindowPosition(kWindowName, with_.view.Placement(), with_.settings, with_.diagnostics);
}

void IoncapConfig::BandsMissing() {
  with_.diagnostics.Trap("IoncapConfig.BandsMissing", [&] {
    bands_missing_ = true;
    if (with_.configuration.FreqDependentEnabled()) {
      with_.configuration.SetFreqDependentEnabled(false);
    }
    FillBands();
  });
}

// --- What the window shows ----------------------------------------------------------------------

void IoncapConfig::Fill() {
  const Configuration& configuration = with_.configuration;
  with_.view.Select(ConfigOption::kEngineButton, configuration.Engine());
  with_.view.Select(ConfigOption::kDistanceUnit, configuration.DistanceMiles()
                                                     ? distance_unit::kMiles
                                                     : distance_unit::kKilometres);
  FillBands();
  ShowModes(configuration.Modes().empty() ? -1 : 0);
  for (const ConfigUrl& row : kConfigUrls) FillUrl(row.url);
  with_.view.SetChecked(ConfigCheck::kDiagMode, configuration.DiagMode());
  with_.view.SetChecked(ConfigCheck::kShowToolTips, configuration.ShowToolTips());
  with_.view.ShowToolTips(configuration.ShowToolTips());
  with_.view.SetChecked(ConfigCheck::kDualMonitor, configuration.DualMonitor());
  with_.view.SetLabel(ConfigLabel::kTestResult, "");
  with_.view.SetLabel(ConfigLabel::kProgramFolder, PathText(with_.program_folder));
  Form_Activate();
}

void IoncapConfig::FillBands() {
  const bool enabled = with_.configuration.FreqDependentEnabled() && !bands_missing_;
  with_.view.SetChecked(ConfigCheck::kFreqDependentEnabled, enabled);
  with_.view.Enable(ConfigCheck::kFreqDependentEnabled, !bands_missing_);
  with_.view.EnableBands(enabled);
  with_.view.SetLabel(ConfigLabel::kBandsMissing,
                      bands_missing_
                          ? "These settings cannot be used: there is no band file Bands.txt or "
                            "DefaultBands.txt in " +
                                PathText(with_.program_folder) + "."
                          : "");
  for (std::size_t band = 0; band < kBandCount; ++band) {
    with_.view.SetBand(band, with_.configuration.Band(band));
  }
}

void IoncapConfig::FillUrl(PanelText url) {
  const std::string& text = with_.configuration.Url(url);
  with_.view.SetUrl(url, text);
  with_.view.EnableOpen(url, !Trim(text).empty());
}

void IoncapConfig::ShowModes(int selected) {
  with_.view.SetModes(with_.configuration.Modes(), selected);
  with_.view.Enable(ConfigButton::kRemoveModeCmd, selected >= 0);
}

void IoncapConfig::ShowFindings() {
  for (int engine = 0; engine < static_cast<int>(kEngineCaptions.size()); ++engine) {
    const auto choice = static_cast<EngineChoice>(engine);
    with_.view.SetEngineFinding(engine, FindingText(FindEngine(with_.program_folder, choice)));
  }
}

void IoncapConfig::ShowStationSource() {
  const auto tessera = [&](const char* key) {
    return with_.settings.GetStringSetting("Tessera", "QTH", key, "");
  };
  const bool from_tessera = !tessera("LatDeg").empty() || !tessera("LonDeg").empty();
  with_.view.SetLabel(
      ConfigLabel::kStationSource,
      from_tessera
          ? "Your station's location comes from the settings of Tessera. Change it there; a "
            "location entered in the prediction window counts until the program ends."
          : "Your station's location comes from this program's own settings: enter it in the "
            "prediction window. Tessera has none stored; where it has, that one is used.");
}

void IoncapConfig::ShowErrorLog() {
  const std::filesystem::path& log = with_.diagnostics.LogPath();
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(log, error);
  with_.view.SetLabel(ConfigLabel::kErrorLog, error ? PathText(log) + " (not written so far)"
                                                    : PathText(log) + " (" + SizeText(size) + ")");
  with_.view.Enable(ConfigButton::kOpenLogCmd, !error);
}

void IoncapConfig::Peers_Change() {
  with_.diagnostics.Trap("IoncapConfig.Peers_Change",
                         [&] { with_.view.SetPeers(with_.peers.Peers()); });
}

/// Other windows and peers change the configuration too. The modes and bands are changed here
/// alone, and writing them anew would take the field from under the user's hands.
void IoncapConfig::ConfigurationChanged(Configuration::Item item) {
  switch (item) {
    case Configuration::Item::kEngine:
      with_.view.Select(ConfigOption::kEngineButton, with_.configuration.Engine());
      break;
    case Configuration::Item::kDistanceMiles:
      with_.view.Select(ConfigOption::kDistanceUnit, with_.configuration.DistanceMiles()
                                                         ? distance_unit::kMiles
                                                         : distance_unit::kKilometres);
      break;
    case Configuration::Item::kDiagMode:
      with_.diagnostics.SetDebug(with_.configuration.DiagMode());
      with_.view.SetChecked(ConfigCheck::kDiagMode, with_.configuration.DiagMode());
      break;
    case Configuration::Item::kUrls:
      for (const ConfigUrl& row : kConfigUrls) FillUrl(row.url);
      break;
    case Configuration::Item::kShowToolTips:
      with_.view.ShowToolTips(with_.configuration.ShowToolTips());
      break;
    case Configuration::Item::kFreqDependent:
    case Configuration::Item::kModes:
    case Configuration::Item::kDualMonitor:
      break;
  }
}

void IoncapConfig::Check(bool saved) {
  if (saved) return;
  with_.messages.Show(
      "The change counts until the program ends, but it could not be saved. The reason is in the "
      "error log " +
          PathText(with_.diagnostics.LogPath()),
      kProductName);
}

void IoncapConfig::Refuse(const std::string& text) {
  with_.diagnostics.DebugLog("IoncapConfig.Refuse: " + text);
  with_.messages.Show(text, kProductName);
}

// --- Engine -------------------------------------------------------------------------------------

void IoncapConfig::EngineButton_Click(int index) {
  with_.diagnostics.Trap("IoncapConfig.EngineButton_Click", [&] {
    with_.diagnostics.DebugLog("IoncapConfig.EngineButton_Click, Index = " + std::to_string(index));
    Check(with_.configuration.SetEngine(index));
  });
}

void IoncapConfig::TestCmd_Click(Time now) {
  with_.diagnostics.Trap("IoncapConfig.TestCmd_Click", [&] {
    with_.diagnostics.DebugLog("IoncapConfig.TestCmd_Click");
    if (with_.probe.Running()) return;
    const int engine = with_.configuration.Engine();
    tested_ = ReplaceAll(kEngineCaptions.at(static_cast<std::size_t>(engine)), "&&", "&");
    ShowFindings();
    const auto outcome = with_.probe.Start(static_cast<EngineChoice>(engine), now);
    if (outcome) {
      ShowOutcome(*outcome);
      return;
    }
    with_.view.Enable(ConfigButton::kTestCmd, false);
    with_.view.SetLabel(ConfigLabel::kTestResult, tested_ + ": the test is running.");
    with_.view.StartTestTimer(kTestInterval);
  });
}

void IoncapConfig::TestTimer_Tick(Time now) {
  with_.diagnostics.Trap("IoncapConfig.TestTimer_Tick", [&] {
    const auto outcome = with_.probe.Poll(now);
    if (outcome) ShowOutcome(*outcome);
    if (!with_.probe.Running()) {
      with_.view.StopTestTimer();
      with_.view.Enable(ConfigButton::kTestCmd, true);
    }
  });
}

void IoncapConfig::ShowOutcome(const EngineProbe::Outcome& outcome) {
  with_.view.SetLabel(ConfigLabel::kTestResult,
                      tested_ + (outcome.good ? " works. " : " does not work. ") + outcome.text);
}

// --- Stations, bands, modes ---------------------------------------------------------------------

void IoncapConfig::DistanceUnit_Click(int index) {
  with_.diagnostics.Trap("IoncapConfig.DistanceUnit_Click", [&] {
    Check(with_.configuration.SetDistanceMiles(index == distance_unit::kMiles));
  });
}

void IoncapConfig::FreqDependentEnabled_Click(bool checked) {
  with_.diagnostics.Trap("IoncapConfig.FreqDependentEnabled_Click", [&] {
    const bool saved = with_.configuration.SetFreqDependentEnabled(checked && !bands_missing_);
    FillBands();
    Check(saved);
  });
}

void IoncapConfig::Band_Change(std::size_t band, const BandSettings& settings) {
  with_.diagnostics.Trap("IoncapConfig.Band_Change", [&] {
    const BandSettings wanted{std::string(Trim(settings.takeoff)),
                              std::string(Trim(settings.power))};
    const BandSettings before = with_.configuration.Band(band);
    const std::string refusal = Refusal(wanted, std::string(kBandLabelTexts.at(band)));
    const bool saved =
        !refusal.empty() || wanted == before || with_.configuration.SetBand(band, wanted);
    with_.view.SetBand(band, with_.configuration.Band(band));
    if (!refusal.empty()) Refuse(refusal + ". The value before stays.");
    Check(saved);
  });
}

void IoncapConfig::Mode_Change(std::size_t row, const ModeSettings& settings) {
  with_.diagnostics.Trap("IoncapConfig.Mode_Change", [&] {
    std::vector<ModeSettings> modes = with_.configuration.Modes();
    // The row may have been removed since its field was left.
    if (row >= modes.size()) return;
    const ModeSettings wanted{std::string(Trim(settings.mode)), std::string(Trim(settings.snr))};
    const std::string refusal = Refusal(wanted, modes, row);
    const bool change = refusal.empty() && wanted != modes[row];
    if (change) modes[row] = wanted;
    const bool saved = !change || with_.configuration.SetModes(modes);
    with_.view.SetMode(row, modes[row]);
    if (!refusal.empty()) Refuse(refusal + ". The value before stays.");
    Check(saved);
  });
}

void IoncapConfig::AddModeCmd_Click() {
  with_.diagnostics.Trap("IoncapConfig.AddModeCmd_Click", [&] {
    std::vector<ModeSettings> modes = with_.configuration.Modes();
    modes.push_back({NewModeName(modes), kNewModeSnr});
    const int last = static_cast<int>(modes.size()) - 1;
    SaveModes(std::move(modes), last);
  });
}

void IoncapConfig::RemoveModeCmd_Click(std::size_t row) {
  with_.diagnostics.Trap("IoncapConfig.RemoveModeCmd_Click", [&] {
    std::vector<ModeSettings> modes = with_.configuration.Modes();
    if (row >= modes.size()) return;
    modes.erase(modes.begin() + static_cast<std::ptrdiff_t>(row));
    // The row that takes the place of the removed one, or the last.
    const int next = std::min(static_cast<int>(row), static_cast<int>(modes.size()) - 1);
    SaveModes(std::move(modes), next);
  });
}

void IoncapConfig::RestoreModesCmd_Click() {
  with_.diagnostics.Trap("IoncapConfig.RestoreModesCmd_Click",
                         [&] { SaveModes(DefaultModes(), 0); });
}

void IoncapConfig::SaveModes(std::vector<ModeSettings> modes, int selected) {
  const bool saved = with_.configuration.SetModes(std::move(modes));
  ShowModes(selected);
  Check(saved);
}

// --- Addresses ----------------------------------------------------------------------------------

void IoncapConfig::URL_Change(PanelText url, const std::string& text) {
  with_.diagnostics.Trap("IoncapConfig.URL_Change", [&] {
    const std::string wanted(Trim(text));
    const bool saved =
        wanted == with_.configuration.Url(url) || with_.configuration.SetUrl(url, wanted);
    FillUrl(url);
    Check(saved);
  });
}

void IoncapConfig::OpenURLCmd_Click(PanelText url) {
  with_.diagnostics.Trap("IoncapConfig.OpenURLCmd_Click", [&] {
    const std::string text(Trim(with_.configuration.Url(url)));
    with_.diagnostics.DebugLog("IoncapConfig.OpenURLCmd_Click, theURL = " + text);
    if (!IsWebAddress(text)) {
      Refuse("\"" + text +
             "\" is no address of a web page: it has to begin with https:// or "
             "http://.");
    } else if (!with_.view.OpenInBrowser(text)) {
      Refuse("No browser could be started for " + text);
    }
  });
}

void IoncapConfig::RestoreURLsCmd_Click() {
  with_.diagnostics.Trap("IoncapConfig.RestoreURLsCmd_Click", [&] {
    bool saved = true;
    for (const ConfigUrl& row : kConfigUrls) {
      saved = with_.configuration.SetUrl(row.url, DefaultUrl(row.url)) && saved;
      FillUrl(row.url);
    }
    Check(saved);
  });
}

// --- Diagnostics and windows --------------------------------------------------------------------

void IoncapConfig::DiagMode_Click(bool checked) {
  with_.diagnostics.Trap("IoncapConfig.DiagMode_Click", [&] {
    const bool saved = with_.configuration.SetDiagMode(checked);
    with_.diagnostics.SetDebug(checked);
    with_.diagnostics.DebugLog("IoncapConfig.DiagMode_Click");
    ShowErrorLog();
    Check(saved);
  });
}

void IoncapConfig::OpenLogCmd_Click() {
  with_.diagnostics.Trap("IoncapConfig.OpenLogCmd_Click", [&] {
    const std::filesystem::path& log = with_.diagnostics.LogPath();
    if (!with_.view.OpenFile(log)) Refuse("No program could be started for " + PathText(log));
  });
}

void IoncapConfig::OpenFolderCmd_Click() {
  with_.diagnostics.Trap("IoncapConfig.OpenFolderCmd_Click", [&] {
    if (!with_.view.OpenFile(with_.program_folder)) {
      Refuse("No program could be started for " + PathText(with_.program_folder));
    }
  });
}

void IoncapConfig::ShowToolTips_Click(bool checked) {
  with_.diagnostics.Trap("IoncapConfig.ShowToolTips_Click", [&] {
    const bool saved = with_.configuration.SetShowToolTips(checked);
    with_.view.ShowToolTips(checked);
    Check(saved);
  });
}

void IoncapConfig::DualMonitor_Click(bool checked) {
  with_.diagnostics.Trap("IoncapConfig.DualMonitor_Click",
                         [&] { Check(with_.configuration.SetDualMonitor(checked)); });
}

void IoncapConfig::ResetWindowsCmd_Click() {
  with_.diagnostics.Trap("IoncapConfig.ResetWindowsCmd_Click", [&] {
    with_.diagnostics.DebugLog("IoncapConfig.ResetWindowsCmd_Click");
    with_.host.ResetWindows();
  });
}

}  // namespace skyhop
