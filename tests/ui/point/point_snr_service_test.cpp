#include "ui/point/point_snr_service.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "common/files.h"
#include "common/text.h"
#include "support/answering_launcher.h"
#include "support/fake_engine_host.h"
#include "support/fake_launcher.h"
#include "support/fake_view.h"
#include "support/prediction_fixture.h"
#include "ui/shared/mode_names.h"
#include "ui/shared/view_form.h"

namespace skyhop::testing {
namespace {

using namespace std::chrono_literals;

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
    with_.form.local_power = "100";
    ShowForm(with_.form, view_, configuration_);
    WriteFile(folder_ / "DefaultBands.txt", "20M, 14.0, 14.35\n");
  }

  /// A tick of the timer, and enough time for an engine without an answer to be given up.
  void Tick() {
    service_.SNRExecuteTimer_Tick();
    with_.log.clock.now += EngineJob::kGrace;
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
    return ReadFile(folder_ / "~ITSHFBC2/run/sspscript.txt", 10000);
  }

  PredictionFixture with_;
  std::filesystem::path folder_ = with_.log.folder.Path();
  FakeView view_;
  FakePause pause_;
  FakeLauncher launcher_;
  FakeEngineHost host_;
  IONCAPModule::PointSnr point_{{host_, with_.engine.decks, launcher_, pause_,
                                 with_.log.diagnostics, with_.log.clock, folder_}};
  Configuration configuration_{with_.settings, with_.log.diagnostics};
  FreqDependentModule::BandTable bands_{folder_, with_.log.diagnostics};
  KeptAnswers answers_;
  PointSnrService service_{{view_, point_, with_.parameters, configuration_, bands_, answers_,
                            with_.log.diagnostics, with_.log.clock}};
};

TEST_F(PointSnrServiceTest, WhatIsPredictedIsShownAsItComes) {
  service_.SetDisplayActive(true);
  EXPECT_EQ(view_.snr.headline, "");
  KeepRunning();
  service_.Predict(14.074, "FT8", "");
  EXPECT_EQ(view_.snr.headline, "14.074 MHz to IO91wm at 13 UTC, FT8, 13 dB required in 1 Hz");
  EXPECT_EQ(view_.snr.engine, "");
  EXPECT_EQ(view_.snr.rows[0].snr, "");
  EXPECT_EQ(view_.Interval(WindowTimer::kSNRExecuteTimer), 250ms);
  AnswerPath("spsnr.txt", "41", "0.98", "2F2", "-118");
  service_.SNRExecuteTimer_Tick();
  EXPECT_EQ(view_.snr.rows[0],
            (SnrRow{"Short path", "41 dB", "+28 dB", "98 %", "2F2", "-88 dBm, S6", "", true}));
  EXPECT_EQ(view_.snr.rows[1], (SnrRow{"Long path", "", "", "", "", "", "", false}));
  EXPECT_EQ(view_.snr.engine, "VOACAP");
  EXPECT_FALSE(view_.snr.estimate);
  EXPECT_TRUE(TimerRuns());
  AnswerPath("lpsnr.txt", "-9", "0.00", "F2F2", "-171");
  service_.SNRExecuteTimer_Tick();
  EXPECT_EQ(view_.snr.rows[1],
            (SnrRow{"Long path", "-9 dB", "-22 dB", "0 %", "F2F2", "-141 dBm, S0", "", false}));
  EXPECT_FALSE(TimerRuns());
  EXPECT_TRUE(answers_.sent.empty()) << "nobody asked";
}

TEST_F(PointSnrServiceTest, TheLongPathWaitsForTheFolderOfTheShortPath) {
  KeepRunning();
  service_.Predict(14.074, "FT8", "");
  service_.SNRExecuteTimer_Tick();
  EXPECT_EQ(launcher_.starts.size(), 1U);
  AnswerPath("spsnr.txt", "41", "0.98", "2F2", "-118");
  service_.SNRExecuteTimer_Tick();
  ASSERT_EQ(launcher_.starts.size(), 2U);
  EXPECT_EQ(launcher_.ended, std::vector<ProcessId>{101}) << "before the second one has begun";
  EXPECT_EQ(launcher_.starts[1].batch.filename(), "lpsnr.bat");
  EXPECT_TRUE(TimerRuns());
}

TEST_F(PointSnrServiceTest, TheAnswerToAnotherQuestionIsRefused) {
  view_.SetText(TextField::kLocalPwr, "1500");
  view_.SetText(TextField::kSSN, "105");
  service_.Predict(14.074, "", "24");
  const std::string results = TestData("results/newyork-london-method30.results.txt");
  for (const char* file : {"spsnr.txt", "lpsnr.txt"}) {
    WriteFile(folder_ / "ITSHFBC2/run" / file, results);
  }
  service_.SNRExecuteTimer_Tick();
  EXPECT_EQ(view_.snr.rows[0].problem, "");
  EXPECT_EQ(view_.snr.rows[1].problem, "Results are for the short path, not the long path");
}

TEST_F(PointSnrServiceTest, TheEstimateIsToldFromAnInstalledEngine) {
  service_.Predict(14.074, "FT8", "");
  WriteFile(folder_ / "ITSHFBC2/run/spsnr.txt",
            "  SKYHOP ESTIMATE ENGINE   VERSION 1\n" +
                AnswerToAny(TestData("results/newyork-london-method30.results.txt")));
  service_.SNRExecuteTimer_Tick();
  EXPECT_EQ(view_.snr.engine, "Built-in estimate engine") << view_.snr.rows[0].problem;
  EXPECT_TRUE(view_.snr.estimate);
}

TEST_F(PointSnrServiceTest, WhatRestsOnOtherInputsIsMarkedUntilTheyAreBack) {
  EXPECT_FALSE(service_.InputsChanged()) << "there is no prediction";
  configuration_.SetFreqDependentEnabled(true);
  bands_.InitializeBandArray();
  service_.Predict(14.1, "CW", "");
  const std::string headline = view_.snr.headline;
  const auto text = [&](TextField field, const char* value) {
    return [=, this] { view_.SetText(field, value); };
  };
  const auto choice = [&](OptionGroup group, int index) {
    return [=, this] { view_.Select(group, index); };
  };
  const struct {
    const char* what;
    std::function<void()> change;
    std::function<void()> back;
    bool old;
  } cases[] = {
      {"station", text(TextField::kDXLat, "52 30' 0\" N"), text(TextField::kDXLat, "51 30' 0\" N"),
       true},
      {"form of the coordinates", text(TextField::kDXLat, "51 30' N"), {}, false},
      {"power", text(TextField::kLocalPwr, "5"), text(TextField::kLocalPwr, "100"), true},
      {"the other's power", choice(OptionGroup::kDXPwr, 4), {}, false},
      {"the other's noise", choice(OptionGroup::kDXNoiseLevel, 0),
       choice(OptionGroup::kDXNoiseLevel, 2), true},
      {"direction", choice(OptionGroup::kPredictSignals, 0),
       choice(OptionGroup::kPredictSignals, 1), true},
      {"path", choice(OptionGroup::kPath, path_option::kLong), {}, false},
      {"flux", text(TextField::kFlux, "80"), text(TextField::kFlux, "150"), true},
      {"K index", text(TextField::kKindex, "7"), {}, false},
      {"minutes", [this] { with_.log.clock.now += 50min; }, {}, false},
      {"hour", [this] { with_.log.clock.now += 10min; }, [this] { with_.log.clock.now -= 10min; },
       true},
      {"band's power",
       [this] {
         configuration_.SetBand(5, {"", "9"});
       },
       [this] {
         configuration_.SetBand(5, {"", ""});
       },
       true},
  };
  for (const auto& [what, change, back, old] : cases) {
    change();
    EXPECT_FALSE(service_.InputsChanged()) << "nobody follows the transceiver";
    EXPECT_EQ(view_.snr.old, old) << what;
    EXPECT_EQ(view_.snr.headline, old ? "Previous prediction: " + headline : headline) << what;
    if (!back) continue;
    back();
    EXPECT_FALSE(service_.InputsChanged());
    EXPECT_FALSE(view_.snr.old) << what;
  }
  view_.Select(OptionGroup::kPredictSignals, direction_option::kFromTheDXStation);
  service_.Predict(14.1, "CW", "");
  EXPECT_EQ(view_.snr.headline.find("14.1 MHz from IO91wm at 13 UTC"), 0U) << view_.snr.headline;
  view_.SetText(TextField::kDXGrid, "IO91");
  service_.Predict(14.1, "CW", "");
  EXPECT_EQ(view_.snr.headline.find("14.1 MHz from IO91 at"), 0U) << "as the window has it";
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
  view_.Select(OptionGroup::kPredictSignals, direction_option::kFromTheDXStation);
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

/// While a file is held open the start waits and events happen. A folder in its place holds it.
TEST_F(PointSnrServiceTest, RequestsDuringAStartComeAfterItAndTheNewestCounts) {
  const std::filesystem::path held = folder_ / "ITSHFBC2/run/spsnr.txt";
  const auto hold = [&](const std::function<void()>& meanwhile) {
    std::filesystem::remove(held);
    std::filesystem::create_directories(held / "open");
    pause_.during = [this, held, meanwhile] {
      const std::function<void()> once = std::exchange(pause_.during, {});
      meanwhile();
      service_.SNRExecuteTimer_Tick();
      EXPECT_TRUE(launcher_.starts.empty());
      EXPECT_TRUE(answers_.sent.empty());
      std::filesystem::remove_all(held);
    };
  };
  launcher_.running = {101, 102};
  hold([&] {
    service_.PredictSNR({4, "FT8", "10", "second", "7074"});
    service_.PredictSNR({3, "CW", "10", "third", "21030"});
  });
  service_.PredictSNR({6, "SSB", "10", "first", "14200"});
  EXPECT_EQ(launcher_.starts.size(), 2U);
  EXPECT_EQ(launcher_.ended, std::vector<ProcessId>{101}) << "nothing runs unwatched";
  AnswerBoth();
  service_.SNRExecuteTimer_Tick();
  ASSERT_EQ(answers_.sent.size(), 3U);
  const std::pair<const char*, const char*> expected[] = {
      {"<tag:6>second", "replaced by another request"},
      {"<tag:5>first", "replaced by another request"},
      {"<tag:5>third", "<spsnr:2>41"}};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NE(answers_.sent[i].second.find(expected[i].first), std::string::npos) << i;
    EXPECT_NE(answers_.sent[i].second.find(expected[i].second), std::string::npos) << i;
  }

  launcher_.starts.clear();
  launcher_.ended.clear();
  answers_.sent.clear();
  KeepRunning();
  hold([&] {
    service_.Terminate();
    answers_.sent.clear();
  });
  service_.PredictSNR({4, "FT8", "10", "", "14074"});
  EXPECT_EQ(launcher_.ended.size(), launcher_.starts.size()) << "the program has ended meanwhile";
}

TEST_F(PointSnrServiceTest, HalfAnAnswerSaysWhatIsMissing) {
  KeepRunning();
  service_.PredictSNR({4, "FT8", "10", "", "14.074"});
  AnswerPath("spsnr.txt", "41", "0.98", "2F2", "-118");
  launcher_.running.clear();
  for (int tick = 0; tick < 3; ++tick) Tick();
  ASSERT_EQ(answers_.sent.size(), 1U);
  EXPECT_NE(answers_.sent[0].second.find("<spsnr:2>41"), std::string::npos);
  EXPECT_NE(answers_.sent[0].second.find("<lpsnr:0>"), std::string::npos);
  EXPECT_NE(answers_.sent[0].second.find("long path: the engine ended without results"),
            std::string::npos);
  EXPECT_EQ(view_.snr.rows[1].problem,
            "the engine ended without results. Its coefficients are missing: there is no folder " +
                PathText(folder_ / "ITSHFBC2" / "coeffs") +
                ". The antenna file default/isotrope is missing in " +
                PathText(folder_ / "ITSHFBC2" / "antennas") + ".");
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
  for (int tick = 0; tick < 3; ++tick) Tick();
  EXPECT_EQ(launcher_.starts.size(), 2U);
  EXPECT_NE(Deck().find("FREQUENCY  0.0014.03"), std::string::npos);
}

TEST_F(PointSnrServiceTest, TheDialIsPredictedOnceAndAfterPeers) {
  const auto ticks = [&] {
    for (int tick = 0; tick < 6; ++tick) Tick();
    return launcher_.starts.size();
  };
  service_.SetDisplayActive(true);
  KeepRunning();
  service_.PredictSNR({4, "FT8", "10", "", "14074"});
  view_.StartTimer(WindowTimer::kSNRExecuteTimer, 7ms);
  service_.Follow(7.03, "CW");
  EXPECT_EQ(view_.Interval(WindowTimer::kSNRExecuteTimer), 7ms) << "started anew, it never ticks";
  EXPECT_EQ(ticks(), 1U) << "a peer waits for its answer";
  launcher_.running.clear();
  EXPECT_EQ(ticks(), 4U) << "the dial has not been forgotten";
  service_.Follow(7.03, "CW");
  EXPECT_EQ(ticks(), 4U) << "told again, it is no news";
  EXPECT_FALSE(TimerRuns());
  view_.SetText(TextField::kLocalPwr, "5");
  EXPECT_TRUE(service_.InputsChanged());
  service_.Follow(7.03, "CW");
  EXPECT_EQ(ticks(), 6U) << "for the power of now";
  service_.Follow(7.04, "CW");
  launcher_.running = {107};
  EXPECT_EQ(ticks(), 7U);
  service_.PredictSNR({4, "FT8", "10", "", "14074"});
  EXPECT_EQ(ticks(), 11U) << "a peer goes between";
  EXPECT_NE(Deck().find("FREQUENCY  0.00 7.04"), std::string::npos) << Deck();
  EXPECT_FALSE(view_.snr.old);
}

TEST_F(PointSnrServiceTest, NothingIsLeftBehindAtTheEnd) {
  KeepRunning();
  service_.PredictSNR({4, "FT8", "10", "", "14.074"});
  service_.Terminate();
  EXPECT_EQ(launcher_.ended.size(), 1U);
  service_.SNRExecuteTimer_Tick();
  ASSERT_EQ(answers_.sent.size(), 1U);
  EXPECT_NE(answers_.sent[0].second.find("<error:16>the program ends"), std::string::npos);
}

TEST(FrequenciesOfPeers, AreInMegahertzBelowAThousand) {
  EXPECT_EQ(Megahertz(14.074), 14.074);
  EXPECT_EQ(Megahertz(999), 999);
  EXPECT_EQ(Megahertz(1840), 1.84);
}

}  // namespace
}  // namespace skyhop::testing
