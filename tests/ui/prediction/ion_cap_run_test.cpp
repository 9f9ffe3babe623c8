#include "common/files.h"
#include "common/text.h"
#include "ion_cap_fixture.h"
#include "support/answering_launcher.h"

namespace skyhop::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr Button kPredictButtons[] = {Button::kPathsButton, Button::kPredictSPToCmd,
                                      Button::kPredictLPToCmd, Button::kPredictSPFromCmd,
                                      Button::kPredictLPFromCmd};
constexpr ProcessId kProcess = 101;

class IonCapRunTest : public IonCapTest {
 protected:
  /// Starts a prediction whose engine is still at work.
  void Predict() {
    window_.PathsButton_Click();
    ASSERT_TRUE(Running());
    if (launcher_.knows_processes) {
      launcher_.running.insert(static_cast<ProcessId>(launcher_.starts.size() + 100));
    }
  }
  void EngineWrites(const std::string& content) { WriteFile(run_.ResultsFile(), content); }
  static std::string Method26() { return TestData("results/newyork-london-method26.results.txt"); }
  static std::string Method30() { return TestData("results/newyork-london-method30.results.txt"); }

  /// A whole prediction from Predict to its chart.
  void PredictToTheEnd() {
    Predict();
    EngineWrites(Method26());
    window_.Timer_Tick(WindowTimer::kEngineWatch);
    ASSERT_TRUE(chart_.HasResult());
    log_.debug.clear();
    launcher_.ended.clear();
  }

  void ExpectIdle() {
    EXPECT_FALSE(Running());
    EXPECT_FALSE(view_.TimerRunning(WindowTimer::kEngineWatch));
    EXPECT_FALSE(locker_.held);
    EXPECT_FALSE(view_.Enabled(Button::kAbortButton));
    for (const Button button : kPredictButtons) EXPECT_TRUE(view_.Enabled(button));
    EXPECT_EQ(view_.caption, WindowStatus::GetPropFormCaption() + log_.diagnostics.CaptionHint());
  }
};

TEST_F(IonCapRunTest, WithoutADXStationNothingStarts) {
  Start();
  for (const TextField field : {TextField::kDXLat, TextField::kDXLon}) {
    const std::string before = view_.Text(field);
    view_.SetText(field, "  ");
    messages_.shown.clear();
    window_.PathsButton_Click();
    EXPECT_EQ(
        messages_.shown,
        (decltype(messages_.shown){{"DX station latitude or longitude not specified", "Skyhop"}}));
    view_.SetText(field, before);
  }
  EXPECT_TRUE(launcher_.starts.empty());
}

TEST_F(IonCapRunTest, AnInvalidDXStationStartsNothingAndOpensNoBox) {
  Start();
  const struct {
    TextField field;
    const char* text;
    const char* line;
    const char* notice;
  } cases[] = {
      {TextField::kDXLat, "91 0' 0\" N", "   invalid latitude: 91 0' 0\" N",
       "The DX station's latitude \"91 0' 0\" N\" is not valid. Write it like 33 54' 0\" S, "
       "33.9 S or -33.9"},
      {TextField::kDXLon, "200 W", "   invalid longitude: 200 W",
       "The DX station's longitude \"200 W\" is not valid. Write it like 18 25' 0\" E, 18.42 E or "
       "18.42"}};
  for (const auto& [field, text, line, notice] : cases) {
    const std::string before = view_.Text(field);
    view_.SetText(field, text);
    window_.PathsButton_Click();
    EXPECT_TRUE(Logged(line));
    EXPECT_TRUE(view_.Marked(field));
    EXPECT_EQ(view_.notice.text, notice);
    view_.SetText(field, before);
  }
  EXPECT_TRUE(messages_.shown.empty());
  EXPECT_TRUE(launcher_.starts.empty());
}

TEST_F(IonCapRunTest, WithoutYourStationTheNoticeSaysSo) {
  Start();
  view_.SetText(TextField::kLocalLon, "");
  window_.PathsButton_Click();
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kFailed);
  EXPECT_TRUE(view_.Marked(TextField::kLocalLon));
  EXPECT_TRUE(launcher_.starts.empty());
}

TEST_F(IonCapRunTest, TheDirectionDecidesWhoTransmitsAndWhoListens) {
  Start();
  Type(TextField::kLocalPwr, "80");
  Type(TextField::kLocalTakeOff, "6");
  view_.Select(OptionGroup::kDXPwr, 1);
  view_.Select(OptionGroup::kLocalNoiseLevel, 3);
  view_.Select(OptionGroup::kDXNoiseLevel, 1);
  const struct {
    Button button;
    const char* name;
    int path;
    int direction;
    const char* power;
    int noise;
    int receiver_latitude;
  } cases[] = {
      {Button::kPredictSPToCmd, "PredictSPToCmd_Click", 0, 1, "80", 1, 51},
      {Button::kPredictLPToCmd, "PredictLPToCmd_Click", 1, 1, "80", 1, 51},
      {Button::kPredictSPFromCmd, "PredictSPFromCmd_Click", 0, 0, "20", 3, 40},
      {Button::kPredictLPFromCmd, "PredictLPFromCmd_Click", 1, 0, "20", 3, 40},
  };
  for (const auto& [button, name, path, direction, power, noise, receiver_latitude] : cases) {
    log_.debug.clear();
    window_.Button_Click(button);
    EXPECT_EQ(log_.debug.at(0), std::string("IonCap.") + name);
    EXPECT_TRUE(Logged("IonCap.PathsButton_Click"));
    EXPECT_EQ(view_.Selected(OptionGroup::kPath), path);
    EXPECT_EQ(view_.Selected(OptionGroup::kPredictSignals), direction);
    EXPECT_EQ(parameters_.Set().path, path == 0 ? "Short Path" : "Long Path");
    EXPECT_EQ(parameters_.Set().power, power);
    EXPECT_EQ(parameters_.Set().takeoff, "6");
    EXPECT_EQ(parameters_.Set().noise, noise);
    EXPECT_EQ(parameters_.Set().date, "15-Nov-26");
    EXPECT_EQ(parameters_.GetReceiverLocation().latitude.degrees, receiver_latitude);
    EXPECT_EQ(parameters_.GetTransmitterLocation().latitude.degrees, 91 - receiver_latitude);
    EXPECT_TRUE(Running());
    EXPECT_EQ(log_.debug.back(), "IonCap.InitiateForecast: complete");
    window_.Button_Click(Button::kAbortButton);
  }
}

TEST_F(IonCapRunTest, TheTransceiversBandBringsItsPowerAndTakeoff) {
  Start();
  configuration_.SetBand(5, {"12", "400"});
  configuration_.SetBand(3, {"", "90"});
  const struct {
    bool enabled;
    std::optional<double> kilohertz;
    const char* power;
    const char* takeoff;
    std::string note{};
  } cases[] = {
      {true, 14074, "400", "12",
       " (as set for 20 m, in place of 1500 W) from 12\u00B0 up (as set for 20 m, in place of "
       "3\u00B0)"},
      {true, 7030, "90", "3", " (as set for 40 m, in place of 1500 W)"},
      {true, 18100, "1500", "3"},
      {true, 0, "1500", "3"},
      {true, std::nullopt, "1500", "3"},
      {false, 14074, "1500", "3"},
  };
  for (const auto& [enabled, kilohertz, power, takeoff, note] : cases) {
    configuration_.SetFreqDependentEnabled(enabled);
    peers_.kilohertz = kilohertz;
    // The label tells beforehand what the run will use.
    window_.Peers().Forget(LinkControl::kFreq);
    EXPECT_EQ(view_.Shown(Label::kConditions)
                  .find("Your station transmits " + std::string(power) + " W" + note + "; the DX"),
              0U)
        << view_.Shown(Label::kConditions);
    window_.PathsButton_Click();
    EXPECT_EQ(parameters_.Set().power, power) << kilohertz.value_or(-1);
    EXPECT_EQ(parameters_.Set().takeoff, takeoff) << kilohertz.value_or(-1);
    EngineWrites(AnswerToAny(Method26()));
    window_.Timer_Tick(WindowTimer::kExecuteTimer);
    EXPECT_EQ(view_.Shown(Label::kSummary).ends_with("0M settings)"), !note.empty())
        << view_.Shown(Label::kSummary);
    window_.Button_Click(Button::kAbortButton);
  }
}

TEST_F(IonCapRunTest, WhileAnEngineWorksTheWindowSaysSo) {
  Start();
  Predict();
  EXPECT_TRUE(view_.Enabled(Button::kAbortButton));
  for (const Button button : kPredictButtons) EXPECT_FALSE(view_.Enabled(button));
  EXPECT_TRUE(locker_.held);
  EXPECT_EQ(view_.Interval(WindowTimer::kExecuteTimer), milliseconds(1000));
  EXPECT_EQ(view_.Interval(WindowTimer::kEngineWatch), milliseconds(100));
  EXPECT_EQ(view_.Shown(Label::kEngineLabel), "IONCAP");
  EXPECT_EQ(view_.notice,
            (Notice{Notice::Kind::kRunning, "IONCAP is working. Esc or Abort ends it."}));
  clock_.now += seconds(3);
  window_.Timer_Tick(WindowTimer::kExecuteTimer);
  EXPECT_EQ(view_.notice.text, "IONCAP is working for 3 s. Esc or Abort ends it.");
  EXPECT_TRUE(Running());
}

TEST_F(IonCapRunTest, ADownloadLeavesTheCaptionAsItFoundIt) {
  Start();
  const std::string idle = view_.caption;
  space_weather_.window->ShowDownload("downloading SSN");
  EXPECT_EQ(view_.caption, WindowStatus::GetPropFormCaption() + " - downloading SSN");
  space_weather_.window->ShowDownload("");
  EXPECT_EQ(view_.caption, idle);
  Predict();
  const std::string running = view_.caption;
  EXPECT_NE(running, idle);
  space_weather_.window->ShowDownload("downloading SSN");
  space_weather_.window->ShowDownload("");
  EXPECT_EQ(view_.caption, running);
}

TEST_F(IonCapRunTest, ASecondPredictionChangesNothingOfTheFirst) {
  Start();
  Predict();
  const Notice notice = view_.notice;
  window_.Button_Click(Button::kPredictLPFromCmd);
  EXPECT_EQ(log_.debug.back(), "   previous computation still running");
  view_.SetText(TextField::kLocalPwr, "1");
  view_.SetText(TextField::kTheDate, "1-Mar-27");
  for (const auto click : {&IonCap::PathsButton_Click, &IonCap::InitiateForecast}) {
    (window_.*click)();
    EXPECT_EQ(log_.debug.back(), "   previous computation still running");
  }
  EXPECT_EQ(parameters_.Set().power, "1500");
  EXPECT_EQ(parameters_.Set().date, "15-Nov-26");
  EXPECT_EQ(view_.Selected(OptionGroup::kPath), path_option::kShort);
  EXPECT_EQ(view_.notice, notice);
  EXPECT_EQ(launcher_.starts.size(), 1U);
  EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(IonCapRunTest, CompleteResultsAreShownAtOnceAndTheEngineIsEnded) {
  Start();
  Predict();
  window_.Timer_Tick(WindowTimer::kEngineWatch);
  EXPECT_FALSE(Logged("IONCAPModule.HandleIonCapTimer")) << "nothing to look at yet";
  EngineWrites(Method26());
  // What the user changes meanwhile is not what the results are for.
  Choose(OptionGroup::kPredictSignals, 0);
  window_.Timer_Tick(WindowTimer::kEngineWatch);
  ExpectIdle();
  EXPECT_EQ(launcher_.ended, std::vector<ProcessId>{kProcess});
  EXPECT_TRUE(chart_.HasResult());
  EXPECT_TRUE(chart_.Old()) << "the other direction is another prediction";
  Choose(OptionGroup::kPredictSignals, 1);
  EXPECT_FALSE(chart_.Old());
  EXPECT_EQ(view_.notice, Notice());
  EXPECT_NE(view_.Shown(Label::kProvenance), "");
  EXPECT_NE(view_.Shown(Label::kSummary).find("propagation to DX"), std::string::npos);
  EXPECT_EQ(view_.status, "") << "the chart's read-out is there";
}

TEST_F(IonCapRunTest, AWorkingEnginesFileIsLeftAloneUntilItIsComplete) {
  Start();
  Predict();
  const std::string whole = Method26();
  EngineWrites(whole.substr(0, whole.size() / 2));
  window_.Timer_Tick(WindowTimer::kEngineWatch);
  window_.Timer_Tick(WindowTimer::kExecuteTimer);
  EXPECT_TRUE(Logged("   " + PathText(run_.ResultsFile()) + " is not complete yet"));
  EXPECT_TRUE(Running());
  EngineWrites(whole);
  window_.Timer_Tick(WindowTimer::kExecuteTimer);
  ExpectIdle();
  EXPECT_TRUE(chart_.HasResult());
}

TEST_F(IonCapRunTest, ResultsWithoutALastLineCountOnceTheEngineHasEnded) {
  Start();
  Predict();
  const std::string whole = Method26();
  EngineWrites(whole.substr(0, whole.find("*****END OF RUN")));
  launcher_.running.clear();
  window_.Timer_Tick(WindowTimer::kEngineWatch);
  ExpectIdle();
  EXPECT_EQ(view_.notice, Notice());
  EXPECT_TRUE(launcher_.ended.empty());
}

TEST_F(IonCapRunTest, AnUnknownProcessIsWaitedForBySecondsAlone) {
  Start();
  launcher_.knows_processes = false;
  Predict();
  EXPECT_FALSE(view_.TimerRunning(WindowTimer::kEngineWatch));
  for (int tick = 0; tick < 5; ++tick) window_.Timer_Tick(WindowTimer::kExecuteTimer);
  EXPECT_TRUE(Logged("   " + PathText(run_.ResultsFile()) + " does not exist"));
  EngineWrites("");
  window_.Timer_Tick(WindowTimer::kExecuteTimer);
  EXPECT_TRUE(Logged("   " + PathText(run_.ResultsFile()) + " is empty"));
  EXPECT_TRUE(Running());
  EngineWrites(Method26());
  window_.Timer_Tick(WindowTimer::kExecuteTimer);
  EXPECT_TRUE(Logged("   " + PathText(run_.ResultsFile()) + " exists"));
  ExpectIdle();
  EXPECT_TRUE(chart_.HasResult());
}

TEST_F(IonCapRunTest, AnEngineThatEndsWithoutResultsFailsTheRun) {
  Start();
  errors_expected_ = true;
  PredictToTheEnd();
  for (const bool empty_file : {false, true}) {
    Predict();
    if (empty_file) EngineWrites("");
    launcher_.running.clear();
    launcher_.output =
        "cannot open deck\nBacktrace for this error:\n#0  0x7f\noff\nioncap.bat: 4: cls: not "
        "found\n";
    window_.Timer_Tick(WindowTimer::kEngineWatch);
    window_.Timer_Tick(WindowTimer::kExecuteTimer);
    clock_.now += milliseconds(999);
    window_.Timer_Tick(WindowTimer::kEngineWatch);
    EXPECT_TRUE(Running()) << "a whole second for the file to appear";
    clock_.now += milliseconds(1);
    window_.Timer_Tick(WindowTimer::kEngineWatch);
    ExpectIdle();
    const std::string reason = PathText(run_.Job().Executable()) + " ended without writing " +
                               PathText(run_.ResultsFile()) + ". It printed: cannot open deck.";
    EXPECT_EQ(log_.errors.back(), "IonCap.ExecuteTimer_Tick: " + reason);
    EXPECT_EQ(view_.notice,
              (Notice{Notice::Kind::kFailed,
                      reason + " - see error log in " + PathText(log_.diagnostics.LogPath())}));
    EXPECT_TRUE(chart_.Old());
  }
}

TEST_F(IonCapRunTest, ResultsThatAppearLateAreStillShown) {
  Start();
  Predict();
  launcher_.running.clear();
  window_.Timer_Tick(WindowTimer::kEngineWatch);
  window_.Timer_Tick(WindowTimer::kExecuteTimer);
  EngineWrites(Method26());
  window_.Timer_Tick(WindowTimer::kExecuteTimer);
  ExpectIdle();
  EXPECT_TRUE(chart_.HasResult());
}

TEST_F(IonCapRunTest, UnreadableResultsLeaveTheChartMarkedAsOld) {
  Start();
  errors_expected_ = true;
  PredictToTheEnd();
  configuration_.SetEngine(1);
  Predict();
  EXPECT_EQ(view_.Shown(Label::kEngineLabel), "ICEPAC");
  EngineWrites("garbage\n");
  launcher_.running.clear();
  window_.Timer_Tick(WindowTimer::kEngineWatch);
  EXPECT_TRUE(log_.errors.at(0).starts_with("program error 62 in module IONCAPModule."));
  ExpectIdle();
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kFailed);
  EXPECT_TRUE(chart_.Old());
  EXPECT_EQ(view_.Shown(Label::kEngineLabel), "IONCAP") << "the engine of the chart that is shown";
  PredictToTheEnd();
  EXPECT_FALSE(chart_.Old());
}

TEST_F(IonCapRunTest, TheAnswerToAnotherQuestionIsRefused) {
  Start();
  errors_expected_ = true;
  PredictToTheEnd();
  const ResultsTable before = table_;
  const std::string note = view_.Shown(Label::kProvenance);
  for (const int engine : {0, 3}) {
    configuration_.SetEngine(engine);
    Predict();
    EngineWrites(ReplaceAll(engine == 0 ? Method26() : Method30(), "40.50 N", "48.50 N"));
    window_.Timer_Tick(WindowTimer::kEngineWatch);
    ExpectIdle();
    EXPECT_EQ(view_.notice.kind, Notice::Kind::kFailed);
    EXPECT_NE(view_.notice.text.find("answer another question. Results are for 48.50 N 74.25 W to "
                                     "51.50 N 0.12 W, not 40.50 N 74.25 W to 51.50 N 0.12 W"),
              std::string::npos)
        << view_.notice.text;
    EXPECT_TRUE(chart_.Old());
    EXPECT_EQ(table_.frequencies, before.frequencies);
    EXPECT_EQ(view_.Shown(Label::kProvenance), note);
    EXPECT_EQ(view_.Shown(Label::kEngineLabel), "IONCAP");
  }
}

TEST_F(IonCapRunTest, ResultsThatEndEarlyAreShownAsIncomplete) {
  Start();
  errors_expected_ = true;
  configuration_.SetEngine(3);
  Predict();
  const std::string whole = Method30();
  EngineWrites(whole.substr(0, whole.find("  13.0 ")));
  launcher_.running.clear();
  window_.Timer_Tick(WindowTimer::kEngineWatch);
  ExpectIdle();
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kFailed);
  EXPECT_NE(view_.notice.text.find("incomplete"), std::string::npos);
  EXPECT_FALSE(chart_.Old());
}

TEST_F(IonCapRunTest, TheEngineLabelNamesTheEngine) {
  Start();
  const char* labels[] = {"IONCAP", "ICEPAC", "VOACAP LUF && MUF", "VOACAP SNR && Prob"};
  for (int engine = 0; engine < 4; ++engine) {
    configuration_.SetEngine(engine);
    Predict();
    EngineWrites(engine == 3 ? Method30() : Method26());
    window_.Timer_Tick(WindowTimer::kEngineWatch);
    EXPECT_EQ(view_.Shown(Label::kEngineLabel), labels[engine]);
    EXPECT_EQ(chart_.Engine(), static_cast<EngineChoice>(engine));
  }
}

TEST_F(IonCapRunTest, WhatKeepsAPredictionFromStartingIsTold) {
  Start();
  errors_expected_ = true;
  const std::filesystem::path engine = folder_ / "IonCap" / "ioncap.exe";
  const struct {
    const char* what;
    std::function<void()> hinder;
    std::function<void()> mend;
    std::string reason;
  } cases[] = {
      {"another program", [&] { locker_.held = true; }, [&] { locker_.held = false; },
       "another program is predicting in " + PathText(folder_)},
      {"parameters", [&] { view_.SetText(TextField::kFlux, "9"); },
       [&] { view_.SetText(TextField::kFlux, "150"); }, "the parameters need correction"},
      {"no engine", [&] { launcher_.code = 2; }, [&] { WriteFile(engine, "engine"); },
       "there is no " + PathText(engine)},
      {"no shell", [&] { launcher_.code = 2; }, [&] { launcher_.code = 42; },
       " - see error log in " + PathText(log_.diagnostics.LogPath())},
  };
  for (const auto& [what, hinder, mend, reason] : cases) {
    hinder();
    window_.PathsButton_Click();
    mend();
    EXPECT_EQ(view_.notice.kind, Notice::Kind::kFailed) << what;
    EXPECT_NE(view_.notice.text.find(reason), std::string::npos) << view_.notice.text;
    EXPECT_FALSE(chart_.Old()) << "there is none";
    ExpectIdle();
  }
  EXPECT_EQ(messages_.Texts(),
            (std::vector<std::string>{"Illegal solar flux", "Illegal Solar Flux"}));
  PredictToTheEnd();
  locker_.held = true;
  window_.PathsButton_Click();
  EXPECT_TRUE(chart_.Old());
}

TEST_F(IonCapRunTest, AbortEndsTheEngineAndKeepsTheChartAsOld) {
  Start();
  window_.Button_Click(Button::kAbortButton);
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kEmpty) << "there was nothing to abort";
  PredictToTheEnd();
  Predict();
  window_.Button_Click(Button::kAbortButton);
  EXPECT_TRUE(Logged("IonCap.AbortButton_Click"));
  ExpectIdle();
  EXPECT_EQ(launcher_.ended, std::vector<ProcessId>{102});
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kFailed);
  EXPECT_NE(view_.notice.text.find("aborted"), std::string::npos);
  EXPECT_TRUE(chart_.Old());
  // Ticks that were under way already find nothing to do.
  EngineWrites(Method26());
  window_.Timer_Tick(WindowTimer::kExecuteTimer);
  window_.Timer_Tick(WindowTimer::kEngineWatch);
  EXPECT_TRUE(chart_.Old());
}

TEST_F(IonCapRunTest, AFourCharacterSquareOutlivesAPrediction) {
  Start();
  view_.SetText(TextField::kDXGrid, "JJ00");
  window_.Field_Enter(TextField::kDXGrid);
  Predict();
  EXPECT_EQ(view_.Text(TextField::kDXGrid), "JJ00");
}

TEST_F(IonCapRunTest, TheChartIsOfferedToOthers) {
  Start();
  EXPECT_EQ(window_.Export().ResultsAsCsv(), "");
  PredictToTheEnd();
  EXPECT_EQ(window_.Export().ResultsAsCsv().substr(0, 4), "hour");
  EXPECT_NE(window_.Export().ChartAsSvg().find("FN20vm \u2192 IO91wm"), std::string::npos);
  chart_.DisplayTable(EngineChoice::kVoaCapSnr);
  const auto tells_table = [&] {
    return window_.Export().ChartAsSvg().find("Reliability: percent of the days") !=
           std::string::npos;
  };
  EXPECT_FALSE(tells_table());
  Check(CheckBox::kShowTableCheck, true);
  EXPECT_TRUE(tells_table()) << "what is saved is what is shown";
}

TEST_F(IonCapRunTest, TheChartIsOldWhileAnInputDiffersFromItsOwn) {
  Start();
  PredictToTheEnd();
  EXPECT_EQ(
      chart_.Model().title,
      "FN20vm \u2192 IO91wm \u00B7 51\u00B0 \u00B7 3480 miles \u00B7 short path \u00B7 1500 W "
      "\u00B7 24 dB \u00B7 reliability 10 % \u00B7 15-Nov-26");
  const struct {
    const char* what;
    std::function<void()> change;
    std::function<void()> back;
  } cases[] = {
      {"field", [&] { Type(TextField::kDXLat, "52 N"); },
       [&] { Type(TextField::kDXLat, "51 30 N"); }},
      {"reliability", [&] { Type(TextField::kAvail, "90"); },
       [&] { Type(TextField::kAvail, "10"); }},
      {"path", [&] { Choose(OptionGroup::kPath, path_option::kLong); },
       [&] { Choose(OptionGroup::kPath, path_option::kShort); }},
      {"noise", [&] { Choose(OptionGroup::kDXNoiseLevel, 0); },
       [&] { Choose(OptionGroup::kDXNoiseLevel, 2); }},
      {"download", [&] { space_weather_.window->PutDownloaded(TextField::kFlux, "80"); },
       [&] { space_weather_.window->PutDownloaded(TextField::kFlux, "150"); }},
      {"link", [&] { window_.Peers().Follow(LinkControl::kSFI, "90"); },
       [&] { window_.Peers().Follow(LinkControl::kSFI, "150"); }},
      {"engine", [&] { configuration_.SetEngine(2); }, [&] { configuration_.SetEngine(0); }},
      {"day",
       [&] {
         clock_.now += std::chrono::hours{24};
         window_.Timer_Tick(WindowTimer::kClockTimer);
       },
       [&] {
         clock_.now -= std::chrono::hours{24};
         window_.Timer_Tick(WindowTimer::kClockTimer);
       }},
  };
  view_.SetChecked(CheckBox::kShowCurrentTimeCheck, true);
  for (const auto& [what, change, back] : cases) {
    change();
    EXPECT_TRUE(chart_.Old()) << what;
    back();
    EXPECT_FALSE(chart_.Old()) << what;
  }
  // IONCAP's deck has no geomagnetic index.
  Type(TextField::kKindex, "7");
  EXPECT_FALSE(chart_.Old());
}

TEST_F(IonCapRunTest, AFailedStartLeavesTheBarsOfTheChart) {
  Start();
  PredictToTheEnd();
  const SolarBars bars = chart_.Sun();
  Type(TextField::kDXLon, "150 E");
  Predict();
  EXPECT_NE(chart_.Sun(), bars);
  window_.Button_Click(Button::kAbortButton);
  EXPECT_EQ(chart_.Sun(), bars);
  locker_.held = true;
  window_.PathsButton_Click();
  EXPECT_EQ(chart_.Sun(), bars);
  EXPECT_TRUE(chart_.Old());
  Type(TextField::kDXLon, "0 7' 0\" W");
  EXPECT_FALSE(chart_.Old()) << "these inputs did not fail";
}

TEST_F(IonCapRunTest, ADayWithoutUseableFrequencySaysWhatWouldHelp) {
  Start();
  std::string results = Method26();
  const std::string header = results.substr(0, results.find("HPF  ESMUF"));
  results = header + "HPF  ESMUF    MUF    LUF\n\n";
  for (int hour = 1; hour <= 24; ++hour) {
    results += "      1.0  20.0   8.16  13.19   0.00  11.18 -11.18\n";
  }
  results += " *****END OF RUN*****\n";
  Predict();
  EngineWrites(results);
  window_.Timer_Tick(WindowTimer::kExecuteTimer);
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kWarning);
  EXPECT_NE(view_.notice.text.find("No hour has a frequency that reaches the required reliability"),
            std::string::npos);
  window_.Notice_Click();
  EXPECT_EQ(view_.tab, Tab::kReceiver);
  EXPECT_EQ(ReadoutAtTimeIndex(chart_.Model()).find("open:"), std::string::npos);
}

TEST_F(IonCapRunTest, AnEstimateInPlaceOfTheSelectedEngineIsAnnounced) {
  Start();
  Predict();
  EngineWrites("SKYHOP ESTIMATE ENGINE VERSION 1.0\n" + Method26().substr(Method26().find('\n')));
  window_.Timer_Tick(WindowTimer::kExecuteTimer);
  EXPECT_EQ(view_.notice.kind, Notice::Kind::kWarning) << view_.notice.text;
  EXPECT_EQ(view_.notice.text,
            "IONCAP is not installed. The built-in estimate made this prediction.");
  EXPECT_EQ(view_.Shown(Label::kEngineLabel), "IONCAP");
  EXPECT_EQ(view_.Shown(Label::kComputedBy).substr(0, 24), "Built-in estimate engine");
}

TEST_F(IonCapRunTest, PredictJudgesRefusedInputsWithItsOwnMessages) {
  Start();
  Type(TextField::kLocalPwr, "200");
  Type(TextField::kLocalTakeOff, "5");
  Type(TextField::kSNR, "-12");
  const auto expect_last_valid_values = [&] {
    EXPECT_EQ(parameters_.Set().power, "200");
    EXPECT_EQ(parameters_.Set().takeoff, "5");
    EXPECT_EQ(parameters_.Set().snr, "-12");
  };
  const std::string place = "the 'Your Stations' panel on the Main window's Parameters tab";
  const std::vector<std::string> power = {"Invalid power specified in " + place};
  const std::vector<std::string> takeoff = {"Invalid Takeoff specified in " + place};
  const struct {
    TextField field;
    const char* text;
    std::vector<std::string> messages;
  } cases[] = {
      {TextField::kFlux, "63", {"Illegal solar flux", "Illegal Solar Flux"}},
      {TextField::kKindex, "21", {"Illegal geomagnetic K-index", "Illegal Geomagnetic K-index"}},
      {TextField::kSNR, "150", {"Illegal SNR", "Illegal SNR"}},
      {TextField::kAvail, "100", {"Illegal Availability", "Illegal Availability"}},
      {TextField::kLocalPwr, "-1", power},
      {TextField::kLocalPwr, "much", power},
      {TextField::kLocalTakeOff, "91", takeoff},
      {TextField::kLocalTakeOff, "much", takeoff},
  };
  for (const auto& [field, text, messages] : cases) {
    const std::string before = view_.Text(field);
    Type(field, text);
    expect_last_valid_values();
    messages_.shown.clear();
    window_.Button_Click(Button::kPathsButton);
    EXPECT_EQ(messages_.Texts(), messages) << text;
    EXPECT_EQ(messages_.shown.at(0).second, "Skyhop");
    Type(field, before);
    expect_last_valid_values();
  }
  EXPECT_TRUE(launcher_.starts.empty());
}

TEST_F(IonCapTest, DeckAndResultsOfTheLastRunAreShownForSupport) {
  Start();
  EXPECT_FALSE(view_.Enabled(Button::kShowFilesCmd)) << "nothing ran yet";
  window_.Button_Click(Button::kShowFilesCmd);
  EXPECT_EQ(files_window_.text, "");
  window_.PathsButton_Click();
  EXPECT_TRUE(view_.Enabled(Button::kShowFilesCmd));
  const std::filesystem::path deck = folder_ / "IonCap" / "script.txt";
  WriteFile(deck, "the deck\n");
  window_.Button_Click(Button::kShowFilesCmd);
  const std::string& text = files_window_.text;
  EXPECT_NE(text.find(PathText(deck) + "\n\nthe deck\n"), std::string::npos) << text;
  EXPECT_NE(text.find(PathText(run_.ResultsFile()) + "\n\nThis file cannot be shown: "),
            std::string::npos)
      << text;
  WriteFile(run_.ResultsFile(), "the results\n");
  window_.Button_Click(Button::kShowFilesCmd);
  EXPECT_NE(text.find("\n\nthe results\n"), std::string::npos) << text;
  EXPECT_TRUE(launcher_.viewed.empty());

  Store("Viewer", "see", "IonCap");
  window_.Button_Click(Button::kShowFilesCmd);
  EXPECT_EQ(launcher_.viewed, (std::vector<std::string>{"see " + PathText(deck),
                                                        "see " + PathText(run_.ResultsFile())}));
  std::filesystem::remove(deck);
  launcher_.code = 2;
  window_.Button_Click(Button::kShowFilesCmd);
  ASSERT_EQ(messages_.shown.size(), 2U);
  EXPECT_EQ(messages_.shown[0].first, "There is no file " + PathText(deck));
  EXPECT_EQ(messages_.shown[1].first, PathText(run_.ResultsFile()) +
                                          " cannot be opened with see: The specified file was not "
                                          "found.");
}

TEST_F(IonCapTest, ThePathHasOneDistance) {
  Start();
  for (const bool miles : {true, false}) {
    configuration_.SetDistanceMiles(miles);
    for (const int path : {path_option::kShort, path_option::kLong}) {
      Choose(OptionGroup::kPath, path);
      const std::string label = view_.Shown(Label::kDistance);
      const std::string number = label.substr(0, label.find(' '));
      parameters_.SetCircuit(FormOf(view_, configuration_));
      const std::string summary = Summary();
      EXPECT_NE(summary.find(" " + number + (miles ? " mi  " : " km  ")), std::string::npos)
          << label << " and " << summary;
    }
  }
}

}  // namespace
}  // namespace skyhop::testing
