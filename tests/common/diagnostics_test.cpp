#include "common/diagnostics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "common/files.h"
#include "common/program.h"
#include "common/text.h"
#include "support/diagnostics_fixture.h"
#include "support/fakes.h"
#include "support/temporary_folder.h"

namespace skyhop {
namespace {

constexpr bool kLineEndIsTwoBytes = std::filesystem::path::preferred_separator == '\\';

using testing::LoggedDiagnostics;
using Lines = std::vector<std::string>;

// The fake clock shows this time; the user's zone is an hour ahead.
const std::string kLine = "2026-11-15 13:05:09.042 > ";
const std::string kHeaderLine = "2026-11-15 14:05:09     > ";

class DiagnosticsTest : public ::testing::Test {
 protected:
  /// The same log, opened by a new run of the program.
  std::unique_ptr<Diagnostics> NewRun() {
    return std::make_unique<Diagnostics>(folder_.Path(), clock_, facts_);
  }
  [[nodiscard]] std::filesystem::path LogPath() const { return folder_ / "ErrorLog.txt"; }
  [[nodiscard]] std::string Log() const {
    // Its lines end as the system's do.
    return ReplaceAll(ReadFile(LogPath(), 1U << 20U), "\r\n", "\n");
  }

  /// The log from its first message line on.
  [[nodiscard]] std::string Messages() const {
    const std::string log = Log();
    return log.substr(std::min(log.size(), log.find(kLine)));
  }

  testing::TemporaryFolder folder_;
  testing::FakeClock clock_;
  testing::FakeMachineFacts facts_;
  std::unique_ptr<Diagnostics> diagnostics_ = NewRun();
};

TEST_F(DiagnosticsTest, DescribesTheMachineBeforeTheFirstLineOfEachRun) {
  facts_.description = {.executable = "skyhop.exe",
                        .module_file = "C:\\Skyhop\\skyhop.exe",
                        .word_length = 32,
                        .build = "g++ 12 release",
                        .system_name = "Windows 10",
                        .system_version = "a0000",
                        .locale_id = "1036",
                        .ansi_code_page = "1252",
                        .oem_code_page = "850",
                        .country = "Fran\nce",
                        .language = "French",
                        .decimal_separator = ",",
                        .thousand_separator = ".",
                        .monitors = {{0, 0, 1920, 1080}, {-1280, 24, 0, 1048}}};
  diagnostics_->SetPeerCaption([] { return "Tessera, Gleaner"; });
  diagnostics_->ErrorLog("first");
  diagnostics_->ErrorLog("second");

  std::string header;
  for (const std::string& line : Lines{std::string(kProductName) + " version " + VersionText(),
                                       "App.Path          : " + PathText(folder_.Path()),
                                       "App.exe           : skyhop.exe",
                                       "Module            : C:\\Skyhop\\skyhop.exe (32-bit) build "
                                       "g++ 12 release",
                                       "Operating System  : Windows 10 (0xa0000)",
                                       "Locale ID         : 1036",
                                       "ANSI CodePage     : 1252",
                                       "OEM CodePage      : 850",
                                       "Country           : Fran ce",
                                       "Language          : French",
                                       "DecimalSeparator  : ,",
                                       "ThousandSeparator : .",
                                       "Marlo Apps        : Tessera, Gleaner",
                                       "Monitors          : 2",
                                       "Monitor 1",
                                       "   width          : 1920",
                                       "   height         : 1080",
                                       "   dimensions     : (0, 0)-(1920, 1080)",
                                       "Monitor 2",
                                       "   width          : 1280",
                                       "   height         : 1024",
                                       "   dimensions     : (-1280, 24)-(0, 1048)"}) {
    header.append(kHeaderLine).append(line).append("\n");
  }
  const std::string first_run = header + kLine + "first\n" + kLine + "second\n";
  EXPECT_EQ(Log(), first_run);

  auto second_run = NewRun();
  EXPECT_EQ(Log(), first_run);
  second_run->SetPeerCaption([] { return "Tessera, Gleaner"; });
  second_run->ErrorLog("third");
  EXPECT_EQ(Log(), first_run + header + kLine + "third\n");
}

TEST_F(DiagnosticsTest, PutsLinesOfThePeerCaptionAfterTheHeader) {
  diagnostics_->SetDebug(true);
  diagnostics_->SetPeerCaption([this] {
    diagnostics_->DebugLog("asking the peers");
    return "none";
  });
  diagnostics_->DebugLog("first");
  EXPECT_EQ(Messages(), kLine + "asking the peers\n" + kLine + "first\n");
  EXPECT_TRUE(Log().starts_with(kHeaderLine));
}

TEST_F(DiagnosticsTest, LosesOneLineWhenTheHeaderFails) {
  bool fails = true;
  diagnostics_->SetPeerCaption([&]() -> std::string {
    if (fails) throw std::runtime_error("no peers");
    return "none";
  });
  diagnostics_->ErrorLog("lost");
  fails = false;
  diagnostics_->ErrorLog("kept");
  EXPECT_EQ(Messages(), kLine + "kept\n");
}

TEST_F(DiagnosticsTest, WritesDebugLinesWhenSwitchedOn) {
  diagnostics_->DebugLog("not yet");
  EXPECT_FALSE(std::filesystem::exists(LogPath()));
  diagnostics_->SetDebug(true);
  diagnostics_->DebugLog("   parameters not ok");
  diagnostics_->SetDebug(false);
  diagnostics_->DebugLog("no longer");
  EXPECT_EQ(Messages(), kLine + "   parameters not ok\n");
}

TEST_F(DiagnosticsTest, WritesOneLineWhenTheTextHasLineBreaks) {
  diagnostics_->ErrorLog("from a peer: a\r\nb\tc\x1B \xC3\xA9");
  EXPECT_EQ(Messages(), kLine + "from a peer: a  b\tc  \xC3\xA9\n");
}

TEST_F(DiagnosticsTest, StopsDebugLinesButNotErrorsAtTheLimit) {
  diagnostics_->SetDebug(true);
  diagnostics_->DebugLog("first");
  std::filesystem::resize_file(LogPath(), Diagnostics::kDebugLimit);
  diagnostics_->DebugLog("at the limit");
  EXPECT_TRUE(diagnostics_->GetDebug());
  const auto full = std::filesystem::file_size(LogPath());
  EXPECT_GT(full, Diagnostics::kDebugLimit);

  diagnostics_->DebugLog("over the limit");
  EXPECT_FALSE(diagnostics_->GetDebug());
  EXPECT_EQ(std::filesystem::file_size(LogPath()), full);
  diagnostics_->SetDebug(true);
  diagnostics_->ErrorLog("error");
  EXPECT_EQ(std::filesystem::file_size(LogPath()),
            full + kLine.size() + 6 + (kLineEndIsTwoBytes ? 1 : 0));
  EXPECT_FALSE(diagnostics_->GetDebug());
}

TEST_F(DiagnosticsTest, CountsErrorLinesThatRepeat) {
  for (int i = 0; i < 1000; ++i) {
    diagnostics_->ErrorLog("from a peer");
    diagnostics_->ErrorLog("from another");
  }
  std::string expected = kLine + "from a peer\n" + kLine + "from another\n";
  EXPECT_EQ(Messages(), expected);
  diagnostics_->ErrorLog("new");
  diagnostics_->ErrorLog("new");
  expected += kLine + "repeated 999 times: from a peer\n" + kLine +
              "repeated 999 times: from another\n" + kLine + "new\n";
  EXPECT_EQ(Messages(), expected);
  diagnostics_.reset();
  expected += kLine + "repeated 1 time: new\n";
  EXPECT_EQ(Messages(), expected) << "the end of the run";
}

TEST_F(DiagnosticsTest, WritesEveryErrorLineThatDiffers) {
  std::string expected;
  for (int round = 0; round < 2; ++round) {
    for (std::size_t i = 0; i <= Diagnostics::kRecentErrors; ++i) {
      diagnostics_->ErrorLog(std::to_string(i));
      expected += kLine + std::to_string(i) + "\n";
    }
  }
  EXPECT_EQ(Messages(), expected) << "of a line that was long ago, the time matters";
  for (int i = 0; i <= Diagnostics::kLongestCount; ++i) diagnostics_->ErrorLog("flood");
  EXPECT_EQ(Messages(), expected + kLine + "flood\n" + kLine + "repeated 10000 times: flood\n");
}

TEST_F(DiagnosticsTest, RenamesAFullLogAtTheStart) {
  const std::filesystem::path old = folder_ / "ErrorLog.old.txt";
  diagnostics_->ErrorLog("first");
  std::filesystem::resize_file(LogPath(), Diagnostics::kDebugLimit);
  NewRun()->SetFullLogAside();
  EXPECT_FALSE(std::filesystem::exists(old)) << "not full yet";
  std::filesystem::resize_file(LogPath(), Diagnostics::kDebugLimit + 1);
  WriteFile(old, "of an earlier time");
  const auto next = NewRun();
  next->SetFullLogAside();
  EXPECT_EQ(next->CaptionHint(), "");
  EXPECT_EQ(std::filesystem::file_size(old), Diagnostics::kDebugLimit + 1);
  next->SetDebug(true);
  next->DebugLog("a new log");
  EXPECT_EQ(Messages(), kLine + "a new log\n");
}

TEST_F(DiagnosticsTest, ShowsTheCaptionHintWhenTheLogExists) {
  EXPECT_EQ(diagnostics_->CaptionHint(), "");
  diagnostics_->ErrorLog("something");
  EXPECT_EQ(diagnostics_->CaptionHint(), " - see error log in " + PathText(LogPath()));
}

TEST_F(DiagnosticsTest, DropsLinesWhenTheLogCannotBeWritten) {
  std::filesystem::create_directory(LogPath());
  diagnostics_->SetDebug(true);
  diagnostics_->DebugLog("lost");
  diagnostics_->ErrorLog("lost as well");
  EXPECT_EQ(diagnostics_->Trap("Module.Procedure", 3, []() -> int { throw Error(5, "lost"); }), 3);
  std::filesystem::remove(LogPath());
  diagnostics_->ErrorLog("kept");
  EXPECT_TRUE(Log().starts_with(kHeaderLine));
  EXPECT_EQ(Messages(), kLine + "kept\n");
}

TEST(Trap, ReportsAnyExceptionAndReturnsTheFallback) {
  const struct {
    void (*body)();
    const char* line;
  } cases[] = {
      {[] { throw Error(53, "File not found: Bands.txt"); },
       "53 in module M.P: File not found: Bands.txt"},
      {[] { throw std::bad_alloc(); }, "7 in module M.P: Out of memory"},
      {[] { throw std::out_of_range("index"); }, "9 in module M.P: index"},
      {[] { throw std::logic_error("logic"); }, "5 in module M.P: logic"},
      {[] { throw 1; }, "5 in module M.P: Unknown exception"},
  };
  LoggedDiagnostics log;
  for (const auto& c : cases) {
    EXPECT_FALSE(log.diagnostics.Trap("M.P", c.body));
    EXPECT_EQ(log.errors.back(), std::string("program error ") + c.line);
    EXPECT_EQ(log.diagnostics.Trap("M.P", std::string("fallback"),
                                   [&] {
                                     c.body();
                                     return std::string("result");
                                   }),
              "fallback");
  }
  EXPECT_EQ(log.errors.size(), 2 * std::size(cases));
  EXPECT_FALSE(log.diagnostics.Trap("M.P", [] {
    throw std::filesystem::filesystem_error("copy",
                                            std::make_error_code(std::errc::no_space_on_device));
  }));
  EXPECT_TRUE(log.errors.back().starts_with("program error 61 in module M.P: "));
}

TEST(Trap, ReturnsTheResultWhenNothingIsThrown) {
  LoggedDiagnostics log;
  EXPECT_EQ(log.diagnostics.Trap("M.P", 1, [] { return 2; }), 2);
  EXPECT_TRUE(log.diagnostics.Trap("M.P", [] {}));
  EXPECT_TRUE(log.errors.empty());
}

}  // namespace
}  // namespace skyhop
