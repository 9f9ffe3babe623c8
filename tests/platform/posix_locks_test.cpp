#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <thread>

#include "common/files.h"
#include "platform/platform.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

TEST(InstanceGuards, AreFreeAfterACrash) {
  const TemporaryFolder folder;
  const auto crash = [&] {
    const auto guard = platform::MakeInstanceGuard(folder.Path());
    // The other guard sees this one, so this one holds the lock at the crash.
    if (!platform::MakeInstanceGuard(folder.Path())->AnotherIsRunning()) return;
    static_cast<void>(std::raise(SIGKILL));
  };
  EXPECT_EXIT(crash(), ::testing::KilledBySignal(SIGKILL), "");
  EXPECT_FALSE(platform::MakeInstanceGuard(folder.Path())->AnotherIsRunning());
}

TEST(InstanceGuards, AreFreeWhileALeftEngineRuns) {
  const TemporaryFolder folder;
  WriteFile(folder / "engine.bat", "echo > started\nsleep 60\n");
  const auto launcher = platform::MakeEngineLauncher();
  auto guard = platform::MakeInstanceGuard(folder.Path());
  const LaunchResult engine = launcher->StartBatch(folder / "engine.bat", "", folder.Path());
  ASSERT_TRUE(engine.Succeeded());
  // The parent continues shortly before the system closes the new program's descriptors.
  while (!std::filesystem::exists(folder / "started")) std::this_thread::yield();
  guard.reset();
  EXPECT_FALSE(platform::MakeInstanceGuard(folder.Path())->AnotherIsRunning());
  EXPECT_TRUE(launcher->IsRunning(engine.process));
  launcher->End(engine.process);
}

}  // namespace
}  // namespace skyhop::testing
