#include "ui/beacon/beacon_predictions.h"

#include <gtest/gtest.h>

#include "beacon/beacon_files.h"
#include "engine/circuit_run.h"
#include "support/answering_launcher.h"
#include "support/fake_engine_host.h"
#include "support/prediction_fixture.h"

namespace skyhop::testing {
namespace {

using BeaconModule::Beacon;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;

class BeaconPredictionsTest : public ::testing::Test {
 protected:
  BeaconPredictionsTest() {
    InstallEngine(Folder() / "IonCap/ioncap.exe");
    InstallEngine(Folder() / "ITSHFBC/bin_win/voacapw.exe");
    std::filesystem::create_directories(Folder() / "ITSHFBC/run");
    inputs_ = BeaconParameters(Transatlantic());
  }

  [[nodiscard]] const std::filesystem::path& Folder() const { return fixture_.log.folder.Path(); }

  void Want(UtcTime now) { predictions_.Want(inputs_, beacons_, frequencies_, now); }
  void Want() { Want(fixture_.log.clock.now); }

  /// Polls until nothing is left to do; returns how often something new was known.
  int PollAll() {
    int news = 0;
    for (int poll = 0; poll < 100 && predictions_.Working(); ++poll) {
      if (predictions_.Poll(time_)) ++news;
      time_ += milliseconds(500);
    }
    EXPECT_FALSE(predictions_.Working());
    return news;
  }

  static Beacon At(const char* call, Angle latitude, Angle longitude) {
    Beacon beacon;
    beacon.call = call;
    beacon.position = {latitude, longitude};
    return beacon;
  }

  PredictionFixture fixture_;
  FakePause pause_;
  AnsweringLauncher launcher_;
  FakeEngineHost host_;
  OneLocker locker_;
  BeaconPredictions::Time time_{hours(5)};
  ParameterSet inputs_;
  std::vector<Beacon> beacons_ = {At("OH2B", {60, 19, 0, -1}, {24, 23, 0, 1}),
                                  At("YV5B", {10, 24, 0, -1}, {66, 53, 0, -1})};
  std::vector<double> frequencies_ = {14100, 28200};
  BeaconPredictions predictions_{
      {locker_, launcher_, host_, pause_, fixture_.log.diagnostics, fixture_.log.clock, Folder()}};
};

TEST_F(BeaconPredictionsTest, EveryBeaconIsRunOnceAndItsBandsAreKnownForTheDay) {
  Want();
  EXPECT_EQ(predictions_.Of("OH2B", 14100), nullptr);
  EXPECT_EQ(PollAll(), 2);
  EXPECT_EQ(launcher_.starts.size(), 2U);
  ASSERT_NE(predictions_.Of("OH2B", 14100), nullptr);
  ASSERT_NE(predictions_.Of("YV5B", 28200), nullptr);
  // As the chart has it: this path is open on 20 m by day and closed on 10 m by night.
  EXPECT_GT(predictions_.Of("OH2B", 14100)->at(14), 0);
  EXPECT_EQ(predictions_.Of("OH2B", 28200)->at(3), 0);
  EXPECT_EQ(predictions_.Problem(), "");
  EXPECT_FALSE(locker_.held);
  EXPECT_FALSE(std::filesystem::exists(Folder() / "IonCap/beaconresults.txt"));
}

TEST_F(BeaconPredictionsTest, TheBeaconTransmitsWithItsPowerToYourStation) {
  Want();
  PollAll();
  ASSERT_EQ(launcher_.decks.size(), 2U);
  // Transmitter, then receiver, in degrees and hundredths.
  EXPECT_NE(launcher_.decks[0].find("CIRCUIT   06032N    02438E    04050N    07425W"),
            std::string::npos)
      << launcher_.decks[0];
  EXPECT_NE(launcher_.decks[1].find("CIRCUIT   01040N    06688W"), std::string::npos);
  EXPECT_NE(launcher_.decks[0].find("MONTH     0202600011"), std::string::npos);
}

TEST_F(BeaconPredictionsTest, YourAntennaReceivesThem) {
  inputs_.engine = EngineChoice::kVoaCap;
  inputs_.receiver_antenna.file = "samples/sample.23";
  Want();
  PollAll();
  ASSERT_EQ(launcher_.decks.size(), 2U) << predictions_.Problem();
  EXPECT_NE(launcher_.decks[0].find("[samples/sample.23"), std::string::npos) << launcher_.decks[0];
}

TEST_F(BeaconPredictionsTest, WhatIsKnownHoldsForTheHour) {
  const UtcTime hour = std::chrono::floor<hours>(fixture_.log.clock.now);
  Want(hour);
  PollAll();
  Want(hour + std::chrono::minutes(59));
  EXPECT_FALSE(predictions_.Working());
  Want(hour + hours(1));
  EXPECT_TRUE(predictions_.Working());
  EXPECT_NE(predictions_.Of("OH2B", 14100), nullptr) << "until there is something newer";

  PollAll();
  inputs_.flux = "200";
  Want(hour + hours(1));
  EXPECT_EQ(predictions_.Of("OH2B", 14100), nullptr) << "other conditions";
  EXPECT_TRUE(predictions_.Working());

  PollAll();
  launcher_.answer.clear();
  for (const int later : {2, 3}) {
    Want(hour + hours(later));
    PollAll();
    EXPECT_EQ(predictions_.Of("OH2B", 14100) != nullptr, later == 2) << later;
  }
}

TEST_F(BeaconPredictionsTest, AUsersPredictionComesFirst) {
  launcher_.slow = true;
  ForegroundLocker users(locker_);
  users.SetYield([this] { predictions_.Yield(); });
  Want();
  (void)predictions_.Poll(time_);
  ASSERT_TRUE(locker_.held);
  const std::unique_ptr<RunLock> lock = users.Lock();
  EXPECT_NE(lock, nullptr);
  EXPECT_EQ(launcher_.ended.size(), 1U);
  locker_.attempts = 0;
  for (int poll = 0; poll < 20; ++poll) (void)predictions_.Poll(time_ + poll * milliseconds(100));
  EXPECT_EQ(launcher_.starts.size(), 1U) << "the user's prediction is still running";
  EXPECT_EQ(locker_.attempts, 2) << "once a second";
  EXPECT_TRUE(predictions_.Working());
}

TEST_F(BeaconPredictionsTest, OtherProgramsGetTheirTurnBetweenTwoRuns) {
  Want();
  while (!predictions_.Poll(time_)) ASSERT_TRUE(predictions_.Working());
  EXPECT_TRUE(predictions_.Working());
  EXPECT_FALSE(locker_.held);
}

TEST_F(BeaconPredictionsTest, WhatIsInterruptedIsDoneLater) {
  launcher_.slow = true;
  Want();
  (void)predictions_.Poll(time_);
  predictions_.Yield();
  launcher_.slow = false;
  EXPECT_EQ(PollAll(), 2);
  EXPECT_NE(predictions_.Of("OH2B", 14100), nullptr);
}

TEST_F(BeaconPredictionsTest, ReliabilitiesCountWhereTheEnginePredictsThem) {
  inputs_.engine = EngineChoice::kVoaCapSnr;
  frequencies_ = {14100, 1810, 14400};
  launcher_.answer = AnswerToAny(TestData("results/newyork-london-method30.results.txt"));
  Want();
  PollAll();
  ASSERT_NE(predictions_.Of("OH2B", 14100), nullptr) << predictions_.Problem();
  EXPECT_EQ(*std::max_element(predictions_.Of("OH2B", 14100)->begin(),
                              predictions_.Of("OH2B", 14100)->end()),
            4);
  EXPECT_NE(launcher_.decks[0].find("METHOD       30"), std::string::npos);
  EXPECT_EQ(predictions_.Of("OH2B", 1810), nullptr) << "nobody has predicted that band";
  EXPECT_EQ(predictions_.Of("OH2B", 14400), nullptr) << "on no band";

  // An engine that was ended in the middle of the day.
  predictions_.Forget();
  launcher_.answer.resize(launcher_.answer.size() / 2);
  Want();
  PollAll();
  EXPECT_EQ(predictions_.Problem(), "The results for YV5B are not complete");
  ASSERT_NE(predictions_.Of("OH2B", 14100), nullptr);
  EXPECT_TRUE(predictions_.Of("OH2B", 14100)->at(3));
  EXPECT_FALSE(predictions_.Of("OH2B", 14100)->at(23));
}

TEST_F(BeaconPredictionsTest, ProblemsAreTold) {
  struct Case {
    const char* name;
    std::function<void()> spoil;
    const char* problem;
    std::size_t starts;
  };
  for (const Case& c : std::initializer_list<Case>{
           {"no station", [this] { inputs_.receiver.latitude = LatLonModule::UndefinedAngle(); },
            "No predictions: your station's location is missing", 0},
           {"flux", [this] { inputs_.flux = "20"; }, "No predictions: Illegal Solar Flux", 0},
           {"no engine selected", [this] { inputs_.engine = EngineChoice::kNone; },
            "No predictions: no engine is selected", 0},
           {"missing engine", [this] { inputs_.engine = EngineChoice::kIcePac; },
            "No predictions: the engine is missing: there is no ", 0},
           {"no start", [this] { launcher_.code = 5; },
            "No predictions: the engine could not be started: ", 1},
           {"no results", [this] { launcher_.answer.clear(); },
            "No prediction for YV5B: the engine ended without results", 2},
           {"damaged results", [this] { launcher_.answer = "no table"; },
            "The results for YV5B cannot be read", 2},
       }) {
    const ParameterSet good = inputs_;
    launcher_.starts.clear();
    predictions_.Forget();
    c.spoil();
    Want();
    PollAll();
    EXPECT_EQ(predictions_.Problem().substr(0, std::string(c.problem).size()), c.problem) << c.name;
    EXPECT_EQ(launcher_.starts.size(), c.starts) << c.name;
    EXPECT_FALSE(locker_.held) << c.name;
    inputs_ = good;
    launcher_.code = 42;
  }
}

}  // namespace
}  // namespace skyhop::testing
