#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "common/errors.h"
#include "common/files.h"
#include "platform/linux/posix_engine_launcher.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using platform::PosixEngineLauncher;
using std::chrono::milliseconds;

class EngineLauncherTest : public ::testing::Test {
 protected:
  std::filesystem::path Batch(const std::string& content) {
    std::filesystem::path batch = folder_ / "engine.bat";
    WriteFile(batch, content);
    return batch;
  }

  LaunchResult Start(const std::string& content, const std::string& parameter = {}) {
    const LaunchResult started = launcher_.StartBatch(Batch(content), parameter, folder_.Path());
    EXPECT_TRUE(started.Succeeded());
    return started;
  }

  TemporaryFolder folder_;
  PosixEngineLauncher launcher_;
};

TEST_F(EngineLauncherTest, ABatchRunsInItsFolderWithItsParameter) {
  const LaunchResult started = Start("pwd > where\necho \"$1\" > parameter\n", "a b;c");
  ASSERT_TRUE(launcher_.WaitForEnd(started.process, milliseconds(10000)));
  EXPECT_FALSE(launcher_.IsRunning(started.process));
  EXPECT_EQ(ReadFile(folder_ / "where", 1000), PathText(folder_.Path()) + "\n");
  EXPECT_EQ(ReadFile(folder_ / "parameter", 1000), "a b;c\n");
}

TEST_F(EngineLauncherTest, WhatCannotStartIsToldByItsCode) {
  EXPECT_EQ(launcher_.StartBatch(folder_ / "none.bat", "", folder_.Path()).code, 2);
  EXPECT_EQ(launcher_.StartBatch(Batch("") / "x.bat", "", folder_.Path()).code, 3);
  EXPECT_EQ(launcher_.StartBatch(Batch(""), "", folder_ / "nowhere").code, 3);
  EXPECT_FALSE(launcher_.IsRunning(0));
  EXPECT_FALSE(launcher_.IsRunning(1)) << "not ours";
}

TEST_F(EngineLauncherTest, AHangingEngineIsEndedWithItsChildren) {
  const LaunchResult started = Start("trap '' TERM\n(trap '' TERM; sleep 60; echo > survived)\n");
  EXPECT_FALSE(launcher_.WaitForEnd(started.process, milliseconds(50)));
  EXPECT_TRUE(launcher_.IsRunning(started.process));
  const auto before = std::chrono::steady_clock::now();
  launcher_.End(started.process);
  EXPECT_FALSE(launcher_.IsRunning(started.process));
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(10));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "survived"));
}

/// Whether the process runs whose number the file holds.
bool Runs(const std::filesystem::path& pid_file) {
  std::string process;
  std::ifstream(pid_file) >> process;
  std::ifstream stat("/proc/" + process + "/stat");
  std::string line;
  std::getline(stat, line);
  const std::size_t name_end = line.rfind(") ");
  return name_end != std::string::npos && line[name_end + 2] != 'Z';
}

TEST_F(EngineLauncherTest, AnEngineThatOutlivesItsShellIsEnded) {
  const char* const deaf = "sh -c 'trap \"\" TERM; echo $$ > pid; mv pid engine; sleep 300'";
  const struct {
    const char* what;
    std::string batch;
    bool shell_ends;
  } cases[] = {
      {"the shell dies of the signal, the engine does not", std::string(deaf) + "\n", false},
      {"the shell has ended before", std::string(deaf) + " &\nexit 0\n", true},
  };
  for (const auto& [what, batch, shell_ends] : cases) {
    SCOPED_TRACE(what);
    const ProcessId process = Start(batch).process;
    while (!std::filesystem::exists(folder_ / "engine")) {
      std::this_thread::sleep_for(milliseconds(5));
    }
    if (shell_ends) {
      ASSERT_TRUE(launcher_.WaitForEnd(process, milliseconds(10000)));
    }
    ASSERT_TRUE(Runs(folder_ / "engine"));
    launcher_.End(process);
    EXPECT_FALSE(Runs(folder_ / "engine"));
    EXPECT_FALSE(launcher_.IsRunning(process));
    std::filesystem::remove(folder_ / "engine");
  }
}

TEST_F(EngineLauncherTest, ManyStartsLeaveNothingOpen) {
  const auto descriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  (void)launcher_.WaitForEnd(Start("exit 0\n").process, milliseconds(10000));
  const auto before = descriptors();
  ProcessId last = 0;
  for (int run = 0; run < 20; ++run) {
    last = Start("exit 0\n").process;
    // Nobody asks after these; the next start has to clear up on its own.
    std::this_thread::sleep_for(milliseconds(5));
  }
  (void)launcher_.WaitForEnd(last, milliseconds(10000));
  (void)launcher_.Output(last);
  EXPECT_LE(descriptors(), before + 4);
}

TEST_F(EngineLauncherTest, WhatAnEngineSaidIsKnownAfterFurtherStarts) {
  const ProcessId first = Start("echo 'no coefficients' >&2\n").process;
  ASSERT_TRUE(launcher_.WaitForEnd(first, milliseconds(10000)));
  for (int others = 0; others < 3; ++others) {
    (void)launcher_.WaitForEnd(Start("echo something else\n").process, milliseconds(10000));
  }
  EXPECT_EQ(launcher_.Output(first), "no coefficients\n");
  EXPECT_FALSE(launcher_.IsRunning(first));
}

TEST_F(EngineLauncherTest, AnEngineThatPrintsALotIsNotHeldUp) {
  const LaunchResult started = Start(
      "i=0; while [ $i -lt 20000 ]; do echo line number $i; i=$((i+1)); done\n"
      "echo the end >&2\n");
  ASSERT_TRUE(launcher_.WaitForEnd(started.process, milliseconds(20000)));
  const std::string output = launcher_.Output(started.process);
  EXPECT_EQ(output.size(), 4096U);
  EXPECT_EQ(output.substr(output.size() - 8), "the end\n");
  EXPECT_EQ(launcher_.Output(started.process + 100000), "");
}

TEST_F(EngineLauncherTest, NothingInAPathIsEverExecuted) {
  const char* names[] = {"plain", "two words",     "it's",  "a\"b",         "$(touch pwned)",
                         "*",     "a;touch pwned", "a&b|c", "back\\slash",  "`touch pwned`",
                         "#x",    "~root",         "-n",    "Z\xC3\xBCrich"};
  for (const char* name : names) {
    const TemporaryFolder odd(name);
    const LaunchResult started = launcher_.StartBatch(
        Batch("cd " + launcher_.BatchText(odd.Path()) + "\npwd -P > here\n"), "", folder_.Path());
    ASSERT_TRUE(launcher_.WaitForEnd(started.process, milliseconds(10000)));
    EXPECT_EQ(ReadFile(odd / "here", 1000),
              PathText(std::filesystem::canonical(odd.Path())) + "\n");
    EXPECT_FALSE(std::filesystem::exists(odd / "pwned"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "pwned"));
  }
  EXPECT_EQ(launcher_.BatchText("/usr/lib/x-1.0_2/a+b,c"), "/usr/lib/x-1.0_2/a+b,c");
  EXPECT_THROW((void)launcher_.BatchText("/a\nb"), Error);
}

}  // namespace
}  // namespace skyhop::testing
