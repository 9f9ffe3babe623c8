#include <gtest/gtest.h>

#include <windows.h>

#include "common/files.h"
#include "common/text.h"
#include "support/program_run.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

constexpr std::size_t kMost = 1 << 20;

/// The programs, installed in a separate folder.
class PredictWindowsTest : public ::testing::Test {
 protected:
  PredictWindowsTest() {
    const std::filesystem::path built = PathFromText(SKYHOP_PREDICT).parent_path();
    for (const char* name : {"skyhop-predict.exe", "skyhop-estimate.exe"}) {
      std::filesystem::copy_file(built / name, folder_ / name);
    }
    std::filesystem::copy(built / "data", folder_ / "data",
                          std::filesystem::copy_options::recursive);
  }

  ProgramResult Run(std::vector<std::string> more) {
    std::vector<std::string> arguments = {"--from",    "FN20",  "--to", "IO91wm",   "--date",
                                          "15-Nov-26", "--sfi", "150",  "--engine", "ioncap"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunProgram(folder_ / "skyhop-predict.exe", arguments, {});
  }

  std::string Content(const char* name) { return ReadFile(folder_ / name, kMost); }

  static std::string ShortPath(const std::filesystem::path& path) {
    wchar_t name[MAX_PATH] = {};
    ::GetShortPathNameW(path.c_str(), name, MAX_PATH);
    return PathText(name);
  }

  TemporaryFolder folder_{
      "Pr\xC3\xBC"
      "fung two words"};
};

TEST_F(PredictWindowsTest, AWholePredictionGoesThroughBatchDriverAndEngine) {
  const std::string svg = PathText(folder_ / "chart \xC3\xA9.svg");
  const ProgramResult result = Run({"--svg", svg});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err.find("skyhop-predict: the built-in estimate engine is used. "), 0U);
  EXPECT_NE(result.out.find("Engine: SKYHOP ESTIMATE ENGINE, version "), std::string::npos);
  EXPECT_NE(result.out.find("\n 23 "), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("Chart: " + svg), std::string::npos) << result.out;
  EXPECT_TRUE(ReadFile(PathFromText(svg), kMost).ends_with("</svg>\n"));

  const std::string folder = ShortPath(folder_ / "IonCap");
  EXPECT_EQ(folder.find(' '), std::string::npos) << folder;
  EXPECT_EQ(Content("IonCap/ioncap.bat"), "cd " + folder + "\r\n" + folder + "\\ioncap.exe < " +
                                              folder + "\\iondrive.txt\r\necho off\r\ncls\r\n");
  EXPECT_EQ(Content("IonCap/iondrive.txt"),
            folder + "\\script.txt\r\n" + folder + "\\results.txt\r\n");
  const std::string script = Content("IonCap/script.txt");
  EXPECT_TRUE(script.starts_with("CIRCUIT   0")) << script;
  EXPECT_TRUE(script.ends_with("\r\nQUIT      \r\n")) << script;
  EXPECT_EQ(ReplaceAll(script, "\r\n", "").find_first_of("\r\n"), std::string::npos);
  EXPECT_NE(Content("IonCap/results.txt").find("END OF RUN"), std::string::npos);
}

TEST_F(PredictWindowsTest, TheUsersOwnEngineIsUsed) {
  std::filesystem::create_directory(folder_ / "IonCap");
  WriteFile(folder_ / "IonCap/ioncap.exe", "no program");
  const ProgramResult result = Run({"--timeout", "20"});
  EXPECT_EQ(result.status, 3) << result.out;
  EXPECT_EQ(Content("IonCap/ioncap.exe"), "no program");
  EXPECT_NE(result.err.find("ended without writing"), std::string::npos) << result.err;
}

TEST_F(PredictWindowsTest, AResultsFileThatIsHeldOpenIsTold) {
  std::filesystem::create_directory(folder_ / "IonCap");
  const std::filesystem::path results = folder_ / "IonCap/results.txt";
  WriteFile(results, "old");
  const HANDLE held =
      ::CreateFileW(results.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  const ProgramResult result = Run({"--timeout", "20"});
  ::CloseHandle(held);
  EXPECT_EQ(result.status, 3);
  EXPECT_NE(result.err.find("results.txt"), std::string::npos) << result.err;
  EXPECT_EQ(ReadFile(results, 10), "old");
}

TEST_F(PredictWindowsTest, PathsMayBeLong) {
  std::filesystem::path deep = folder_.Path();
  while (deep.native().size() < 400) deep /= "a folder whose name is not short at all";
  std::filesystem::create_directories(deep);
  const ProgramResult result = Run({"--svg", PathText(deep / "chart.svg")});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_TRUE(ReadFile(deep / "chart.svg", kMost).ends_with("</svg>\n"));
}

TEST_F(PredictWindowsTest, WhatKeepsTheProgramFolderFromBeingFilledIsTold) {
  WriteFile(folder_ / "IonCap", "no folder");
  const ProgramResult result = Run({});
  EXPECT_NE(result.status, 0);
  EXPECT_NE(result.err.find("IonCap"), std::string::npos) << result.err;
  EXPECT_EQ(Content("IonCap"), "no folder");
}

}  // namespace
}  // namespace skyhop::testing
