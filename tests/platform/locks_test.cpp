#include <gtest/gtest.h>

#include <chrono>

#include "common/errors.h"
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

TEST(InstanceGuards, NeverForbidWhatTheyCannotTell) {
  const TemporaryFolder folder;
  EXPECT_FALSE(platform::MakeInstanceGuard(folder / "none")->AnotherIsRunning());
}

}  // namespace
}  // namespace skyhop::testing
