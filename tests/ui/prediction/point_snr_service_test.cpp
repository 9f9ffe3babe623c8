#include "ui/prediction/point_snr_service.h"

#include <gtest/gtest.h>

#include "common/files.h"
#include "support/fake_engine_host.h"
#include "support/fake_launcher.h"
#include "support/fake_view.h"
#include "support/prediction_fixture.h"
#include "ui/prediction/mode_names.h"

namespace skyhop::testing {
namespace {

using namespace std::chrono_literals;

class NoChart : public IONCAPModule::ResultsChart {
 public:
  void DisplayTable(EngineChoice) override {}
};

class KeptAnswers : public SNRAnswers {
 public:
  void Send(std::int16_t role, const std::string& record) override {
    sent.emplace_back(role, record);
  }
  std::vector<std::pair<std::int16_t, std::string>> sent;
};

/// The service over engines that do what the test says.
class PointSnrServiceTest : public ::testing::Test {
 protected:
  PointSnrServiceTest() {
    for (const char* name : {"IonCap", "ITSHFBC2/run", "~ITSHFBC2/run"}) {
      std::filesystem::create_directories(folder_ / name);
    }
    run_.LoadEngineData(folder_);
    with_.panel.SetText(PanelText::kLocalLat, "40 30' 0\" N");
    with_.panel.SetText(PanelText::kLocalLon, "74 15' 0\" W");
    with_.panel.SetText(PanelText::kDXLat, "51 30' 0\" N");
    with_.panel.SetText(PanelText::kDXLon, "0 7' 0\" W");
    with_.panel.SetText(PanelText::kLocalPwr, "100");
    with_.panel.SetText(PanelText::kLocalTakeOff, "3");
    with_.panel.SetText(PanelText::kSNR, "24");
    WriteFile(folder_ / "DefaultBands.txt", "20M, 14.0, 14.35\n");
  }

  /// The next engines run until their answers come.
  void KeepRunning() {
    const auto next = static_cast<ProcessId>(launcher_.starts.size() + 101);
    launcher_.running = {next, next + 1};
  }

  /// What the engine of a path answers; the results' columns of the one frequency.
  void AnswerPath(const char* file, const std::string& snr, const std::string& reliability,
                  const std::string& mode, const std::string& power) {
    const auto line = [](const std::string& cell, const char* tag) {
      return std::string(16, ' ') + std::string(5 - cell.size(), ' ') + cell +
             std::string(46, ' ') + tag + "\n";
    };
    WriteFile(folder_ / "ITSHFBC2/run" / file,
              "  VOACAP   VERSION 1\nMULTIPATH POWER TOLERANCE\n\n  13.0 11.2  8.2 14.1" +
                  std::string(46, ' ') + "FREQ\n" + line(mode, "MODE") + line(power, "S DBW") +
                  line(snr, "SNR") + line(reliability, "REL") + " *****END OF RUN*****\n");
  }
  void AnswerBoth() {
    AnswerPath("spsnr.txt", "41", "0.98", "2F2", "-118");
    AnswerPath("lpsnr.txt", "-9", "0.00", "F2F2", "-171");
  }

  [[nodiscard]] bool TimerRuns() const { return view_.TimerRunning(WindowTimer::kSNRExecuteTimer); }
  [[nodiscard]] std::string Deck() const {
    return ReadFile(folder_ / "ITSHFBC2/run/sspscript.txt", 10000);
  }

  PredictionFixture with_;
  std::filesystem::path folder_ = with_.log.folder.Path();
  FakeView view_;
  FakePause pause_;
  FakeLauncher launcher_;
  FakeEngineHost host_;
  NoChart chart_;
  ManualTimer timer_;
  ResultsTable table_;
  IONCAPModule::ScriptCards cards_{pause_, with_.log.diagnostics};
  IONCAPModule::IonCapScript ioncap_{cards_, with_.panel, with_.parameters, with_.log.diagnostics};
  IONCAPModule::ItsScript its_{cards_, with_.panel, with_.parameters, with_.log.diagnostics};
  IONCAPModule::Results results_{table_, with_.panel,    with_.parameters,
                                 chart_, with_.messages, with_.log.diagnostics};
  IONCAPModule::RunControl run_{{with_.parameters, with_.panel, ioncap_, its_, results_, timer_,
                                 launcher_, host_, pause_, with_.messages, with_.settings,
                                 with_.log.diagnostics}};
  IONCAPModule::PointSnr point_{{run_, its_, with_.panel, with_.parameters, launcher_, pause_,
                                 with_.log.diagnostics, with_.log.clock}};
  Configuration configuration_{with_.settings, with_.log.diagnostics};
  FreqDependentModule::BandTable bands_{folder_, with_.log.diagnostics};
  KeptAnswers answers_;
  PointSnrService service_{
      {view_, point_, with_.panel, configuration_, bands_, answers_, with_.log.diagnostics}};
};

TEST_F(PointSnrServiceTest, WhatIsPredictedIsShownAsItComes) {
  service_.SetDisplayActive(true);
  EXPECT_EQ(view_.snr.headline, "");
  KeepRunning();
  service_.Predict(14.074, "FT8", "");
  EXPECT_EQ(view_.snr.headline, "14.074 MHz at 13 UTC, FT8, 13 dB required in 1 Hz");
  EXPECT_EQ(view_.snr.rows[0].snr, "");
  EXPECT_EQ(view_.Interval(WindowTimer::kSNRExecuteTimer), 250ms);
  AnswerPath("spsnr.txt", "41", "0.98", "2F2", "-118");
  service_.SNRExecuteTimer_Tick();
  EXPECT_EQ(view_.snr.rows[0],
            (SnrRow{"Short path", "41 dB", "+28 dB", "98 %", "2F2", "-88 dBm, S6", "", true}));
  EXPECT_EQ(view_.snr.rows[1], (SnrRow{"Long path", "", "", "", "", "", "", false}));
  EXPECT_TRUE(TimerRuns());
  AnswerPath("lpsnr.txt", "-9", "0.00", "F2F2", "-171");
  service_.SNRExecuteTimer_Tick();
  EXPECT_EQ(view_.snr.rows[1],
            (SnrRow{"Long path", "-9 dB", "-22 dB", "0 %", "F2F2", "-141 dBm, S0", "", false}));
  EXPECT_FALSE(TimerRuns());
  EXPECT_TRUE(answers_.sent.empty()) << "nobody asked";
}

TEST_F(PointSnrServiceTest, WhatKeepsItFromStartingIsShown) {
  service_.SetDisplayActive(true);
  service_.Predict(144, "FM", "");
  EXPECT_EQ(view_.snr.headline, "There is no prediction: the frequency is not from 1.6 to 60 MHz.");
  EXPECT_FALSE(TimerRuns());
  EXPECT_TRUE(view_.snr.active);
  service_.SetDisplayActive(false);
  EXPECT_FALSE(view_.snr.active);
}

TEST_F(PointSnrServiceTest, TheRequiredSnrIsTheGivenOneTheModesOrTheWindows) {
  const struct {
    const char* mode;
    const char* snr;
    const char* card;
  } cases[] = {{"CW", "", "24.0"},
               {"usb", "", "45.0"},
               {"CW", "17", "17.0"},
               {"HELL", "", "24.0"},
               {"", "-30", "-30.0"}};
  for (const auto& [mode, snr, card] : cases) {
    service_.Predict(14.1, mode, snr);
    EXPECT_NE(Deck().find(std::string("   10") + (card[0] == '-' ? "" : " ") + card),
              std::string::npos)
        << mode << Deck();
  }
}

TEST_F(PointSnrServiceTest, TheBandsOwnPowerAndAngleCountForTheOwnTransmitter) {
  bands_.InitializeBandArray();
  configuration_.SetFreqDependentEnabled(true);
  configuration_.SetBand(5, {"9", "7"});
  service_.Predict(14.1, "CW", "");
  EXPECT_NE(Deck().find(" 9.00   10"), std::string::npos) << Deck();
  EXPECT_NE(Deck().find("    0.0070\r\n"), std::string::npos);
  with_.panel.SetChoice(PanelChoice::kPredictSignals, direction_option::kFromTheDXStation);
  service_.Predict(14.1, "CW", "");
  EXPECT_NE(Deck().find(" 3.00   10"), std::string::npos);
  EXPECT_NE(Deck().find("    0.1000\r\n"), std::string::npos);
}

TEST_F(PointSnrServiceTest, APeersRequestIsAnsweredWithARecord) {
  KeepRunning();
  service_.PredictSNR({4, "FT8", "10", "call 7", "14074"});
  service_.SNRExecuteTimer_Tick();
  EXPECT_TRUE(answers_.sent.empty());
  AnswerBoth();
  service_.SNRExecuteTimer_Tick();
  ASSERT_EQ(answers_.sent.size(), 1U);
  EXPECT_EQ(answers_.sent[0].first, 4);
  EXPECT_EQ(answers_.sent[0].second,
            "<freq:5>14074<mode:3>FT8<reqsnr:2>10<tag:6>call 7<utc:2>13<spsnr:2>41<sprel:2>98"
            "<spmode:3>2F2<spdbm:3>-88<lpsnr:2>-9<lprel:1>0<lpmode:4>F2F2<lpdbm:4>-141<error:0>"
            "<engine:6>VOACAP<eor>");
  service_.SNRExecuteTimer_Tick();
  EXPECT_EQ(answers_.sent.size(), 1U);
  EXPECT_FALSE(TimerRuns());
}

TEST_F(PointSnrServiceTest, WhoeverIsReplacedOrCannotBeServedIsTold) {
  KeepRunning();
  service_.PredictSNR({4, "FT8", "10", "first", "14074"});
  service_.PredictSNR({6, "FT8", "10", "second", "nonsense"});
  EXPECT_TRUE(answers_.sent.empty()) << "a peer is in the middle of its request";
  EXPECT_TRUE(TimerRuns());
  service_.SNRExecuteTimer_Tick();
  ASSERT_EQ(answers_.sent.size(), 2U);
  EXPECT_EQ(answers_.sent[0].first, 4);
  EXPECT_NE(answers_.sent[0].second.find("<tag:5>first"), std::string::npos);
  EXPECT_NE(answers_.sent[0].second.find("<spsnr:0><sprel:0>"), std::string::npos);
  EXPECT_NE(answers_.sent[0].second.find("<error:27>replaced by another request"),
            std::string::npos);
  EXPECT_EQ(answers_.sent[1].first, 6);
  EXPECT_NE(answers_.sent[1].second.find("<error:39>the frequency is not from 1.6 to 60 MHz"),
            std::string::npos)
      << answers_.sent[1].second;
  EXPECT_FALSE(TimerRuns());
}

TEST_F(PointSnrServiceTest, HalfAnAnswerSaysWhatIsMissing) {
  KeepRunning();
  service_.PredictSNR({4, "FT8", "10", "", "14.074"});
  AnswerPath("spsnr.txt", "41", "0.98", "2F2", "-118");
  launcher_.running.clear();
  service_.SNRExecuteTimer_Tick();
  ASSERT_EQ(answers_.sent.size(), 1U);
  EXPECT_NE(answers_.sent[0].second.find("<spsnr:2>41"), std::string::npos);
  EXPECT_NE(answers_.sent[0].second.find("<lpsnr:0>"), std::string::npos);
  EXPECT_NE(answers_.sent[0].second.find("long path: the engine ended without results"),
            std::string::npos);
  EXPECT_EQ(view_.snr.rows[1].problem, "the engine ended without results");
}

TEST_F(PointSnrServiceTest, TheDialIsFollowedWhenItRests) {
  service_.Follow(14.0, "CW");
  EXPECT_FALSE(TimerRuns()) << "nobody looks";
  service_.SetDisplayActive(true);
  for (const double frequency : {14.01, 14.02, 14.03}) {
    service_.Follow(frequency, "CW");
    service_.SNRExecuteTimer_Tick();
    EXPECT_TRUE(launcher_.starts.empty()) << "it is still turned";
  }
  service_.SNRExecuteTimer_Tick();
  EXPECT_EQ(launcher_.starts.size(), 2U);
  EXPECT_NE(Deck().find("FREQUENCY  0.0014.03"), std::string::npos);
}

TEST_F(PointSnrServiceTest, NothingIsLeftBehindAtTheEnd) {
  KeepRunning();
  service_.PredictSNR({4, "FT8", "10", "", "14.074"});
  service_.Terminate();
  EXPECT_EQ(launcher_.ended.size(), 2U);
  service_.SNRExecuteTimer_Tick();
  EXPECT_TRUE(answers_.sent.empty());
}

TEST(FrequenciesOfPeers, AreInMegahertzBelowAThousand) {
  EXPECT_EQ(Megahertz(14.074), 14.074);
  EXPECT_EQ(Megahertz(999), 999);
  EXPECT_EQ(Megahertz(1840), 1.84);
}

}  // namespace
}  // namespace skyhop::testing
