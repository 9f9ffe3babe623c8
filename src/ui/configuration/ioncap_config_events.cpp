// The user's actions in the configuration window.

#include <algorithm>

#include "common/files.h"
#include "common/program.h"
#include "common/text.h"
#include "ui/configuration/input_rules.h"
#include "ui/configuration/ioncap_config.h"
#include "ui/shared/web_address.h"

namespace skyhop {
namespace {

constexpr std::chrono::milliseconds kTestInterval{50};

/// A name that no mode has yet.
std::string NewModeName(const std::vector<ModeSettings>& modes) {
  for (int number = 1;; ++number) {
    std::string name = "Mode " + std::to_string(number);
    if (Refusal({name, "0"}, modes, modes.size()).empty()) return name;
  }
}

constexpr const char* kNewModeSnr = "24";

}  // namespace

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
  const char* verdict = " does not work. ";
  if (outcome.good) {
    verdict = outcome.installed ? " works. " : " is not installed: the estimate would be used. ";
  }
  with_.view.SetLabel(ConfigLabel::kTestResult, tested_ + verdict + outcome.text);
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

void IoncapConfig::Antenna_Change(Station station, const Antenna& antenna) {
  with_.diagnostics.Trap("IoncapConfig.Antenna_Change", [&] {
    const Antenna wanted{std::string(Trim(antenna.file)), std::string(Trim(antenna.gain)),
                         std::string(Trim(antenna.azimuth))};
    std::string problem = AntennaProblem(wanted);
    const bool saved = !problem.empty() || with_.configuration.SetAntenna(station, wanted);
    with_.view.SetAntenna(station, with_.configuration.AntennaOf(station));
    if (!problem.empty()) {
      problem.front() = UpperCase(problem.front());
      Refuse(problem + ". The value before stays.");
    }
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
    SaveModes(modes, last);
  });
}

void IoncapConfig::RemoveModeCmd_Click(std::size_t row) {
  with_.diagnostics.Trap("IoncapConfig.RemoveModeCmd_Click", [&] {
    std::vector<ModeSettings> modes = with_.configuration.Modes();
    if (row >= modes.size()) return;
    modes.erase(modes.begin() + static_cast<std::ptrdiff_t>(row));
    // Select the row that follows the removed one, or the last.
    const int next = std::min(static_cast<int>(row), static_cast<int>(modes.size()) - 1);
    SaveModes(modes, next);
  });
}

void IoncapConfig::RestoreModesCmd_Click() {
  with_.diagnostics.Trap("IoncapConfig.RestoreModesCmd_Click",
                         [&] { SaveModes(DefaultModes(), 0); });
}

void IoncapConfig::SaveModes(const std::vector<ModeSettings>& modes, int selected) {
  const bool saved = with_.configuration.SetModes(modes);
  ShowModes(selected);
  Check(saved);
}

// --- Addresses ----------------------------------------------------------------------------------

void IoncapConfig::URL_Change(Address url, const std::string& text) {
  with_.diagnostics.Trap("IoncapConfig.URL_Change", [&] {
    const std::string wanted(Trim(text));
    const bool saved =
        wanted == with_.configuration.Url(url) || with_.configuration.SetUrl(url, wanted);
    FillUrl(url);
    Check(saved);
  });
}

void IoncapConfig::OpenURLCmd_Click(Address url) {
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

void IoncapConfig::DownloadSsnAtStart_Click(bool checked) {
  with_.diagnostics.Trap("IoncapConfig.DownloadSsnAtStart_Click",
                         [&] { Check(with_.configuration.SetDownloadSsnAtStart(checked)); });
}

void IoncapConfig::DualMonitor_Click(bool checked) {
  with_.diagnostics.Trap("IoncapConfig.DualMonitor_Click",
                         [&] { Check(with_.configuration.SetDualMonitor(checked)); });
}

void IoncapConfig::ResetWindowsCmd_Click() {
  with_.diagnostics.Trap("IoncapConfig.ResetWindowsCmd_Click", [&] {
    with_.diagnostics.DebugLog("IoncapConfig.ResetWindowsCmd_Click");
    ResetWindows();
  });
}

void IoncapConfig::ResetWindows() {
  with_.host.ResetWindows();
}

void IoncapConfig::ConnectCmd_Click(std::size_t row) {
  with_.diagnostics.Trap("IoncapConfig.ConnectCmd_Click", [&] {
    with_.diagnostics.DebugLog("IoncapConfig.ConnectCmd_Click");
    with_.peers.Connect(row);
    Peers_Change();
  });
}

}  // namespace skyhop
