#include "ui/configuration/ioncap_config.h"

#include <utility>

#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"

namespace skyhop {
namespace {

constexpr const char* kWindowName = "IoncapConfig";

constexpr const char* kDebugLogStopped =
    ". The debug log has stopped, since the file is full: delete the file, then check the box "
    "again.";

std::string SizeText(std::uintmax_t bytes) {
  constexpr double thousand = 1000;
  const auto size = static_cast<double>(bytes);
  if (size < thousand) return std::to_string(bytes) + " bytes";
  if (size < thousand * thousand) return FixedText(size / thousand, 1) + " kB";
  return FixedText(size / (thousand * thousand), 1) + " MB";
}

}  // namespace

std::vector<PeerState> PeerOverview::Peers() const {
  return {{"Gleaner", "spots and solar indices", false, false},
          {"Tessera", "locations and antenna rotation", false, false},
          {"Tuneward", "transceiver control", false, false}};
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
    with_.view.ShowToolTips(with_.configuration.ShowToolTips());
    with_.view.SetPlacement(RestoreWindowPosition(kWindowName, with_.view.Placement(),
                                                  with_.view.Monitors(), with_.settings));
  });
}

void IoncapConfig::Show() {
  with_.diagnostics.Trap("IoncapConfig.Show", [&] {
    with_.diagnostics.DebugLog("IoncapConfig.Show");
    if (!filled_) Fill();
    for (const ConfigUrl& row : kConfigUrls) FillUrl(row.url);
    Form_Activate();
    with_.view.ShowWindow();
  });
}

void IoncapConfig::Form_Activate() {
  with_.diagnostics.Trap("IoncapConfig.Form_Activate", [&] {
    ShowFindings();
    ShowAntennaFiles();
    ShowStationSource();
    ShowErrorLog();
    ShowUrlNotes();
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
    if (filled_) FillBands();
  });
}

// --- What the window shows ----------------------------------------------------------------------

void IoncapConfig::Fill() {
  with_.view.CreateControls();
  filled_ = true;
  const Configuration& configuration = with_.configuration;
  with_.view.Select(ConfigOption::kEngineButton, configuration.Engine());
  with_.view.Select(ConfigOption::kDistanceUnit, configuration.DistanceMiles()
                                                     ? distance_unit::kMiles
                                                     : distance_unit::kKilometres);
  ShowAntennas();
  FillBands();
  ShowModes(configuration.Modes().empty() ? -1 : 0);
  for (const ConfigUrl& row : kConfigUrls) FillUrl(row.url);
  with_.view.SetChecked(ConfigCheck::kDiagMode, configuration.DiagMode());
  with_.view.SetChecked(ConfigCheck::kShowToolTips, configuration.ShowToolTips());
  with_.view.SetChecked(ConfigCheck::kDualMonitor, configuration.DualMonitor());
  with_.view.SetChecked(ConfigCheck::kDownloadSsnAtStart, configuration.DownloadSsnAtStart());
  with_.view.SetLabel(ConfigLabel::kTestResult, "");
  with_.view.SetLabel(ConfigLabel::kProgramFolder, PathText(with_.program_folder));
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

void IoncapConfig::FillUrl(Address url) {
  const std::string& text = with_.configuration.Url(url);
  with_.view.SetUrl(url, text);
  with_.view.EnableOpen(url, !Trim(text).empty());
  with_.view.SetUrlNote(url, with_.space_weather.LastGiven(url));
}

void IoncapConfig::ShowUrlNotes() {
  for (const ConfigUrl& row : kConfigUrls) {
    with_.view.SetUrlNote(row.url, with_.space_weather.LastGiven(row.url));
  }
}

void IoncapConfig::ShowModes(int selected) {
  with_.view.SetModes(with_.configuration.Modes(), selected);
  with_.view.Enable(ConfigButton::kRemoveModeCmd, selected >= 0);
}

void IoncapConfig::ShowFindings() {
  for (int engine = 0; engine < static_cast<int>(kEngineCaptions.size()); ++engine) {
    const auto choice = static_cast<EngineChoice>(engine);
    const EngineFinding finding = FindEngine(with_.machine, with_.program_folder, choice);
    std::string text = FindingText(finding);
    // The estimate engine is in IONCAP's place until the user puts the real one there.
    if (choice == EngineChoice::kIonCap && finding.can_run &&
        finding.kind != EngineKind::kEstimate && IsEstimate(finding, with_.machine)) {
      text = "Uses the built-in estimate engine: " + PathText(finding.executable);
    }
    if (choice == EngineChoice::kVoaCap || choice == EngineChoice::kVoaCapSnr) {
      text += PointFinding(finding);
    }
    with_.view.SetEngineFinding(engine, text);
  }
}

/// The finding for point predictions, which have their own engine folder: a sentence after that of
/// the chart's VOACAP; empty if both are the same.
std::string IoncapConfig::PointFinding(const EngineFinding& chart) const {
  const EngineFinding point =
      FindEngine(with_.machine, with_.program_folder, EngineChoice::kVoaCapSnr, EngineUse::kPoint);
  if (point.kind == chart.kind && point.can_run == chart.can_run) return {};
  std::string text = FindingText(point);
  text.front() = LowerCase(text.front());
  const bool sentence = FindingText(chart).ends_with('.');
  return (sentence ? " SNR at a Frequency: " : ". SNR at a Frequency: ") + text;
}

void IoncapConfig::ShowAntennas() {
  for (const Station station : {Station::kLocal, Station::kDX}) {
    with_.view.SetAntenna(station, with_.configuration.AntennaOf(station));
  }
}

/// Shows the antenna files of the selected engine, or those of VOACAP if the selected engine uses
/// none.
void IoncapConfig::ShowAntennaFiles() {
  auto engine = static_cast<EngineChoice>(with_.configuration.Engine());
  if (engine == EngineChoice::kIonCap) engine = EngineChoice::kVoaCap;
  const EngineFinding finding = FindEngine(with_.machine, with_.program_folder, engine);
  const std::filesystem::path folder = finding.data / "antennas";
  std::vector<std::string> files;
  if (!finding.data.empty()) files = ListAntennas(folder);
  with_.view.SetAntennaFiles(files);
  std::string note;
  if (finding.kind == EngineKind::kEstimate) {
    note = "The built-in estimate engine knows no antenna files.";
  } else if (files.empty()) {
    note = "There are no antenna files in " + PathText(folder) + ".";
  } else {
    note = "The files are those in " + PathText(folder) + ".";
  }
  with_.view.SetLabel(ConfigLabel::kAntennaFiles, note);
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
  // A debug log that grows too large switches itself off.
  const bool stopped = with_.configuration.DiagMode() && !with_.diagnostics.GetDebug();
  with_.view.SetLabel(ConfigLabel::kErrorLog, error ? PathText(log) + " (not written so far)"
                                                    : PathText(log) + " (" + SizeText(size) + ")" +
                                                          (stopped ? kDebugLogStopped : ""));
  with_.view.SetChecked(ConfigCheck::kDiagMode, with_.configuration.DiagMode() && !stopped);
  with_.view.Enable(ConfigButton::kOpenLogCmd, !error);
}

void IoncapConfig::Peers_Change() {
  if (!filled_) return;
  with_.diagnostics.Trap("IoncapConfig.Peers_Change",
                         [&] { with_.view.SetPeers(with_.peers.Peers()); });
}

/// Updates the window after other windows or peers change the configuration. Only this window
/// changes modes and bands, so these are not written again: that would disturb a field that the
/// user edits.
void IoncapConfig::ConfigurationChanged(Configuration::Item item) {
  const bool diagnostics = with_.configuration.DiagMode();
  const bool tool_tips = with_.configuration.ShowToolTips();
  if (item == Configuration::Item::kDiagMode) with_.diagnostics.SetDebug(diagnostics);
  if (item == Configuration::Item::kShowToolTips) with_.view.ShowToolTips(tool_tips);
  if (!filled_) return;
  switch (item) {
    case Configuration::Item::kEngine:
      with_.view.Select(ConfigOption::kEngineButton, with_.configuration.Engine());
      ShowAntennaFiles();
      break;
    case Configuration::Item::kDistanceMiles:
      with_.view.Select(ConfigOption::kDistanceUnit, with_.configuration.DistanceMiles()
                                                         ? distance_unit::kMiles
                                                         : distance_unit::kKilometres);
      break;
    case Configuration::Item::kDiagMode:
      with_.view.SetChecked(ConfigCheck::kDiagMode, diagnostics);
      break;
    case Configuration::Item::kUrls:
      for (const ConfigUrl& row : kConfigUrls) FillUrl(row.url);
      break;
    case Configuration::Item::kAntennas:
      ShowAntennas();
      break;
    case Configuration::Item::kShowToolTips:
    case Configuration::Item::kFreqDependent:
    case Configuration::Item::kModes:
    case Configuration::Item::kDualMonitor:
    case Configuration::Item::kDownloadSsnAtStart:
      break;
  }
}

}  // namespace skyhop
