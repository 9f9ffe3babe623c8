#include <fstream>
#include <variant>

#include "ion_cap_fixture.h"

namespace skyhop::testing {
namespace {

using std::chrono::milliseconds;

TEST_F(IonCapTest, ASecondStartEndsAfterItsMessageAndLeavesNoTrace) {
  instance_.another = true;
  EXPECT_FALSE(window_.Form_Load());
  window_.Form_Unload();
  EXPECT_EQ(messages_.shown,
            (decltype(messages_.shown){{"Skyhop is already running on this PC", "Skyhop"}}));
  EXPECT_EQ(instance_.shown, 1) << "the window that the user looks for";
  EXPECT_EQ(events_, Events());
  EXPECT_TRUE(store_.values.empty());
}

TEST_F(IonCapTest, StartsItsPartsInTheirOrder) {
  log_.diagnostics.SetDebugListener([this](std::string_view line) {
    for (const char* step : {"IONCAPModule.LoadEngineData", "IonCap.Form_Load: start"}) {
      if (line == step) events_.emplace_back(step);
    }
  });
  store_.SaveSetting("Tessera", "QTH", "LatDeg", "40");
  ASSERT_TRUE(window_.Form_Load());
  EXPECT_EQ(events_, (Events{"configure", "acknowledge", "IONCAPModule.LoadEngineData",
                             "IonCap.Form_Load: start", "serve", "link", "download ssn"}));
}

TEST_F(IonCapTest, AFreshInstallationStartsUsable) {
  Store("XLat", "40 30' 0\" N");
  Store("Xlon", "74 15' 0\" W");
  ASSERT_TRUE(window_.Form_Load());
  EXPECT_EQ(view_.Text(TextField::kTheDate), "15-Nov-26");
  EXPECT_EQ(view_.Text(TextField::kLocalGrid), "FN20vm");
  EXPECT_EQ(view_.Text(TextField::kSNR), "24");
  EXPECT_EQ(parameters_.Set().snr, "24");
  EXPECT_EQ(view_.Selected(OptionGroup::kPath), path_option::kShort);
  EXPECT_EQ(view_.modes.front(), "CW");
  for (const CheckBox box : {CheckBox::kPlotEnable, CheckBox::kOpenBandEnable,
                             CheckBox::kShowColorKeyCheck, CheckBox::kShowCurrentTimeCheck}) {
    EXPECT_TRUE(view_.Checked(box));
  }
  EXPECT_EQ(view_.Interval(WindowTimer::kClockTimer), milliseconds(1000));
  EXPECT_FALSE(view_.TimerRunning(WindowTimer::kExecuteTimer));
  EXPECT_EQ(view_.caption, "Skyhop " + VersionText());
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kEmpty);
  EXPECT_EQ(view_.Shown(Label::kClock), "13:05 UTC");
  EXPECT_EQ(Stored("Version", "General"), ReplaceAll(VersionText(), ".", ""));
  EXPECT_TRUE(view_.tool_tips);
  EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(IonCapTest, WithoutTheEnginesFolderTheDateStaysEmpty) {
  std::filesystem::remove_all(folder_ / "IonCap");
  Store("ShowCurrentTime", "False");
  ASSERT_TRUE(window_.Form_Load());
  const std::string text =
      "Specified IonCap directory " + PathText(folder_ / "IonCap") + " does not exist";
  EXPECT_EQ(messages_.shown, (decltype(messages_.shown){{text, "IonCap Setup"}}));
  EXPECT_TRUE(Logged("   " + text));
  EXPECT_EQ(view_.Text(TextField::kTheDate), "");
}

TEST_F(IonCapTest, TheStoredModeBringsItsSnrWhileItIsInTheList) {
  Store("SNR", "7");
  const struct {
    const char* mode;
    int selected;
    const char* snr;
  } cases[] = {{"1", 1, "45"}, {"8", 8, "9"}, {"13", -1, "7"}, {"-1", -1, "7"}};
  for (const auto& [mode, selected, snr] : cases) {
    Store("SNRMode", mode);
    view_.SetText(TextField::kSNR, "");
    ASSERT_TRUE(window_.Form_Load());
    EXPECT_EQ(view_.Selected(OptionGroup::kModeSNRCombo), selected) << mode;
    EXPECT_EQ(view_.Text(TextField::kSNR), snr) << mode;
    EXPECT_EQ(parameters_.Set().snr, snr) << mode;
  }
}

TEST_F(IonCapTest, RestoresPlaceOptionsAndDebugLog) {
  Store("IonCapLeft", "300", "Windows");
  Store("ShowColorKey", "False");
  Store("ShowCurrentTime", "False");
  Store("ShowToolTips", "False", "General");
  Store("DiagMode", "True");
  ASSERT_TRUE(window_.Form_Load());
  EXPECT_EQ(view_.placement.left, 300);
  EXPECT_FALSE(view_.Checked(CheckBox::kShowColorKeyCheck));
  EXPECT_FALSE(view_.Checked(CheckBox::kShowCurrentTimeCheck));
  EXPECT_FALSE(view_.tool_tips);
  // The log file exists now, and the caption says where.
  EXPECT_EQ(view_.caption, WindowStatus::GetPropFormCaption() + " - see error log in " +
                               PathText(log_.diagnostics.LogPath()));
}

TEST_F(IonCapTest, APartThatFailsKeepsNoOtherFromStartingOrEnding) {
  errors_expected_ = true;
  server_.failing = "serve";
  peers_.failing = "end links";
  ASSERT_TRUE(window_.Form_Load());
  EXPECT_EQ(log_.errors,
            std::vector<std::string>{"program error 5 in module IonCap.Form_Load: serve fails"});
  EXPECT_TRUE(view_.TimerRunning(WindowTimer::kClockTimer));
  events_.clear();
  window_.Form_Unload();
  EXPECT_EQ(events_, (Events{"point end", "end links", "end serving", "end configuration"}));
  EXPECT_EQ(log_.errors.back(), "program error 5 in module IonCap.Form_Unload: end links fails");
  EXPECT_EQ(Stored("Power"), "1500");
}

TEST_F(IonCapTest, TheEndSavesPlaceAndParametersOnceAndStopsTheEngine) {
  Start();
  window_.PathsButton_Click();
  launcher_.running = {101};
  view_.placement.left = 77;
  Type(TextField::kLocalPwr, "400");
  window_.Form_Unload();
  EXPECT_EQ(launcher_.ended, std::vector<ProcessId>{101});
  EXPECT_FALSE(locker_.held);
  EXPECT_EQ(Stored("IonCapLeft", "Windows"), "77");
  EXPECT_EQ(Stored("Power"), "400");
  EXPECT_EQ(events_, (Events{"point end", "end links", "end serving", "end configuration"}));
  for (int timer = 0; timer < kWindowTimerCount; ++timer) {
    EXPECT_FALSE(view_.TimerRunning(static_cast<WindowTimer>(timer)));
  }
  window_.Form_Unload();
  EXPECT_EQ(events_.size(), 4U);
}

TEST_F(IonCapTest, CommandsOfAbsentPartsAreDisabled) {
  const Button downloads[] = {Button::kForecastCmd, Button::kCurrentCmd, Button::kUpdateSFICmd,
                              Button::kUpdateSSNCmd};
  for (const bool available : {false, true}) {
    events_.clear();
    space_weather_.available = available;
    beacons_.available = available;
    ASSERT_TRUE(window_.Form_Load());
    EXPECT_EQ(view_.Enabled(Button::kBeaconCmd), available);
    EXPECT_EQ(std::count(events_.begin(), events_.end(), "download ssn"), available ? 1 : 0);
    for (const bool enable : {true, false}) {
      space_weather_.window->EnableDownloads(enable);
      for (const Button button : downloads) {
        EXPECT_EQ(view_.Enabled(button), enable && available);
      }
    }
  }
  for (const bool history : {true, false}) {
    peers_.history = history;
    window_.Timer_Tick(WindowTimer::kClockTimer);
    EXPECT_EQ(view_.Enabled(Button::kHistoryCmd), history);
  }
}

TEST_F(IonCapTest, EachCommandReachesItsPartAndNoFailureGetsOut) {
  Start();
  const struct {
    std::variant<Button, WindowTimer> control;
    const char* event;
    Part& part;
    const char* name;
  } cases[] = {
      {Button::kForecastCmd, "forecast", space_weather_, "ForecastCmd_Click"},
      {Button::kCurrentCmd, "current", space_weather_, "CurrentCmd_Click"},
      {Button::kUpdateSFICmd, "update", space_weather_, "UpdateSFICmd_Click"},
      {Button::kUpdateSSNCmd, "download ssn", space_weather_, "UpdateSSNCmd_Click"},
      {Button::kHistoryCmd, "history", peers_, "HistoryCmd_Click"},
      {Button::kBeaconCmd, "beacons", beacons_, "BeaconCmd_Click"},
      {Button::kConfigCmd, "show configuration", configuration_window_, "ConfigCmd_Click"},
      {WindowTimer::kSNRExecuteTimer, "point tick", point_prediction_, "SNRExecuteTimer_Tick"},
      {WindowTimer::kSolarForecastTimer, "forecast tick", space_weather_,
       "SolarForecastTimer_Tick"},
  };
  errors_expected_ = true;
  for (const auto& [control, event, part, name] : cases) {
    events_.clear();
    log_.errors.clear();
    part.failing = event;
    if (const auto* button = std::get_if<Button>(&control)) window_.Button_Click(*button);
    if (const auto* timer = std::get_if<WindowTimer>(&control)) window_.Timer_Tick(*timer);
    EXPECT_EQ(events_, Events{event});
    EXPECT_EQ(log_.errors, std::vector<std::string>{"program error 5 in module IonCap." +
                                                    std::string(name) + ": " + event + " fails"});
  }
}

TEST_F(IonCapTest, ThePointPredictionIsAskedWithFrequencyAndMode) {
  Start();
  window_.FreqPredict(14.074, "FT8");
  EXPECT_TRUE(Logged("IonCap.FreqPredict, theFreq = 14.074, theMode = FT8"));
  EXPECT_EQ(events_, Events{"point FT8"});
}

TEST_F(IonCapTest, ATypedFrequencyIsPredictedForTheModeOrTheSnrOfTheField) {
  Start();
  window_.Field_Enter(TextField::kSNRFrequency);
  EXPECT_EQ(messages_.Texts(), std::vector<std::string>{"Enter a frequency, in MHz or in kHz"});
  view_.SetText(TextField::kSNRFrequency, "7030.5");
  Type(TextField::kSNR, "31");
  window_.Field_Enter(TextField::kSNRFrequency);
  EXPECT_EQ(events_.back(), "point  31");
  EXPECT_EQ(point_prediction_.predicted, 7.0305);
  view_.Select(OptionGroup::kModeSNRCombo, 0);
  view_.SetText(TextField::kSNRFrequency, "14.03");
  window_.Button_Click(Button::kSNRPredictCmd);
  EXPECT_EQ(events_.back(), "point CW");
  EXPECT_EQ(point_prediction_.predicted, 14.03);
  view_.SetText(TextField::kSNRFrequency, "14..1");
  window_.Field_Enter(TextField::kSNRFrequency);
  EXPECT_EQ(messages_.Texts().back(), "Illegal frequency");
}

TEST_F(IonCapTest, TheShownDisplayComesBackInTheNextRun) {
  store_.SaveSetting(kProductName, "Configuration", "ShowSNRDisplay", "True");
  Start();
  EXPECT_TRUE(view_.Checked(CheckBox::kSNRDisplayCheck));
  EXPECT_TRUE(view_.Checked(CheckBox::kSNRDisplayCheck));
  view_.SetChecked(CheckBox::kSNRDisplayCheck, false);
  window_.Check_Click(CheckBox::kSNRDisplayCheck);
  EXPECT_FALSE(view_.Checked(CheckBox::kSNRDisplayCheck));
  EXPECT_EQ(store_.Read(kProductName, "Configuration", "ShowSNRDisplay", ""), "False");
}

TEST_F(IonCapTest, HelpOpensInTheBrowserOrTellsWhereItIs) {
  Start();
  window_.Button_Click(Button::kHelpCmd);
  ASSERT_EQ(view_.opened.size(), 1U);
  EXPECT_EQ(view_.opened[0].substr(0, 8), "file:///");
  EXPECT_NE(view_.opened[0].find("help%20page/index.htm"), std::string::npos);
  EXPECT_TRUE(messages_.shown.empty());
  view_.has_browser = false;
  window_.Button_Click(Button::kHelpCmd);
  EXPECT_NE(messages_.Texts().at(0).find("index.htm"), std::string::npos);
}

TEST_F(IonCapTest, AShutDownWaitsForTheCurrentEvent) {
  Start();
  window_.Commands().SetShutdownTrigger();
  EXPECT_EQ(view_.closed, 0);
  EXPECT_TRUE(view_.TimerRunning(WindowTimer::kShutDownTimer));
  window_.Timer_Tick(WindowTimer::kShutDownTimer);
  EXPECT_EQ(view_.closed, 1);
  EXPECT_FALSE(view_.TimerRunning(WindowTimer::kShutDownTimer));
}

TEST_F(IonCapTest, FollowsTheConfigurationAtOnce) {
  Start();
  Choose(OptionGroup::kModeSNRCombo, 1);
  configuration_.SetModes({{"FT8", "13"}, {"Psk", "30"}, {"ssb", "40"}});
  EXPECT_EQ(view_.modes, (std::vector<std::string>{"FT8", "Psk", "ssb"}));
  EXPECT_EQ(view_.Selected(OptionGroup::kModeSNRCombo), 2);
  EXPECT_EQ(parameters_.Set().snr, "40");
  configuration_.SetModes({{"FT8", "13"}});
  EXPECT_EQ(view_.Selected(OptionGroup::kModeSNRCombo), -1);
  EXPECT_EQ(view_.Text(TextField::kSNR), "40");

  EXPECT_EQ(view_.Shown(Label::kDistance).substr(4), " miles");
  configuration_.SetDistanceMiles(false);
  EXPECT_EQ(view_.Shown(Label::kDistance).substr(4), " km");
  configuration_.SetShowToolTips(false);
  EXPECT_FALSE(view_.tool_tips);
  configuration_.SetDiagMode(true);
  log_.diagnostics.DebugLog("a line");
  EXPECT_TRUE(std::filesystem::exists(log_.diagnostics.LogPath()));
}

TEST_F(IonCapTest, AMissingSunspotNumberIsOfferedAgainBehindWhatPredictionsTell) {
  space_weather_.offline = true;
  Start();
  const Notice offer = view_.notice;
  EXPECT_EQ(offer.kind, Notice::Kind::kWarning);
  EXPECT_EQ(offer.action, NoticeAction::kRetryDownload);
  EXPECT_NE(view_.empty_text, "") << "the empty chart keeps its words";

  window_.PathsButton_Click();
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kRunning);
  window_.Button_Click(Button::kUpdateSSNCmd);
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kRunning);
  window_.Button_Click(Button::kAbortButton);
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kFailed);
  window_.Button_Click(Button::kUpdateSSNCmd);
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kFailed);
  window_.PathsButton_Click();
  launcher_.running = {100 + static_cast<ProcessId>(launcher_.starts.size())};
  WriteFile(run_.ResultsFile(), TestData("results/newyork-london-method26.results.txt"));
  window_.Timer_Tick(WindowTimer::kEngineWatch);
  EXPECT_EQ(view_.notice, offer) << "the prediction has no more to tell";

  events_.clear();
  window_.Notice_Click();
  EXPECT_EQ(events_, Events{"download ssn"});
  EXPECT_EQ(view_.notice, offer);
  space_weather_.offline = false;
  window_.Notice_Click();
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kNone);
}

TEST_F(IonCapTest, TheStartDownloadsNothingWhenTheUserWantsItSo) {
  Store("DownloadSSNAtStart", "False");
  space_weather_.offline = true;
  ASSERT_TRUE(window_.Form_Load());
  EXPECT_EQ(std::count(events_.begin(), events_.end(), "download ssn"), 0);
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kEmpty);
}

TEST_F(IonCapTest, TheMenuOffersThePagesThatHaveAnAddress) {
  Store("URL0", "https://www.swpc.noaa.gov/communities/radio-communications");
  Store("URL1", " ");
  Store("URL2", "http://example.org:8080/");
  Store("URL3", "");
  ASSERT_TRUE(window_.Form_Load());
  EXPECT_EQ(view_.web_pages,
            (std::vector<WebPage>{{0, "Radio communications (swpc.noaa.gov)",
                                   "https://www.swpc.noaa.gov/communities/radio-communications"},
                                  {2, "example.org", "http://example.org:8080/"}}));
  configuration_.SetUrl(Address::kURL0, "");
  configuration_.SetUrl(Address::kURL3, "https://example.org/images/planetary_k%20index.gif?x=1");
  ASSERT_EQ(view_.web_pages.size(), 2U);
  EXPECT_EQ(view_.web_pages.back().title, "Planetary k index (example.org)");
  EXPECT_EQ(view_.web_pages.back().number, 3);
}

}  // namespace
}  // namespace skyhop::testing
