#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "common/errors.h"
#include "common/files.h"
#include "common/text.h"
#include "engine/engine_launcher.h"
#include "support/error_number.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {

/// A launcher and, if it starts processes, batch files for its command processor.
struct LauncherBackend {
  const char* name;
  std::function<std::unique_ptr<EngineLauncher>()> make;
  /// A batch file that writes its folder into the file "where" and its parameter into "parameter".
  std::string report = {};
  /// A batch file that runs for a minute, ignores requests to end, and writes its process number
  /// into the file "engine".
  std::string hang = {};
  /// A batch file that starts such an engine and ends at once.
  std::string leave_engine = {};
  /// Returns whether the engine of a folder still runs. Waits for its process number.
  std::function<bool(const std::filesystem::path& folder)> engine_runs = {};
  /// Returns how many descriptors or handles this process has open.
  std::function<std::size_t()> open_handles = {};
  /// Names of folders that a command processor could misread.
  std::vector<const char*> odd_names = {};

  friend void PrintTo(const LauncherBackend& backend, std::ostream* out) { *out << backend.name; }
};

/// Tests for every launcher, even one that starts nothing.
class EngineLauncherContract : public ::testing::TestWithParam<LauncherBackend> {};

TEST_P(EngineLauncherContract, TreatsAnUnknownProcessAsEnded) {
  const std::unique_ptr<EngineLauncher> launcher = GetParam().make();
  for (const ProcessId process : {0L, 1L, 987654L}) {
    EXPECT_FALSE(launcher->IsRunning(process));
    EXPECT_TRUE(launcher->WaitForEnd(process, std::chrono::minutes(1)));
    EXPECT_EQ(launcher->Output(process), "");
    launcher->End(process);
  }
}

/// Tests for every launcher that starts processes.
class StartedEngineContract : public ::testing::TestWithParam<LauncherBackend> {
 protected:
  static constexpr std::chrono::seconds kLongest{30};

  LaunchResult Start(const std::string& content, const std::string& parameter = {}) {
    WriteFile(batch_, content);
    const LaunchResult started = launcher_->StartBatch(batch_, parameter, folder_.Path());
    EXPECT_TRUE(started.Succeeded()) << started.code;
    EXPECT_NE(started.process, 0);
    return started;
  }
  void Run(const std::string& content, const std::string& parameter = {}) {
    ASSERT_TRUE(launcher_->WaitForEnd(Start(content, parameter).process, kLongest));
  }
  std::string FirstLine(const char* file) {
    const std::string content = ReadFile(folder_ / file, 1000);
    std::string_view rest = content;
    return std::string(Trim(TakeLine(rest)));
  }

  TemporaryFolder folder_{"engine folder"};
  std::filesystem::path batch_ = folder_ / "engine.bat";
  std::unique_ptr<EngineLauncher> launcher_ = GetParam().make();
};

TEST_P(StartedEngineContract, RunsABatchFileInItsFolderWithItsParameter) {
  Run(GetParam().report, "a b");
  EXPECT_TRUE(std::filesystem::equivalent(PathFromText(FirstLine("where")), folder_.Path()));
  EXPECT_EQ(ReplaceAll(FirstLine("parameter"), "\"", ""), "a b");
}

TEST_P(StartedEngineContract, ReturnsTheReasonWhenAStartFails) {
  WriteFile(batch_, "");
  EXPECT_EQ(launcher_->StartBatch(folder_ / "none.bat", "", folder_.Path()).code, 2);
  EXPECT_EQ(launcher_->StartBatch(batch_, "", folder_ / "nowhere").code, 3);
}

TEST_P(StartedEngineContract, EndsAHangingEngineWithItsChildren) {
  const ProcessId process = Start(GetParam().hang).process;
  ASSERT_TRUE(GetParam().engine_runs(folder_.Path()));
  EXPECT_FALSE(launcher_->WaitForEnd(process, std::chrono::milliseconds(50)));
  EXPECT_TRUE(launcher_->IsRunning(process));
  const auto before = std::chrono::steady_clock::now();
  launcher_->End(process);
  EXPECT_FALSE(launcher_->IsRunning(process));
  EXPECT_LT(std::chrono::steady_clock::now() - before, kLongest);
  EXPECT_FALSE(GetParam().engine_runs(folder_.Path()));
}

TEST_P(StartedEngineContract, EndsAnEngineThatOutlivesItsShell) {
  const ProcessId process = Start(GetParam().leave_engine).process;
  ASSERT_TRUE(launcher_->WaitForEnd(process, kLongest));
  // The next start forgets only processes that have ended with their whole group.
  Run("exit" + launcher_->LineEnd());
  ASSERT_TRUE(GetParam().engine_runs(folder_.Path()));
  launcher_->End(process);
  EXPECT_FALSE(GetParam().engine_runs(folder_.Path()));
}

TEST_P(StartedEngineContract, ClosesHandlesAfterManyStarts) {
  const std::string end = "exit" + launcher_->LineEnd();
  Run(end);
  const std::size_t before = GetParam().open_handles();
  // The test does not ask for these processes, so the next starts must release them.
  for (int run = 0; run < 12; ++run) (void)Start(end);
  const auto until = std::chrono::steady_clock::now() + kLongest;
  while (GetParam().open_handles() > before + 8 && std::chrono::steady_clock::now() < until) {
    Run(end);
  }
  EXPECT_LE(GetParam().open_handles(), before + 8);
}

TEST_P(StartedEngineContract, ExecutesNoPartOfAPath) {
  for (const char* name : GetParam().odd_names) {
    const TemporaryFolder odd(name);
    Run("cd " + launcher_->BatchText(odd.Path()) + launcher_->LineEnd() + "echo here> here" +
        launcher_->LineEnd());
    EXPECT_TRUE(std::filesystem::exists(odd / "here")) << name;
    EXPECT_FALSE(std::filesystem::exists(odd / "pwned")) << name;
    EXPECT_FALSE(std::filesystem::exists(folder_ / "pwned")) << name;
  }
}

TEST_P(StartedEngineContract, RefusesPathsWithLineBreaksAndKeepsTheirTarget) {
  const std::filesystem::path broken = folder_ / "a\nb";
  EXPECT_EQ(ErrorNumber([&] { (void)launcher_->BatchText(broken); }), errors::kInvalidCall);
  EXPECT_EQ(ErrorNumber([&] { (void)launcher_->DriverText(broken); }), errors::kInvalidCall);
  EXPECT_EQ(launcher_->DriverText(batch_), PathText(batch_));
  WriteFile(batch_, "");
  EXPECT_TRUE(std::filesystem::equivalent(launcher_->ShortPath(batch_), batch_));
  EXPECT_EQ(launcher_->ShortPath(folder_ / "none"), folder_ / "none") << "has no short form";
}

}  // namespace skyhop::testing
