#include "platform/windows/windows_engine_launcher.h"

#include <gtest/gtest.h>

#include <windows.h>
// After the header above, which it needs.
#include <tlhelp32.h>

#include <set>
#include <thread>

#include "common/errors.h"
#include "common/files.h"
#include "platform/platform.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using platform::WindowsEngineLauncher;
using std::chrono::milliseconds;

class WindowsEngineLauncherTest : public ::testing::Test {
 protected:
  std::filesystem::path Batch(const std::string& content) {
    std::filesystem::path batch = folder_ / "engine.bat";
    WriteFile(batch, content);
    return batch;
  }

  LaunchResult Start(const std::string& content, const std::string& parameter = {}) {
    const LaunchResult started = launcher_.StartBatch(Batch(content), parameter, folder_.Path());
    EXPECT_TRUE(started.Succeeded()) << started.code;
    EXPECT_NE(started.process, 0);
    return started;
  }

  /// A batch line that keeps busy for a minute and then leaves the file "survived".
  std::string Idle() { return "\"" SKYHOP_IDLE "\" 60000 survived\r\n"; }

  static DWORD HandleCount() {
    DWORD count = 0;
    ::GetProcessHandleCount(::GetCurrentProcess(), &count);
    return count;
  }

  TemporaryFolder folder_{"engine folder"};
  WindowsEngineLauncher launcher_;
};

TEST_F(WindowsEngineLauncherTest, ABatchRunsInItsFolderWithItsParameter) {
  const LaunchResult started = Start("cd > where\r\necho %1> parameter\r\n", "a b");
  ASSERT_TRUE(launcher_.WaitForEnd(started.process, milliseconds(30000)));
  EXPECT_FALSE(launcher_.IsRunning(started.process));
  const std::string where = ReadFile(folder_ / "where", 1000);
  EXPECT_TRUE(where.ends_with("\\engine folder\r\n")) << where;
  EXPECT_EQ(ReadFile(folder_ / "parameter", 1000), "\"a b\"\r\n");
}

TEST_F(WindowsEngineLauncherTest, WhatCannotStartIsToldByItsCode) {
  EXPECT_EQ(launcher_.StartBatch(folder_ / "none.bat", "", folder_.Path()).code, 2);
  EXPECT_EQ(launcher_.StartBatch(Batch(""), "", folder_ / "nowhere").code, 3);
  EXPECT_FALSE(launcher_.IsRunning(0));
  EXPECT_FALSE(launcher_.IsRunning(static_cast<ProcessId>(::GetCurrentProcessId()))) << "not ours";
  EXPECT_EQ(launcher_.Output(1), "");
}

TEST_F(WindowsEngineLauncherTest, AHangingEngineIsEndedWithItsChildren) {
  const LaunchResult started = Start(Idle() + "echo > survived\r\n");
  EXPECT_FALSE(launcher_.WaitForEnd(started.process, milliseconds(500)));
  EXPECT_TRUE(launcher_.IsRunning(started.process));
  const auto before = std::chrono::steady_clock::now();
  launcher_.End(started.process);
  EXPECT_FALSE(launcher_.IsRunning(started.process));
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(30));
  // While the engine runs nobody can take its working folder away.
  std::error_code error;
  std::filesystem::rename(folder_.Path(), folder_.Path().parent_path() / "moved", error);
  EXPECT_FALSE(error) << error.message();
  std::filesystem::rename(folder_.Path().parent_path() / "moved", folder_.Path(), error);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "survived"));
}

TEST_F(WindowsEngineLauncherTest, AnEngineOutlivesItsLauncherUnlessItIsToldOtherwise) {
  for (const bool ends : {false, true}) {
    auto launcher = std::make_unique<WindowsEngineLauncher>();
    // What the batch file runs outlives it here; it should not do so for long.
    const std::string line = ends ? Idle() : "\"" SKYHOP_IDLE "\" 2000\r\n";
    const LaunchResult started = launcher->StartBatch(Batch(line), "", folder_.Path());
    ASSERT_TRUE(started.Succeeded());
    const HANDLE process =
        ::OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, static_cast<DWORD>(started.process));
    ASSERT_NE(process, nullptr);
    if (ends) launcher->EndWithThisProgram(started.process);
    launcher.reset();
    EXPECT_EQ(::WaitForSingleObject(process, ends ? 10000 : 300),
              ends ? WAIT_OBJECT_0 : WAIT_TIMEOUT);
    ::TerminateProcess(process, 1);
    ::CloseHandle(process);
  }
}

/// The processes of the idle program. Earlier tests may have left some.
std::set<DWORD> IdleProcesses() {
  const std::wstring name = std::filesystem::path(SKYHOP_IDLE).filename().wstring();
  const HANDLE processes = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof(entry);
  std::set<DWORD> found;
  for (BOOL more = ::Process32FirstW(processes, &entry); more != FALSE;
       more = ::Process32NextW(processes, &entry)) {
    if (::lstrcmpiW(entry.szExeFile, name.c_str()) == 0) found.insert(entry.th32ProcessID);
  }
  ::CloseHandle(processes);
  return found;
}

TEST_F(WindowsEngineLauncherTest, AnEngineThatOutlivesItsShellIsEnded) {
  const std::set<DWORD> before = IdleProcesses();
  const LaunchResult started = Start("start \"\" /b \"" SKYHOP_IDLE "\" 60000\r\n");
  ASSERT_TRUE(launcher_.WaitForEnd(started.process, milliseconds(30000)));
  // The next start forgets only what has ended as a whole.
  (void)launcher_.WaitForEnd(Start("exit\r\n").process, milliseconds(30000));
  DWORD engine = 0;
  for (const DWORD process : IdleProcesses()) {
    if (!before.contains(process)) engine = process;
  }
  ASSERT_NE(engine, 0U);
  launcher_.End(started.process);
  EXPECT_FALSE(IdleProcesses().contains(engine));
}

TEST_F(WindowsEngineLauncherTest, ManyStartsLeaveNothingOpen) {
  (void)launcher_.WaitForEnd(Start("exit\r\n").process, milliseconds(30000));
  const DWORD before = HandleCount();
  for (int run = 0; run < 8; ++run) {
    (void)launcher_.WaitForEnd(Start("exit\r\n").process, milliseconds(30000));
  }
  EXPECT_LE(HandleCount(), before + 8);
}

TEST_F(WindowsEngineLauncherTest, ShortPathsLeadToTheSamePlace) {
  const TemporaryFolder odd("two words & more");
  const std::filesystem::path path = launcher_.ShortPath(odd.Path());
  EXPECT_EQ(path.native().find(L' '), std::wstring::npos) << path;
  WriteFile(odd / "file", "here");
  EXPECT_EQ(ReadFile(path / "file", 10), "here");
  EXPECT_EQ(launcher_.ShortPath(odd / "none"), odd / "none")
      << "what there is not has no short form";
}

TEST_F(WindowsEngineLauncherTest, NothingInAPathIsEverExecuted) {
  for (const char* name : {"plain", "two words", "it's", "a;b", "a&cd pwned", "50%", "%TEMP%",
                           "(x)", "a^b", "a=b,c", "!x!", "Z\xC3\xBCrich"}) {
    const TemporaryFolder odd(name);
    const LaunchResult started = launcher_.StartBatch(
        Batch("cd " + launcher_.BatchText(odd.Path()) + "\r\necho here> here\r\n"), "",
        folder_.Path());
    ASSERT_TRUE(launcher_.WaitForEnd(started.process, milliseconds(30000)));
    EXPECT_TRUE(std::filesystem::exists(odd / "here")) << name;
  }
  EXPECT_EQ(launcher_.BatchText("C:\\SKYHOP~1\\ioncap.exe"), "C:\\SKYHOP~1\\ioncap.exe");
  EXPECT_EQ(launcher_.BatchText("C:\\a b"), "\"C:\\a b\"");
}

TEST_F(WindowsEngineLauncherTest, PathsThatAnEngineCannotBeToldAreRefused) {
  for (const std::filesystem::path& path :
       {std::filesystem::path(L"C:\\a\nb"), std::filesystem::path(L"C:\\\u65E5\u672C")}) {
    EXPECT_THROW((void)launcher_.BatchText(path), Error);
    EXPECT_THROW((void)launcher_.DriverText(path), Error);
  }
  EXPECT_EQ(launcher_.DriverText("C:\\a b"), "C:\\a b");
}

}  // namespace
}  // namespace skyhop::testing
