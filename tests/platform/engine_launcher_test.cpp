#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "common/files.h"
#include "contract/engine_launcher_contract.h"
#include "platform/linux/posix_engine_launcher.h"
#include "support/fake_launcher.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using platform::PosixEngineLauncher;
using std::chrono::milliseconds;

/// Whether the engine of a folder runs. Waits for its process number in the file "engine".
bool EngineRuns(const std::filesystem::path& folder) {
  std::string process;
  while (process.empty()) std::ifstream(folder / "engine") >> process;
  std::ifstream stat("/proc/" + process + "/stat");
  std::string line;
  std::getline(stat, line);
  const std::size_t name_end = line.rfind(") ");
  return name_end != std::string::npos && line[name_end + 2] != 'Z';
}

std::size_t OpenDescriptors() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(descriptors, {}));
}

constexpr const char* kEngine = "sh -c 'trap \"\" TERM; echo $$ > pid; mv pid engine; sleep 60'";

const LauncherBackend kPosix = {
    "posix",
    [] { return std::make_unique<PosixEngineLauncher>(); },
    "pwd > where\necho \"$1\" > parameter\n",
    std::string(kEngine) + "\n",
    std::string(kEngine) + " &\nexit 0\n",
    EngineRuns,
    OpenDescriptors,
    {"plain", "two words", "it's", "a\"b", "$(touch pwned)", "*", "a;touch pwned", "a&b|c",
     "back\\slash", "`touch pwned`", "#x", "~root", "-n", "Z\xC3\xBCrich"}};
const LauncherBackend kFake = {.name = "fake",
                               .make = [] { return std::make_unique<FakeLauncher>(); }};

class PosixEngineLauncherTest : public StartedEngineContract {};

using ::testing::PrintToStringParamName;
using ::testing::Values;
INSTANTIATE_TEST_SUITE_P(Backends, EngineLauncherContract, Values(kPosix, kFake),
                         PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Backends, StartedEngineContract, Values(kPosix), PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Backends, PosixEngineLauncherTest, Values(kPosix),
                         PrintToStringParamName());

TEST_P(PosixEngineLauncherTest, KeepsTheOutputWhenOthersStart) {
  const ProcessId first = Start("echo 'no coefficients' >&2\n").process;
  ASSERT_TRUE(launcher_->WaitForEnd(first, milliseconds(10000)));
  for (int others = 0; others < 3; ++others) {
    (void)launcher_->WaitForEnd(Start("echo something else\n").process, milliseconds(10000));
  }
  EXPECT_EQ(launcher_->Output(first), "no coefficients\n");
  EXPECT_FALSE(launcher_->IsRunning(first));
}

TEST_P(PosixEngineLauncherTest, KeepsTheEndOfALongOutput) {
  const LaunchResult started = Start(
      "i=0; while [ $i -lt 20000 ]; do echo line number $i; i=$((i+1)); done\n"
      "echo the end >&2\n");
  ASSERT_TRUE(launcher_->WaitForEnd(started.process, milliseconds(20000)));
  const std::string output = launcher_->Output(started.process);
  EXPECT_EQ(output.size(), 4096U);
  EXPECT_EQ(output.substr(output.size() - 8), "the end\n");
  EXPECT_EQ(launcher_->Output(started.process + 100000), "");
}

TEST_P(PosixEngineLauncherTest, QuotesOnlyWhenNecessary) {
  EXPECT_EQ(launcher_->BatchText("/usr/lib/x-1.0_2/a+b,c"), "/usr/lib/x-1.0_2/a+b,c");
  EXPECT_EQ(launcher_->BatchText("/a b's"), "'/a b'\\''s'");
}

}  // namespace
}  // namespace skyhop::testing
