#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "common/errors.h"
#include "platform/platform.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using std::chrono::milliseconds;

TEST(RunLocks, AllowOneRunAtATime) {
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

TEST(InstanceGuards, AllowOnlyTheFirstInstance) {
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

TEST(InstanceGuards, AskTheFirstInstanceForItsWindow) {
  const TemporaryFolder folder;
  const auto first = platform::MakeInstanceGuard(folder.Path());
  ASSERT_FALSE(first->AnotherIsRunning());
  int shown = 0;
  first->AnswerShow([&] { ++shown; });
  EXPECT_EQ(shown, 0) << "nobody has asked";
  for (int start = 1; start <= 2; ++start) {
    std::atomic<bool> answered = false;
    std::thread second([&] {
      platform::MakeInstanceGuard(folder.Path())->ShowOther();
      answered = true;
    });
    while (!answered) {
      first->AnswerShow([&] { ++shown; });
      std::this_thread::sleep_for(milliseconds(1));
    }
    second.join();
    EXPECT_EQ(shown, start);
  }
}

TEST(InstanceGuards, AllowAStartWhenTheFolderIsMissing) {
  const TemporaryFolder folder;
  const auto guard = platform::MakeInstanceGuard(folder / "none");
  EXPECT_FALSE(guard->AnotherIsRunning());
  guard->ShowOther();
  guard->AnswerShow([] { FAIL(); });
}

}  // namespace
}  // namespace skyhop::testing
