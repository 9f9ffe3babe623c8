#include "ui/configuration/ioncap_config.h"

#include <gtest/gtest.h>

#include "common/files.h"
#include "common/program.h"
#include "support/fake_configuration_view.h"
#include "support/fake_engine_host.h"
#include "support/fake_launcher.h"
#include "support/prediction_fixture.h"

namespace skyhop {
namespace {

using skyhop::testing::FakeConfigurationView;
using skyhop::testing::FakeEngineHost;
using skyhop::testing::FakePause;
using skyhop::testing::OneLocker;
using skyhop::testing::PlainLauncher;
using skyhop::testing::PredictionFixture;
using skyhop::testing::TestData;
using std::chrono::milliseconds;

class CountingHost : public ConfigurationHost {
 public:
  void ResetWindows() override { ++resets; }
  int resets = 0;
};

/// Connects at once.
class ConnectingPeers : public PeerOverview {
 public:
  [[nodiscard]] std::vector<PeerState> Peers() const override {
    std::vector<PeerState> peers = PeerOverview::Peers();
    for (const std::size_t row : connected) peers.at(row).connected = true;
    return peers;
  }
  void Connect(std::size_t row) override { connected.push_back(row); }

  std::vector<std::size_t> connected;
};

class IoncapConfigTest : public ::testing::Test {
 protected:
  IoncapConfigTest() { WriteFile(with_.log.folder / "Bands.txt", "20M, 14.0, 14.35\n"); }

  void Load() { window_.Form_Load(); }
  /// Also sets the values of the view and searches the folders.
  void LoadAndOpen() {
    Load();
    window_.Show();
  }

  void InstallEngine(const std::string& name) {
    skyhop::testing::InstallEngine(with_.log.folder / name);
  }

  std::string Stored(const std::string& section, const std::string& key) {
    return with_.store.Read(kProductName, section, key, "nothing stored");
  }

  /// The message of the last event, which shows at most one.
  std::string Message() {
    EXPECT_LE(with_.messages.shown.size(), 1U);
    if (with_.messages.shown.empty()) return "";
    EXPECT_EQ(with_.messages.shown[0].second, kProductName);
    std::string text = with_.messages.shown[0].first;
    with_.messages.shown.clear();
    return text;
  }

  PredictionFixture with_;
  FakeConfigurationView view_;
  Configuration configuration_{with_.settings, with_.log.diagnostics};
  FreqDependentModule::BandTable bands_{with_.log.folder.Path(), with_.log.diagnostics,
                                        [this] { window_.BandsMissing(); }};
  OneLocker locker_;
  PlainLauncher launcher_;
  FakeEngineHost machine_;
  FakePause pause_;
  EngineProbe probe_{
      {locker_, launcher_, machine_, pause_, with_.log.diagnostics, with_.log.folder.Path()}};
  ConnectingPeers peers_;
  SpaceWeather space_weather_;
  CountingHost host_;
  IoncapConfig window_{{view_, configuration_, bands_, probe_, machine_, peers_, space_weather_,
                        host_, with_.messages, with_.settings, with_.log.diagnostics,
                        with_.log.folder.Path()}};
};

TEST_F(IoncapConfigTest, RestoresValuesBandsAndPlaceOnLoad) {
  with_.store.SaveSetting(kProductName, "Configuration", "Engine", "2");
  with_.store.SaveSetting(kProductName, "Configuration", "DistanceMiles", "False");
  with_.store.SaveSetting(kProductName, "Windows", "IoncapConfigLeft", "333");
  Load();
  EXPECT_EQ(view_.placement.left, 333);
  EXPECT_EQ(bands_.GetBandNameForFreq(14.1), "20M");
  EXPECT_FALSE(view_.shown);
  window_.Show();
  EXPECT_EQ(view_.options[ConfigOption::kEngineButton], 2);
  EXPECT_EQ(view_.options[ConfigOption::kDistanceUnit], distance_unit::kKilometres);
  EXPECT_EQ(view_.modes, DefaultModes());
  EXPECT_EQ(view_.labels[ConfigLabel::kBandsMissing], "");
}

TEST_F(IoncapConfigTest, SetsNoValuesBeforeTheWindowIsShown) {
  std::filesystem::remove(with_.log.folder / "Bands.txt");
  Load();
  configuration_.SetEngine(1);
  configuration_.SetDistanceMiles(false);
  configuration_.SetUrl(Address::kSSNURL, "https://example.org");
  configuration_.SetShowToolTips(false);
  window_.Peers_Change();
  EXPECT_FALSE(view_.tool_tips) << "not a value of a control";
  EXPECT_TRUE(view_.options.empty() && view_.checked.empty() && view_.labels.empty());
  EXPECT_TRUE(view_.bands.empty() && view_.urls.empty() && view_.peers.empty());
  window_.Show();
  EXPECT_EQ(view_.options[ConfigOption::kEngineButton], 1);
  EXPECT_EQ(view_.options[ConfigOption::kDistanceUnit], distance_unit::kKilometres);
  EXPECT_EQ(view_.urls[Address::kSSNURL], "https://example.org");
  EXPECT_FALSE(view_.checked[ConfigCheck::kShowToolTips]);
  EXPECT_NE(view_.labels[ConfigLabel::kBandsMissing], "");
  EXPECT_EQ(view_.peers.size(), 3U);
}

TEST_F(IoncapConfigTest, ListsTheAntennasOfTheUsedEngine) {
  const std::filesystem::path folder = with_.log.folder.Path();
  machine_.estimate = folder / "estimate.exe";
  WriteFile(machine_.estimate, "x");
  LoadAndOpen();
  EXPECT_EQ(view_.labels[ConfigLabel::kAntennaFiles],
            "The built-in estimate engine knows no antenna files.");
  for (const char* name : {"ITSHFBC/bin_win/voacapw.exe", "ITSHFBC/antennas/samples/sample.23"}) {
    std::filesystem::create_directories((folder / name).parent_path());
    WriteFile(folder / name, "x");
  }
  window_.Form_Activate();
  EXPECT_EQ(view_.antenna_files, std::vector<std::string>{"samples/sample.23"});
  EXPECT_EQ(view_.labels[ConfigLabel::kAntennaFiles],
            "The files are those in " + PathText(folder / "ITSHFBC" / "antennas") + ".");
}

TEST_F(IoncapConfigTest, AcceptsAnAntennaOrShowsTheReason) {
  Load();
  window_.Antenna_Change(Station::kDX, {"samples/sample.23", "", " 45 "});
  EXPECT_EQ(configuration_.AntennaOf(Station::kDX), (Antenna{"samples/sample.23", "", "45"}));
  EXPECT_EQ(view_.antennas[Station::kDX].azimuth, "45");
  EXPECT_TRUE(with_.messages.shown.empty());
  window_.Antenna_Change(Station::kDX, {"samples/sample.23", "", "400"});
  EXPECT_EQ(Message(),
            "The antenna azimuth \"400\" is no number from 0 to 360 degrees. The value before "
            "stays.");
  EXPECT_EQ(view_.antennas[Station::kDX].azimuth, "45");
  EXPECT_EQ(configuration_.AntennaOf(Station::kLocal), Antenna());
}

TEST_F(IoncapConfigTest, HidesTheWindowAndSavesItsPlaceOnClose) {
  Load();
  window_.Show();
  EXPECT_TRUE(view_.shown);
  view_.placement.left = 77;
  window_.Form_QueryUnload();
  EXPECT_FALSE(view_.shown);
  EXPECT_EQ(Stored("Windows", "IoncapConfigLeft"), "77");
  view_.placement.left = 78;
  window_.Form_Unload();
  EXPECT_EQ(Stored("Windows", "IoncapConfigLeft"), "78");
}

TEST_F(IoncapConfigTest, DisablesFrequencyDependentSettingsWithoutABandFile) {
  std::filesystem::remove(with_.log.folder / "Bands.txt");
  with_.store.SaveSetting(kProductName, "Configuration", "FreqDependentEnabled", "True");
  LoadAndOpen();
  EXPECT_FALSE(configuration_.FreqDependentEnabled());
  EXPECT_FALSE(view_.checked[ConfigCheck::kFreqDependentEnabled]);
  EXPECT_FALSE(view_.checks_enabled[ConfigCheck::kFreqDependentEnabled]);
  EXPECT_EQ(view_.bands_enabled, false);
  EXPECT_EQ(view_.labels[ConfigLabel::kBandsMissing],
            "These settings cannot be used: there is no band file Bands.txt or DefaultBands.txt "
            "in " +
                PathText(with_.log.folder.Path()) + ".");
  window_.FreqDependentEnabled_Click(true);
  EXPECT_FALSE(configuration_.FreqDependentEnabled());
}

TEST_F(IoncapConfigTest, EnablesTheBandTableByItsCheckBox) {
  Load();
  window_.FreqDependentEnabled_Click(true);
  EXPECT_TRUE(configuration_.FreqDependentEnabled());
  EXPECT_EQ(view_.bands_enabled, true);
  window_.FreqDependentEnabled_Click(false);
  EXPECT_EQ(view_.bands_enabled, false);
}

TEST_F(IoncapConfigTest, AcceptsBandValuesOrShowsTheReason) {
  const std::string takeoff =
      "The take-off angle on 20 m has to be a number of degrees from 0 to 90. The value before "
      "stays.";
  const std::string power =
      "The power on 20 m has to be a number of watts, 0 or more. The value before stays.";
  const struct {
    BandSettings given;
    BandSettings kept;
    std::string message;
  } cases[] = {
      {{" 5 ", "100"}, {"5", "100"}, ""},    {{"90", "0"}, {"90", "0"}, ""},
      {{"90.5", "0"}, {"90", "0"}, takeoff}, {{"-1", "0"}, {"90", "0"}, takeoff},
      {{"high", "0"}, {"90", "0"}, takeoff}, {{"90", "-1"}, {"90", "0"}, power},
      {{"90", "100 W"}, {"90", "0"}, power}, {{"90", "1e999"}, {"90", "0"}, power},
      {{"", "0.5"}, {"", "0.5"}, ""},        {{"", ""}, {"", ""}, ""},
  };
  constexpr std::size_t band = 5;
  Load();
  for (const auto& [given, kept, message] : cases) {
    view_.bands[band] = given;
    window_.Band_Change(band, given);
    EXPECT_EQ(configuration_.Band(band), kept);
    EXPECT_EQ(view_.bands[band], kept) << "the field shows what counts";
    EXPECT_EQ(Message(), message);
  }
}

TEST_F(IoncapConfigTest, AcceptsModesOrShowsTheReason) {
  const std::string name =
      "The name of a mode may hold no comma, no bracket, no \"=\" and no \"\\\", and may not "
      "begin with \";\" or \"#\". The value before stays.";
  const std::string snr =
      "The required SNR of RTTY has to be a number of decibels from -30 to 99. The value before "
      "stays.";
  const ModeSettings rtty{"RTTY", "-30"};
  const struct {
    ModeSettings given;
    ModeSettings kept;
    std::string message;
  } cases[] = {
      {{" RTTY ", " 99 "}, {"RTTY", "99"}, ""},
      {{"RTTY", "-30"}, rtty, ""},
      {{"RTTY", "99.5"}, rtty, snr},
      {{"RTTY", "-30.5"}, rtty, snr},
      {{"RTTY", ""}, rtty, snr},
      {{"  ", "24"}, rtty, "A mode needs a name. The value before stays."},
      {{"A=B", "24"}, rtty, name},
      {{"[A]", "24"}, rtty, name},
      {{"A,B", "24"}, rtty, name},
      {{"#1", "24"}, rtty, name},
      {{"A mode with a long name", "24"},
       rtty,
       "The name of a mode may have 20 characters at most. The value before stays."},
      {{"other", "24"}, rtty, "There is a mode Other already. The value before stays."},
      {{"rtty", "24"}, {"rtty", "24"}, ""},
  };
  Load();
  ASSERT_TRUE(configuration_.SetModes({{"Other", "1"}, {"CW", "24"}}));
  window_.Show();
  view_.modes = configuration_.Modes();
  for (const auto& [given, kept, message] : cases) {
    window_.Mode_Change(1, given);
    EXPECT_EQ(configuration_.Modes(), (std::vector<ModeSettings>{{"Other", "1"}, kept}));
    EXPECT_EQ(view_.modes, configuration_.Modes());
    EXPECT_EQ(Message(), message);
  }
  window_.Mode_Change(9, rtty);
  EXPECT_EQ(configuration_.Modes().size(), 2U) << "a row that is gone is not changed";
}

TEST_F(IoncapConfigTest, AddsRemovesAndRestoresModes) {
  Load();
  ASSERT_TRUE(configuration_.SetModes({{"CW", "24"}, {"Mode 1", "30"}}));
  window_.AddModeCmd_Click();
  EXPECT_EQ(view_.modes,
            (std::vector<ModeSettings>{{"CW", "24"}, {"Mode 1", "30"}, {"Mode 2", "24"}}));
  EXPECT_EQ(view_.selected_mode, 2);
  window_.RemoveModeCmd_Click(2);
  EXPECT_EQ(view_.selected_mode, 1) << "the last row that is left";
  window_.RemoveModeCmd_Click(0);
  EXPECT_EQ(view_.modes, (std::vector<ModeSettings>{{"Mode 1", "30"}}));
  EXPECT_TRUE(view_.buttons_enabled[ConfigButton::kRemoveModeCmd]);
  window_.RemoveModeCmd_Click(0);
  EXPECT_TRUE(configuration_.Modes().empty());
  EXPECT_FALSE(view_.buttons_enabled[ConfigButton::kRemoveModeCmd]);
  window_.RestoreModesCmd_Click();
  EXPECT_EQ(configuration_.Modes(), DefaultModes());
  EXPECT_EQ(view_.selected_mode, 0);
}

TEST_F(IoncapConfigTest, ShowsTheFindingOfEachEngine) {
  InstallEngine("IonCap/ioncap.exe");
  for (const char* engine : {"ITSHFBC/bin_win/voacapw.exe", "ITSHFBC2/bin_win/voacapw.exe"}) {
    InstallEngine(engine);
    std::filesystem::permissions(with_.log.folder / engine, std::filesystem::perms::owner_read);
  }
  Load();
  window_.Form_Activate();
  const std::filesystem::path folder = with_.log.folder.Path();
  const std::filesystem::path programs = folder / "ITSHFBC" / "bin_win";
  const std::string ioncap = PathText(folder / "IonCap" / "ioncap.exe");
  EXPECT_EQ(view_.findings[0], "Found: " + ioncap);
  EXPECT_EQ(view_.findings[1], "Not found; expected at " + PathText(programs / "icepacw.exe"));
  // If the system has no right to execute, the name identifies programs.
  const bool with_rights = std::filesystem::path::preferred_separator == '/';
  EXPECT_EQ(view_.findings[3], (with_rights ? "Found, but it cannot be executed: " : "Found: ") +
                                   PathText(programs / "voacapw.exe"));
  window_.EngineButton_Click(3);
  EXPECT_EQ(Stored("Configuration", "Engine"), "3");
  InstallEngine("estimate.exe");
  machine_.estimate = folder / "estimate.exe";
  window_.Form_Activate();
  EXPECT_EQ(view_.findings[0], "Uses the built-in estimate engine: " + ioncap);
}

TEST_F(IoncapConfigTest, ShowsAnotherPointEngineInTheVoacapRows) {
  const std::filesystem::path folder = with_.log.folder.Path();
  machine_.estimate = folder / "estimate.exe";
  InstallEngine("estimate.exe");
  Load();
  EXPECT_EQ(view_.findings[3].find("SNR at a Frequency"), std::string::npos);
  InstallEngine("ITSHFBC/bin_win/voacapw.exe");
  window_.Form_Activate();
  const std::string chart = "Found: " + PathText(folder / "ITSHFBC" / "bin_win" / "voacapw.exe");
  const std::filesystem::path missing = folder / "ITSHFBC2" / "bin_win" / "voacapw.exe";
  const std::string both = chart +
                           ". SNR at a Frequency: uses the built-in estimate engine. There is no " +
                           PathText(missing) + ".";
  EXPECT_EQ(view_.findings[2].substr(0, both.size()), both);
  EXPECT_EQ(view_.findings[3], view_.findings[2]);
  EXPECT_EQ(view_.findings[1].find("SNR at a Frequency"), std::string::npos);
  InstallEngine("ITSHFBC2/bin_win/voacapw.exe");
  window_.Form_Activate();
  EXPECT_EQ(view_.findings[3], chart);
}

TEST_F(IoncapConfigTest, ShowsTheOutcomeOfTheTestedEngine) {
  InstallEngine("IonCap/ioncap.exe");
  Load();
  const IoncapConfig::Time begin{};
  window_.TestCmd_Click(begin);
  EXPECT_TRUE(view_.timer_runs);
  EXPECT_FALSE(view_.buttons_enabled[ConfigButton::kTestCmd]);
  EXPECT_EQ(view_.labels[ConfigLabel::kTestResult], "IONCAP LUF & MUF: the test is running.");
  window_.EngineButton_Click(1);
  window_.TestTimer_Tick(begin + milliseconds(50));
  window_.TestTimer_Tick(begin + milliseconds(1050));
  EXPECT_FALSE(view_.timer_runs);
  EXPECT_TRUE(view_.buttons_enabled[ConfigButton::kTestCmd]);
  EXPECT_EQ(view_.labels[ConfigLabel::kTestResult],
            "IONCAP LUF & MUF does not work. The engine ended without results.");
  window_.TestCmd_Click(begin);
  EXPECT_FALSE(view_.timer_runs) << "a missing engine is not waited for";
  EXPECT_EQ(view_.labels[ConfigLabel::kTestResult].find("ICEPAC LUF & MUF does not work. The "
                                                        "engine is missing"),
            0U);
}

TEST_F(IoncapConfigTest, ReportsNoInstalledEngineWhenTheEstimateAnswers) {
  InstallEngine("IonCap/ioncap.exe");
  Load();
  const IoncapConfig::Time begin{};
  window_.TestCmd_Click(begin);
  WriteFile(with_.log.folder / "IonCap/testresults.txt",
            ReplaceAll(skyhop::testing::TestData("results/newyork-london-method26.results.txt"),
                       "  VOACAP   V", "  SKYHOP ESTIMATE ENGINE   V"));
  window_.TestTimer_Tick(begin + milliseconds(50));
  EXPECT_EQ(view_.labels[ConfigLabel::kTestResult].find(
                "IONCAP LUF & MUF is not installed: the estimate would be used. SKYHOP ESTIMATE "
                "ENGINE, version 16.1207W, answered"),
            0U)
      << view_.labels[ConfigLabel::kTestResult];
}

TEST_F(IoncapConfigTest, DefaultAddressesAreThoseOfAFreshInstallation) {
  Load();
  for (const ConfigUrl& row : kConfigUrls) {
    EXPECT_EQ(configuration_.Url(row.url), DefaultUrl(row.url));
  }
  for (const ConfigUrl& row : kConfigUrls) window_.URL_Change(row.url, "elsewhere");
  window_.RestoreURLsCmd_Click();
  for (const ConfigUrl& row : kConfigUrls) {
    EXPECT_EQ(configuration_.Url(row.url), DefaultUrl(row.url));
    EXPECT_EQ(view_.urls[row.url], DefaultUrl(row.url));
    EXPECT_EQ(view_.open_enabled[row.url], *DefaultUrl(row.url) != '\0') << row.label;
  }
}

TEST_F(IoncapConfigTest, OpensOnlyWebAddresses) {
  Load();
  window_.URL_Change(Address::kURL3, "  HTTPS://example.org/a b  ");
  EXPECT_EQ(Stored("Configuration", "URL3"), "HTTPS://example.org/a b");
  window_.OpenURLCmd_Click(Address::kURL3);
  EXPECT_EQ(view_.opened, std::vector<std::string>{"HTTPS://example.org/a b"});
  EXPECT_EQ(Message(), "");
  view_.can_open = false;
  window_.OpenURLCmd_Click(Address::kURL3);
  EXPECT_EQ(Message(), "No browser could be started for HTTPS://example.org/a b");
  view_.opened.clear();
  for (const char* text : {"/usr/bin/program", "file:///etc/passwd", "www.example.org", ""}) {
    window_.URL_Change(Address::kURL3, text);
    window_.OpenURLCmd_Click(Address::kURL3);
    EXPECT_NE(Message().find("is no address of a web page"), std::string::npos);
  }
  EXPECT_TRUE(view_.opened.empty());
}

TEST_F(IoncapConfigTest, AppliesAndReportsAChangeThatIsNotSaved) {
  Load();
  configuration_.SetUrl(Address::kURL0, "elsewhere");
  configuration_.SetUrl(Address::kURL2, "elsewhere");
  with_.store.save_error = 75;
  window_.DistanceUnit_Click(distance_unit::kKilometres);
  EXPECT_FALSE(configuration_.DistanceMiles());
  EXPECT_EQ(Message().find("The change counts until the program ends, but it could not be saved."),
            0U);
  window_.RestoreURLsCmd_Click();
  EXPECT_NE(Message(), "") << "one message for all addresses";
}

TEST_F(IoncapConfigTest, SwitchesDebugLoggingAndShowsTheLogsSize) {
  LoadAndOpen();
  with_.log.diagnostics.SetDebugListener({});
  const std::string path = PathText(with_.log.diagnostics.LogPath());
  EXPECT_EQ(view_.labels[ConfigLabel::kErrorLog], path + " (not written so far)");
  EXPECT_FALSE(view_.buttons_enabled[ConfigButton::kOpenLogCmd]);
  window_.DiagMode_Click(true);
  EXPECT_TRUE(with_.log.diagnostics.GetDebug());
  EXPECT_TRUE(view_.buttons_enabled[ConfigButton::kOpenLogCmd]);
  window_.DiagMode_Click(false);
  EXPECT_FALSE(with_.log.diagnostics.GetDebug());
  const struct {
    std::size_t size;
    const char* text;
  } cases[] = {{999, " (999 bytes)"}, {12'345, " (12.3 kB)"}, {2'500'000, " (2.5 MB)"}};
  for (const auto& [size, text] : cases) {
    WriteFile(with_.log.diagnostics.LogPath(), std::string(size, 'x'));
    window_.Form_Activate();
    EXPECT_EQ(view_.labels[ConfigLabel::kErrorLog], path + text);
  }
}

TEST_F(IoncapConfigTest, ShowsWhenTheDebugLogStoppedItself) {
  Load();
  with_.log.diagnostics.SetDebugListener({});
  const std::filesystem::path& log = with_.log.diagnostics.LogPath();
  window_.DiagMode_Click(true);
  EXPECT_TRUE(view_.checked[ConfigCheck::kDiagMode]);
  std::filesystem::resize_file(log, 100'000'001);
  with_.log.diagnostics.DebugLog("one line too many");
  window_.Form_Activate();
  EXPECT_FALSE(view_.checked[ConfigCheck::kDiagMode]);
  EXPECT_NE(view_.labels[ConfigLabel::kErrorLog].find("(100.0 MB). The debug log has stopped"),
            std::string::npos)
      << view_.labels[ConfigLabel::kErrorLog];
  window_.DiagMode_Click(true);
  EXPECT_FALSE(view_.checked[ConfigCheck::kDiagMode]) << "the file is still there";
  std::filesystem::remove(log);
  window_.DiagMode_Click(true);
  EXPECT_TRUE(view_.checked[ConfigCheck::kDiagMode]);
  EXPECT_TRUE(std::filesystem::exists(log));
}

TEST_F(IoncapConfigTest, ShowsTheUsedSourceOfYourStation) {
  LoadAndOpen();
  EXPECT_NE(view_.labels[ConfigLabel::kStationSource].find("this program's own settings"),
            std::string::npos);
  with_.store.SaveSetting("Tessera", "QTH", "LonDeg", "8");
  window_.Form_Activate();
  EXPECT_NE(view_.labels[ConfigLabel::kStationSource].find("from the settings of Tessera"),
            std::string::npos);
}

TEST_F(IoncapConfigTest, ShowsChangesMadeElsewhere) {
  LoadAndOpen();
  configuration_.SetEngine(1);
  configuration_.SetDistanceMiles(false);
  configuration_.SetUrl(Address::kSSNURL, "https://example.org");
  EXPECT_EQ(view_.options[ConfigOption::kEngineButton], 1);
  EXPECT_EQ(view_.options[ConfigOption::kDistanceUnit], distance_unit::kKilometres);
  EXPECT_EQ(view_.urls[Address::kSSNURL], "https://example.org");
}

TEST_F(IoncapConfigTest, ShowsPeersAndAppliesWindowSettings) {
  Load();
  window_.Show();
  ASSERT_EQ(view_.peers.size(), 3U);
  EXPECT_EQ(view_.peers[1], (PeerState{"Tessera", "locations and antenna rotation", false}));
  window_.ShowToolTips_Click(false);
  EXPECT_FALSE(view_.tool_tips);
  EXPECT_TRUE(view_.checked[ConfigCheck::kDownloadSsnAtStart]);
  window_.DownloadSsnAtStart_Click(false);
  EXPECT_FALSE(configuration_.DownloadSsnAtStart());
  window_.DualMonitor_Click(true);
  EXPECT_TRUE(configuration_.DualMonitor());
  window_.ResetWindowsCmd_Click();
  EXPECT_EQ(host_.resets, 1);
}

TEST_F(IoncapConfigTest, ConnectsThePeerOfARow) {
  LoadAndOpen();
  ASSERT_EQ(view_.peers.size(), 3U);
  window_.ConnectCmd_Click(1);
  EXPECT_EQ(peers_.connected, std::vector<std::size_t>{1});
  EXPECT_FALSE(view_.peers.at(0).connected);
  EXPECT_TRUE(view_.peers.at(1).connected);
  for (const PeerState& peer : PeerOverview().Peers()) EXPECT_FALSE(peer.can_connect);
}

}  // namespace
}  // namespace skyhop
