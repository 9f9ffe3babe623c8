#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

#include "common/errors.h"
#include "common/files.h"
#include "platform/platform.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using std::chrono::milliseconds;

TEST(RunLocks, AreHeldByOneRunAtATime) {
  const TemporaryFolder folder;
  auto first = platform::LockRuns(folder.Path(), milliseconds(0));
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(platform::LockRuns(folder.Path(), milliseconds(20)), nullptr);
  const auto locker = platform::MakeRunLocker(folder.Path());
  EXPECT_EQ(locker->Lock(), nullptr);
  first.reset();
  auto second = locker->Lock();
  EXPECT_NE(second, nullptr);
  EXPECT_EQ(platform::LockRuns(folder.Path(), milliseconds(0)), nullptr);
  second.reset();
  EXPECT_NE(platform::LockRuns(folder.Path(), milliseconds(0)), nullptr);
  EXPECT_THROW(static_cast<void>(platform::MakeRunLocker(folder / "none")->Lock()), Error);
}

TEST(InstanceGuards, LetTheFirstInstanceRunOnly) {
  const TemporaryFolder folder;
  auto first = platform::MakeInstanceGuard(folder.Path());
  EXPECT_FALSE(first->AnotherIsRunning());
  const auto second = platform::MakeInstanceGuard(folder.Path());
  EXPECT_TRUE(second->AnotherIsRunning());
  EXPECT_FALSE(first->AnotherIsRunning()) << "the second one is not to run";
  EXPECT_FALSE(platform::MakeInstanceGuard(folder.Path() / "..")->AnotherIsRunning())
      << "another folder";
  const auto run = platform::MakeRunLocker(folder.Path())->Lock();
  EXPECT_NE(run, nullptr) << "the guard is no run lock";
  first.reset();
  EXPECT_FALSE(second->AnotherIsRunning());
}

TEST(InstanceGuards, AreFreeAfterACrash) {
  const TemporaryFolder folder;
  const auto crash = [&] {
    const auto guard = platform::MakeInstanceGuard(folder.Path());
    // The other guard sees this one, so it is held at the moment of the crash.
    if (!platform::MakeInstanceGuard(folder.Path())->AnotherIsRunning()) return;
    static_cast<void>(std::raise(SIGKILL));
  };
  EXPECT_EXIT(crash(), ::testing::KilledBySignal(SIGKILL), "");
  EXPECT_FALSE(platform::MakeInstanceGuard(folder.Path())->AnotherIsRunning());
}

TEST(InstanceGuards, AreNotHeldByAnEngineThatTheProgramLeftBehind) {
  const TemporaryFolder folder;
  WriteFile(folder / "engine.bat", "sleep 60\n");
  const auto launcher = platform::MakeEngineLauncher();
  auto guard = platform::MakeInstanceGuard(folder.Path());
  const LaunchResult engine = launcher->StartBatch(folder / "engine.bat", "", folder.Path());
  ASSERT_TRUE(engine.Succeeded());
  guard.reset();
  EXPECT_FALSE(platform::MakeInstanceGuard(folder.Path())->AnotherIsRunning());
  EXPECT_TRUE(launcher->IsRunning(engine.process));
  launcher->End(engine.process);
}

TEST(InstanceGuards, NeverForbidWhatTheyCannotTell) {
  const TemporaryFolder folder;
  EXPECT_FALSE(platform::MakeInstanceGuard(folder / "none")->AnotherIsRunning());
}

}  // namespace
}  // namespace skyhop::testing
