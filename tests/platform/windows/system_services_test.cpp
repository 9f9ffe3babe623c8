#include <gtest/gtest.h>

#include <windows.h>

#include "common/files.h"
#include "platform/placed_files.h"
#include "platform/platform.h"
#include "platform/windows/code_page.h"
#include "platform/windows/system_error.h"
#include "support/error_number.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using namespace std::chrono_literals;

TEST(WindowsClock, ReturnsTheSystemsTimeAndOffset) {
  const auto clock = platform::MakeClock();
  SYSTEMTIME universal{};
  ::GetSystemTime(&universal);
  const UtcTime now = clock->UtcNow();
  const auto since_midnight = now - std::chrono::floor<std::chrono::days>(now);
  const auto expected = std::chrono::hours(universal.wHour) +
                        std::chrono::minutes(universal.wMinute) +
                        std::chrono::seconds(universal.wSecond);
  const auto apart = std::chrono::abs(since_midnight - expected);
  EXPECT_LT(std::min<std::chrono::milliseconds>(apart, 24h - apart), 5s);

  SYSTEMTIME local{};
  ASSERT_TRUE(::SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local));
  const auto offset = clock->LocalOffset(now);
  EXPECT_LE(std::chrono::abs(offset), 26h);
  EXPECT_EQ(
      (offset - ((std::chrono::hours(local.wHour) + std::chrono::minutes(local.wMinute)) -
                 (std::chrono::hours(universal.wHour) + std::chrono::minutes(universal.wMinute)))) %
          24h,
      0s);
}

TEST(WindowsMachineFacts, FillEveryLineOfTheLogsHead) {
  const MachineDescription machine = platform::MakeMachineFacts()->Describe();
  EXPECT_EQ(machine.executable, "test_platform.exe");
  EXPECT_TRUE(machine.module_file.ends_with("\\test_platform.exe")) << machine.module_file;
  EXPECT_EQ(machine.word_length, static_cast<int>(sizeof(void*)) * 8);
  EXPECT_NE(machine.system_name.find("Windows"), std::string::npos) << machine.system_name;
  EXPECT_EQ(machine.system_version.size(), 8U);
  for (const std::string* fact : {&machine.build, &machine.locale_id, &machine.ansi_code_page,
                                  &machine.oem_code_page, &machine.country, &machine.language,
                                  &machine.decimal_separator, &machine.thousand_separator}) {
    EXPECT_FALSE(fact->empty());
  }
  EXPECT_NE(machine.ansi_code_page, "0");
  ASSERT_FALSE(machine.monitors.empty());
  EXPECT_GT(machine.monitors[0].right, machine.monitors[0].left);
}

TEST(WindowsProgramFolder, IsTheExecutablesFolder) {
  const std::filesystem::path folder = platform::ProgramFolder();
  EXPECT_EQ(folder, platform::ExecutablePath().parent_path());
  EXPECT_EQ(platform::DataFile("icons/skyhop.svg"), folder / L"data\\icons\\skyhop.svg");
}

TEST(WindowsTexts, KeepTheirLetters) {
  const std::string text = "Z\xC3\xBCrich \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x93\xBB";
  EXPECT_EQ(platform::Utf8(platform::Wide(text)), text);
  EXPECT_EQ(platform::PathInCodePage(PathFromText("Z\xC3\xBCrich"), 1252), "Z\xFCrich");
  EXPECT_EQ(platform::PathInCodePage(PathFromText("Z\xC3\xBCrich"), 850), "Z\x81rich");
  EXPECT_EQ(platform::PathInCodePage(PathFromText(text), CP_UTF8), text);
}

TEST(WindowsErrors, MapToTheNumbersOfTheLog) {
  const struct {
    DWORD code;
    int number;
  } cases[] = {{ERROR_FILE_NOT_FOUND, 53},    {ERROR_PATH_NOT_FOUND, 76}, {ERROR_ACCESS_DENIED, 70},
               {ERROR_SHARING_VIOLATION, 70}, {ERROR_DISK_FULL, 61},      {ERROR_NOT_READY, 71},
               {ERROR_OUTOFMEMORY, 7},        {ERROR_INVALID_NAME, 75}};
  for (const auto& [code, number] : cases) {
    const Error error = platform::SystemError(code, "cannot do it");
    EXPECT_EQ(error.Number(), number) << code;
    EXPECT_GT(std::string(error.what()).size(), std::string("cannot do it: ").size());
    EXPECT_EQ(std::string(error.what()).find_first_of("\r\n"), std::string::npos);
  }
}

TEST(WindowsFiles, FailWithTheirNumberWhenOpenElsewhere) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder / "results.txt";
  WriteFile(file, "results");
  const HANDLE held =
      ::CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  EXPECT_EQ(ErrorNumber([&] { (void)ReadFile(file, 100); }), 70);
  EXPECT_EQ(ErrorNumber([&] { WriteFile(file, "new"); }), 70);
  EXPECT_EQ(ErrorNumber([&] { WriteFileAtOnce(file, "new"); }), 70);
  ::CloseHandle(held);
  EXPECT_EQ(ReadFile(file, 100), "results") << "nothing was lost";
  EXPECT_EQ(ErrorNumber([&] { (void)ReadFile(folder / "none", 100); }), 53);
  EXPECT_NE(ErrorNumber([&] { WriteFile(folder / std::string(300, 'x'), "long"); }), 0);
}

}  // namespace
}  // namespace skyhop::testing
