#include "engine/engine_job.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "common/files.h"
#include "common/text.h"
#include "engine/engine_probe.h"
#include "platform/platform.h"
#include "support/diagnostics_fixture.h"
#include "support/fake_launcher.h"

namespace skyhop::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Failure = EngineJob::Failure;
using State = EngineJob::State;

/// The question of the deck that the samples between New York and London answer.
EngineJob::Request RequestIn(const std::filesystem::path& folder, EngineLauncher& launcher) {
  EngineJob::Request request;
  request.asked = ProbeQuestion(EngineChoice::kVoaCap);
  request.finding.executable = folder / "bin_win/voacapw.exe";
  request.finding.exists = true;
  request.finding.can_run = true;
  request.files = FilesIn(folder, request.asked.engine,
                          {"deck.txt", "results.txt", "run.bat", "drive.txt"}, launcher);
  request.timeout = EngineJob::kTimeout;
  return request;
}

std::string Results() {
  return TestData("results/newyork-london-method26.results.txt");
}

/// Runs with real processes: shell scripts for engines.
class EngineJobTest : public ::testing::Test {
 protected:
  /// Starts a script as the engine. `$results` is the file that it has to write, `answer` a file
  /// with a whole answer.
  void Start(const std::string& script, bool executable = true) {
    WriteFile(folder_ / "answer", Results());
    job_.Prepare(request_.files);
    std::filesystem::create_directories(folder_ / "bin_win");
    const std::filesystem::path engine = request_.finding.executable;
    std::filesystem::remove(engine);
    WriteFile(engine, "#!/bin/sh\nresults=\"$2/run/$4\"; answer=\"$2/answer\"\n" + script + "\n");
    using std::filesystem::perms;
    std::filesystem::permissions(engine, executable ? perms::owner_all : perms::owner_read);
    WriteFile(request_.files.deck, "a deck");
    ASSERT_TRUE(job_.Start(request_, begin_)) << job_.Problem();
  }

  /// Polls until the run has an outcome. `step` is the pretended time between two polls.
  EngineJob::Outcome Await(milliseconds step = milliseconds(10)) {
    EngineJob::Outcome outcome;
    for (int i = 0; i < 3000 && outcome.state == State::kRunning; ++i) {
      outcome = job_.Poll(begin_ + i * step);
      if (outcome.state == State::kRunning) std::this_thread::sleep_for(milliseconds(10));
    }
    job_.End();
    return outcome;
  }

  LoggedDiagnostics log_;
  FakePause pause_;
  std::filesystem::path folder_ = log_.folder.Path();
  std::unique_ptr<EngineLauncher> launcher_ = platform::MakeEngineLauncher();
  EngineJob job_{*launcher_, pause_, log_.diagnostics};
  EngineJob::Request request_ = RequestIn(folder_, *launcher_);
  EngineJob::Time begin_{std::chrono::hours(5)};
};

TEST_F(EngineJobTest, DeliversCompleteResults) {
  const std::pair<const char*, const char*> engines[] = {
      {"engine that ends", "cp \"$answer\" \"$results\""},
      {"engine that lingers", "cp \"$answer\" \"$results\"; sleep 60"},
      {"engine without a last line", "head -n 58 \"$answer\" > \"$results\""},
      {"slow engine",
       "head -c 2000 \"$answer\" > \"$results\"; sleep 0.3; tail -c +2001 \"$answer\" >> "
       "\"$results\""},
      {"engine that fails after its answer", "cp \"$answer\" \"$results\"; kill -SEGV $$"},
  };
  for (const auto& [what, script] : engines) {
    Start(script);
    const EngineJob::Outcome outcome = Await();
    EXPECT_EQ(outcome.state, State::kComplete) << what << ": " << outcome.text;
    EXPECT_TRUE(Results().starts_with(outcome.text)) << what;
    EXPECT_GT(outcome.text.size(), 2500U) << what;
  }
  EXPECT_TRUE(log_.errors.empty());
}

TEST_F(EngineJobTest, ReportsWhyThereAreNoResults) {
  const struct {
    const char* script;
    Failure failure;
    std::string reason;
  } faults[] = {
      {"exit 1", Failure::kNoResults, "the engine ended without results."},
      {"echo 'no deck' >&2; exit 0", Failure::kNoResults, "It printed: no deck."},
      {"kill -SEGV $$", Failure::kNoResults, "the engine ended without results."},
      {": > \"$results\"", Failure::kNoResults, "the engine ended without results."},
      {"mkdir \"$results\"", Failure::kNoResults, "the engine ended without results."},
      {"truncate -s 3G \"$results\"", Failure::kUnreadable, "it is longer than 16777216 bytes"},
      {"sed 's/40.50 N/48.50 N/' \"$answer\" > \"$results\"", Failure::kOtherQuestion,
       "Results are for 48.50 N 74.25 W to 51.50 N 0.12 W, not 40.50 N"},
  };
  for (const auto& [script, failure, reason] : faults) {
    Start(script);
    const EngineJob::Outcome outcome = Await();
    EXPECT_EQ(outcome.state, State::kFailed) << script;
    EXPECT_EQ(outcome.failure, failure) << script;
    EXPECT_NE(outcome.text.find(reason), std::string::npos) << script << ": " << outcome.text;
    std::filesystem::remove_all(request_.files.results);
  }
  Start("exit 0", false);
  EXPECT_EQ(Await().failure, Failure::kNoResults) << "not executable";
}

TEST_F(EngineJobTest, EndsAnEngineThatExceedsTheTimeLimit) {
  Start(
      "trap '' TERM; echo $$ > \"$answer.pid\"; head -c 2000 \"$answer\" > \"$results\"; sleep 60");
  const auto pid = [&] {
    const std::filesystem::path file = folder_ / "answer.pid";
    return std::filesystem::exists(file) ? std::string(Trim(ReadFile(file, 100))) : "";
  };
  while (pid().empty()) std::this_thread::sleep_for(milliseconds(5));
  EXPECT_EQ(job_.Poll(begin_ + EngineJob::kTimeout - milliseconds(1)).state, State::kRunning);
  const EngineJob::Outcome outcome = job_.Poll(begin_ + EngineJob::kTimeout);
  EXPECT_EQ(outcome.failure, Failure::kTimeout);
  EXPECT_EQ(outcome.text, "no answer within 30 s");
  job_.End();
  EXPECT_FALSE(std::filesystem::exists("/proc/" + pid()));
}

TEST_F(EngineJobTest, NeverTakesResultsOfAnEarlierRun) {
  Start("cp \"$answer\" \"$results\"");
  EXPECT_EQ(Await().state, State::kComplete);
  Start("exit 1");
  EXPECT_EQ(Await().failure, Failure::kNoResults);
}

/// Runs whose processes and files are what the test says.
class EngineJobRulesTest : public ::testing::Test {
 protected:
  void Start() {
    job_.Prepare(request_.files);
    ASSERT_TRUE(job_.Start(request_, begin_)) << job_.Problem();
    if (launcher_.knows_processes) launcher_.running.insert(job_.Process());
  }

  LoggedDiagnostics log_;
  FakePause pause_;
  PlainLauncher launcher_;
  EngineJob job_{launcher_, pause_, log_.diagnostics};
  EngineJob::Request request_ = RequestIn(log_.folder.Path(), launcher_);
  EngineJob::Time begin_{std::chrono::hours(5)};
};

TEST_F(EngineJobRulesTest, WaitsASecondForTheResultsOfAnEndedEngine) {
  Start();
  launcher_.running.clear();
  EXPECT_EQ(job_.Poll(begin_ + seconds(7)).state, State::kRunning);
  EXPECT_EQ(job_.Poll(begin_ + seconds(7) + milliseconds(999)).state, State::kRunning);
  WriteFile(request_.files.results, "anything");
  EXPECT_EQ(job_.Poll(begin_ + seconds(7) + milliseconds(999)).state, State::kComplete);
  WriteFile(request_.files.results, "");
  EXPECT_EQ(job_.Poll(begin_ + seconds(8)).failure, Failure::kNoResults);
}

TEST_F(EngineJobRulesTest, WaitsForTheLastLineOfAnUnknownProcess) {
  launcher_.knows_processes = false;
  Start();
  const std::pair<std::string, State> contents[] = {
      {"", State::kRunning},
      {Results().substr(0, 2000), State::kRunning},
      {Results().substr(0, Results().size() - 1), State::kRunning},
      {Results(), State::kComplete},
      {"END OF RUN\n", State::kComplete},
  };
  for (const auto& [content, state] : contents) {
    WriteFile(request_.files.results, content);
    EXPECT_EQ(job_.Poll(begin_ + seconds(29)).state, state) << content.size() << " bytes";
  }
  WriteFile(request_.files.results, "half");
  EXPECT_EQ(job_.Poll(begin_ + seconds(30)).failure, Failure::kTimeout);
  request_.timeout.reset();
  Start();
  EXPECT_EQ(job_.Poll(begin_ + std::chrono::hours(30)).state, State::kRunning) << "no time limit";
}

TEST_F(EngineJobRulesTest, LeavesNoFilesAndNoProcessBehind) {
  Start();
  WriteFile(request_.files.deck, "a deck");
  WriteFile(request_.files.results, Results());
  job_.End();
  job_.RemoveFiles();
  EXPECT_EQ(launcher_.ended.size(), 1U);
  EXPECT_TRUE(std::filesystem::is_empty(log_.folder / "run"));
}

}  // namespace
}  // namespace skyhop::testing
