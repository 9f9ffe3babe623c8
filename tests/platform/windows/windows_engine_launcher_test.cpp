#include "platform/windows/windows_engine_launcher.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <fstream>

#include "common/errors.h"
#include "common/files.h"
#include "contract/engine_launcher_contract.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using platform::WindowsEngineLauncher;

/// A batch line that runs for a minute.
constexpr const char* kHang = "\"" SKYHOP_IDLE "\" 60000 engine\r\n";

/// Whether the engine of a folder runs. Waits for its process number in the file "engine".
bool EngineRuns(const std::filesystem::path& folder) {
  DWORD id = 0;
  while (id == 0) std::ifstream(folder / "engine") >> id;
  const HANDLE process = ::OpenProcess(SYNCHRONIZE, FALSE, id);
  const bool runs = process != nullptr && ::WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
  if (process != nullptr) ::CloseHandle(process);
  return runs;
}

std::size_t OpenHandles() {
  DWORD count = 0;
  ::GetProcessHandleCount(::GetCurrentProcess(), &count);
  return count;
}

const LauncherBackend kShell = {"shell",
                                [] { return std::make_unique<WindowsEngineLauncher>(); },
                                "cd > where\r\necho %1> parameter\r\n",
                                kHang,
                                std::string("start \"\" /b ") + kHang,
                                EngineRuns,
                                OpenHandles,
                                {"plain", "two words", "it's", "a;b", "a&cd pwned", "50%", "%TEMP%",
                                 "(x)", "a^b", "a=b,c", "!x!", "Z\xC3\xBCrich"}};

using ::testing::PrintToStringParamName;
using ::testing::Values;
INSTANTIATE_TEST_SUITE_P(Backends, EngineLauncherContract, Values(kShell),
                         PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Backends, StartedEngineContract, Values(kShell), PrintToStringParamName());

TEST(WindowsEngineLauncher, LeavesAnEngineRunningUnlessAskedToEndIt) {
  const TemporaryFolder folder;
  const std::filesystem::path batch = folder / "engine.bat";
  for (const bool ends : {false, true}) {
    auto launcher = std::make_unique<WindowsEngineLauncher>();
    // The batch file's process outlives the launcher here, so it runs only two seconds.
    const std::string line = ends ? kHang : "\"" SKYHOP_IDLE "\" 2000\r\n";
    WriteFile(batch, line);
    const LaunchResult started = launcher->StartBatch(batch, "", folder.Path());
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

TEST(WindowsEngineLauncher, WritesPathsInTheCodePagesOfEngines) {
  const WindowsEngineLauncher launcher;
  const std::filesystem::path foreign(L"C:\\\u65E5\u672C");
  EXPECT_THROW((void)launcher.BatchText(foreign), Error);
  EXPECT_THROW((void)launcher.DriverText(foreign), Error);
  EXPECT_EQ(launcher.BatchText("C:\\SKYHOP~1\\ioncap.exe"), "C:\\SKYHOP~1\\ioncap.exe");
  EXPECT_EQ(launcher.BatchText("C:\\a b"), "\"C:\\a b\"");
  const TemporaryFolder blanks("two words & more");
  EXPECT_EQ(WindowsEngineLauncher().ShortPath(blanks.Path()).native().find(L' '),
            std::wstring::npos);
}

}  // namespace
}  // namespace skyhop::testing
