#include "engine/engine_probe.h"

#include <gtest/gtest.h>

#include "common/files.h"
#include "common/text.h"
#include "support/diagnostics_fixture.h"
#include "support/fake_engine_host.h"
#include "support/fake_launcher.h"

namespace skyhop {
namespace {

using skyhop::testing::FakeEngineHost;
using skyhop::testing::FakePause;
using skyhop::testing::InstallEngine;
using skyhop::testing::LoggedDiagnostics;
using skyhop::testing::OneLocker;
using skyhop::testing::PlainLauncher;
using skyhop::testing::TestData;
using std::chrono::milliseconds;

class EngineProbeTest : public ::testing::Test {
 protected:
  EngineProbeTest() {
    InstallEngine(log_.folder / "IonCap/ioncap.exe");
    InstallEngine(log_.folder / "ITSHFBC/bin_win/voacapw.exe");
    std::filesystem::create_directories(log_.folder / "ITSHFBC/coeffs");
    std::filesystem::create_directories(log_.folder / "ITSHFBC/run");
    InstallEngine(log_.folder / "ITSHFBC/antennas/default/Isotrope");
  }

  void Start(EngineChoice engine) {
    const std::optional<EngineProbe::Outcome> outcome = probe_.Start(engine, begin_);
    ASSERT_FALSE(outcome) << outcome->text;
    ASSERT_TRUE(probe_.Running());
    if (launcher_.knows_processes) {
      launcher_.running.insert(static_cast<ProcessId>(100 + launcher_.starts.size()));
    }
  }

  std::string OutcomeAfter(milliseconds time) {
    const std::optional<EngineProbe::Outcome> outcome = probe_.Poll(begin_ + time);
    if (!outcome) return "none yet";
    EXPECT_TRUE(outcome->installed) << "the estimate answers in no test of this file";
    return (outcome->good ? "good: " : "bad: ") + outcome->text;
  }

  void Answer(const std::string& name, const std::string& text) {
    WriteFile(log_.folder / name, text);
  }

  /// A path below the program folder, as files contain it.
  [[nodiscard]] std::string Path(const char* name) const {
    return PathText((log_.folder / name).make_preferred());
  }

  [[nodiscard]] std::string Content(const std::string& name) const {
    return ReadFile(log_.folder / name, 100000);
  }

  LoggedDiagnostics log_;
  PlainLauncher launcher_;
  FakeEngineHost host_;
  OneLocker locker_;
  FakePause pause_;
  EngineProbe::Time begin_{std::chrono::hours(5)};
  EngineProbe probe_{{locker_, launcher_, host_, pause_, log_.diagnostics, log_.folder.Path()}};
};

constexpr const char* kItsResults = "ITSHFBC/run/testresults.txt";

TEST_F(EngineProbeTest, AnItsRunHasFilesOfItsOwn) {
  Answer("ITSHFBC/run/results.txt", "of a prediction");
  Start(EngineChoice::kVoaCap);
  ASSERT_EQ(launcher_.starts.size(), 1U);
  EXPECT_EQ(launcher_.starts[0].batch, log_.folder / "ITSHFBC/run/test.bat");
  EXPECT_EQ(Content("ITSHFBC/run/test.bat"),
            "cd [" + Path("ITSHFBC/run") + "]|\n[" + Path("ITSHFBC/bin_win/voacapw.exe") +
                "] SILENT [" + Path("ITSHFBC") + "] test.txt testresults.txt|\necho off|\ncls|\n");
  EXPECT_EQ(ReplaceAll(Content("ITSHFBC/run/test.txt"), "\r\n", "\n"),
            TestData("decks/transatlantic-voacap26.txt"));
  EXPECT_EQ(Content("ITSHFBC/run/results.txt"), "of a prediction");
}

TEST_F(EngineProbeTest, AGoodRunNamesTheEngineAndItsTimeAndClearsUp) {
  const struct {
    EngineChoice engine;
    const char* results;
  } cases[] = {{EngineChoice::kVoaCap, "results/newyork-london-method26.results.txt"},
               {EngineChoice::kVoaCapSnr, "results/newyork-london-method30.results.txt"}};
  for (const auto& [engine, results] : cases) {
    Start(engine);
    Answer(kItsResults, TestData(results).substr(0, 500));
    EXPECT_EQ(OutcomeAfter(milliseconds(100)), "none yet") << "the engine is still writing";
    Answer(kItsResults, TestData(results));
    launcher_.running.clear();
    EXPECT_EQ(OutcomeAfter(milliseconds(842)),
              "good: VOACAP, version 16.1207W, answered in 842 ms. Its results hold plausible "
              "values for all 24 hours.");
    EXPECT_FALSE(probe_.Running());
    EXPECT_FALSE(locker_.held);
    EXPECT_TRUE(std::filesystem::is_empty(log_.folder / "ITSHFBC/run"));
  }
}

TEST_F(EngineProbeTest, WhatIsWrongWithTheAnswerIsTold) {
  const std::string good = TestData("results/newyork-london-method26.results.txt");
  const struct {
    EngineChoice engine;
    std::string results;
    const char* outcome;
  } cases[] = {
      {EngineChoice::kVoaCap, "not a table\n", "bad: The results cannot be read: Input past end"},
      {EngineChoice::kVoaCap, ReplaceAll(good, "10.33", " 0.00"),
       "bad: The results are not plausible: a MUF of 0 MHz in hour 5."},
      {EngineChoice::kVoaCap, ReplaceAll(good, "40.50 N", "48.50 N"),
       "bad: It answers another question. Results are for 48.50 N 74.25 W to 51.50 N 0.12 W, not "},
      {EngineChoice::kVoaCapSnr, "not a table\n",
       "bad: The results have no table of signal-to-noise ratios."},
      {EngineChoice::kVoaCapSnr,
       TestData("results/newyork-london-method30.results.txt").substr(0, 9000),
       "bad: The results hold only "},
  };
  for (const auto& [engine, results, outcome] : cases) {
    Start(engine);
    Answer(kItsResults, results);
    launcher_.running.clear();
    const std::string told = OutcomeAfter(milliseconds(50));
    EXPECT_TRUE(told.starts_with(outcome)) << told;
    EXPECT_FALSE(locker_.held);
    EXPECT_TRUE(std::filesystem::exists(log_.folder / kItsResults)) << "kept for support";
  }
}

TEST_F(EngineProbeTest, AnEngineWithoutResultsIsReported) {
  Start(EngineChoice::kVoaCap);
  launcher_.output = "Ouch\n";
  launcher_.running.clear();
  EXPECT_EQ(OutcomeAfter(milliseconds(50)), "none yet");
  EXPECT_EQ(OutcomeAfter(milliseconds(1050)),
            "bad: The engine ended without results. It printed: Ouch.");
  EXPECT_FALSE(locker_.held);
}

TEST_F(EngineProbeTest, WhatKeepsAnEngineFromStartingIsToldAtOnce) {
  const auto told = [&](EngineChoice engine) {
    const std::optional<EngineProbe::Outcome> outcome = probe_.Start(engine, begin_);
    return outcome && !outcome->good ? outcome->text : "it started";
  };
  EXPECT_EQ(told(EngineChoice::kIcePac),
            "The engine is missing: there is no " + Path("ITSHFBC/bin_win/icepacw.exe"));
  launcher_.code = 5;
  EXPECT_EQ(told(EngineChoice::kVoaCap),
            "The engine could not be started: The operating system denied access to the specified "
            "file.");
  EXPECT_FALSE(locker_.held);
  launcher_.code = 42;
  locker_.held = true;
  std::filesystem::remove_all(log_.folder / "IonCap/test.bat");
  EXPECT_EQ(told(EngineChoice::kIonCap),
            "A prediction is running. Test the engine when it has finished.");
  EXPECT_FALSE(std::filesystem::exists(log_.folder / "IonCap/test.bat"));
  EXPECT_EQ(launcher_.starts.size(), 1U);
  locker_.held = false;
  std::filesystem::remove_all(log_.folder / "ITSHFBC/run");
  WriteFile(log_.folder / "ITSHFBC/run", "a file in the folder's place");
  EXPECT_EQ(told(EngineChoice::kVoaCap).find("The run cannot be prepared: "), 0U);
  EXPECT_FALSE(locker_.held);
}

TEST_F(EngineProbeTest, ACancelledRunIsEndedAndGivesTheFolderFree) {
  Start(EngineChoice::kIonCap);
  EXPECT_TRUE(locker_.held);
  probe_.Cancel();
  EXPECT_EQ(launcher_.ended.size(), 1U);
  EXPECT_FALSE(locker_.held);
  EXPECT_EQ(OutcomeAfter(milliseconds(5)), "none yet");
}

}  // namespace
}  // namespace skyhop
