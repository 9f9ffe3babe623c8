#include "engine/run_control.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "common/files.h"
#include "engine/engine_output.h"
#include "support/fake_engine_host.h"
#include "support/fake_launcher.h"
#include "support/prediction_fixture.h"

namespace skyhop::IONCAPModule {
namespace {

using skyhop::testing::FakeLauncher;
using skyhop::testing::PredictionFixture;
using skyhop::testing::TestData;

class RunControlTest : public ::testing::Test {
 protected:
  RunControlTest() {
    with_.Hand();
    with_.engine.results.SetTableListener(
        [this](EngineChoice engine) { displayed_.push_back(engine); });
    // The launcher of these tests gives every folder a short name beside the long one.
    for (const char* name :
         {"IonCap", "~IonCap", "ITSHFBC/run", "~ITSHFBC/run", "ITSHFBC2/run", "~ITSHFBC2/run"}) {
      std::filesystem::create_directories(folder_ / name);
    }
    run_.LoadEngineData(folder_);
    with_.log.debug.clear();
  }

  void Choose(EngineChoice engine) {
    with_.form.engine = engine;
    with_.Hand();
  }

  [[nodiscard]] bool Logged(const std::string& line) const {
    const auto& lines = with_.log.debug;
    return std::find(lines.begin(), lines.end(), line) != lines.end();
  }

  std::string Folder(const char* name) { return PathText((folder_ / name).make_preferred()); }
  std::string Content(const char* name) { return ReadFile(folder_ / name, 10000); }

  PredictionFixture with_;
  std::filesystem::path folder_ = with_.log.folder.Path();
  FakeLauncher& launcher_ = with_.launcher;
  RunControl& run_ = with_.engine.run;
  ResultsTable& table_ = with_.engine.table;
  std::vector<EngineChoice> displayed_;
};

TEST_F(RunControlTest, AnIonCapRunWritesScriptBatchAndDriverAndStartsTheBatch) {
  WriteFile(folder_ / "IonCap" / "results.txt", "of an earlier run");
  ASSERT_TRUE(run_.ForecastPaths());
  EXPECT_FALSE(std::filesystem::exists(folder_ / "IonCap" / "results.txt"));
  EXPECT_EQ(Content("~IonCap/script.txt"), TestData("decks/transatlantic-ioncap.txt"));
  EXPECT_EQ(Content("~IonCap/ioncap.bat"),
            "cd [" + Folder("~IonCap") + "]|\n[" + Folder("~IonCap/ioncap.exe") + "] < [" +
                Folder("~IonCap/iondrive.txt") + "]|\necho off|\ncls|\n");
  EXPECT_EQ(Content("~IonCap/iondrive.txt"),
            Folder("~IonCap/script.txt") + "|\n" + Folder("~IonCap/results.txt") + "|\n");
  ASSERT_EQ(launcher_.starts.size(), 1U);
  EXPECT_EQ(launcher_.starts[0].batch, folder_ / "~IonCap" / "ioncap.bat");
  EXPECT_EQ(launcher_.starts[0].parameter, Folder("~IonCap/iondrive.txt"));
  EXPECT_EQ(launcher_.starts[0].working_folder, folder_ / "~IonCap");
  EXPECT_TRUE(run_.Waiting());
  EXPECT_TRUE(
      Logged("IONCAPModule.RunScript: SNR = False, BatFilename = " + Folder("~IonCap/ioncap.bat") +
             ", ScriptFilename = " + Folder("~IonCap/script.txt")));
  EXPECT_TRUE(Logged("IONCAPModule.DebugFile, theFilename = " + Folder("~IonCap/iondrive.txt")));
  EXPECT_TRUE(Logged("SUNSPOT   10500"));
}

TEST_F(RunControlTest, TheOtherEnginesRunSilentlyInTheirRunFolder) {
  const struct {
    EngineChoice engine;
    const char* executable;
    const char* method;
  } cases[] = {
      {EngineChoice::kIcePac, "~ITSHFBC/bin_win/icepacw.exe", "METHOD       26    0"},
      {EngineChoice::kVoaCap, "~ITSHFBC/bin_win/voacapw.exe", "METHOD       26    0"},
      {EngineChoice::kVoaCapSnr, "~ITSHFBC/bin_win/voacapw.exe", "METHOD       30    0"},
  };
  for (const auto& [engine, executable, method] : cases) {
    Choose(engine);
    run_.Abort();
    ASSERT_TRUE(run_.ForecastPaths());
    EXPECT_EQ(Content("~ITSHFBC/run/icevoa.bat"),
              "cd [" + Folder("~ITSHFBC/run") + "]|\n[" + Folder(executable) + "] SILENT [" +
                  Folder("~ITSHFBC") + "] script.txt results.txt|\necho off|\ncls|\n");
    EXPECT_NE(Content("~ITSHFBC/run/script.txt").find(method), std::string::npos);
    EXPECT_EQ(launcher_.starts.back().parameter, "");
    EXPECT_EQ(run_.ResultsFile(), folder_ / "ITSHFBC" / "run" / "results.txt");
  }
}

TEST_F(RunControlTest, NothingStartsWhileARunIsGoingOnOrParametersAreWrong) {
  ASSERT_TRUE(run_.IonCapPaths());
  EXPECT_FALSE(run_.IonCapPaths());
  EXPECT_EQ(with_.log.debug.back(), "   previous computation still running");
  run_.Abort();
  with_.parameters.SetPredictionTakeoff("91");
  EXPECT_FALSE(run_.IonCapPaths());
  EXPECT_EQ(with_.log.debug.back(), "   parameters not ok");
  EXPECT_TRUE(run_.ParametersRefused());
  Choose(EngineChoice::kNone);
  EXPECT_FALSE(run_.ForecastPaths());
  EXPECT_EQ(with_.log.debug.back(), "   no engine selected");
  EXPECT_EQ(launcher_.starts.size(), 1U);
}

TEST_F(RunControlTest, WithoutTheEnginesFoldersNoFileIsTouched) {
  PredictionFixture other;
  other.Hand();
  EXPECT_FALSE(other.engine.run.IonCapPaths());
  EXPECT_EQ(other.log.errors, std::vector<std::string>{
                                  "IONCAPModule.IonCapPaths: the engines' folders are not known"});
  EXPECT_TRUE(other.launcher.starts.empty());
}

TEST_F(RunControlTest, AFileThatCannotBeReplacedEndsTheRunBeforeItStarts) {
  const struct {
    const char* obstacle;
    const char* error;
  } cases[] = {
      {"IonCap/results.txt",
       "program error 75 in module IONCAPModule.InitializeResults: cannot delete "},
      {"~IonCap/script.txt", "IONCAPModule.InitializeScript: unable to delete existing "},
      {"~IonCap/ioncap.bat", "IONCAPModule.RunScript: could not delete "},
      {"~IonCap/iondrive.txt", "program error 75 in module IONCAPModule.RunScript: could not "},
  };
  for (const auto& [obstacle, error] : cases) {
    std::filesystem::create_directory(folder_ / obstacle);
    with_.log.errors.clear();
    EXPECT_FALSE(run_.IonCapPaths()) << obstacle;
    ASSERT_EQ(with_.log.errors.size(), 1U) << obstacle;
    EXPECT_EQ(with_.log.errors[0].find(error), 0U) << with_.log.errors[0];
    EXPECT_FALSE(run_.Waiting());
    std::filesystem::remove(folder_ / obstacle);
  }
  EXPECT_TRUE(launcher_.starts.empty());
}

TEST_F(RunControlTest, AFailedStartIsLoggedWithAllItsFiles) {
  launcher_.code = 5;
  EXPECT_FALSE(run_.IonCapPaths());
  EXPECT_FALSE(run_.ParametersRefused());
  EXPECT_FALSE(run_.Waiting());
  EXPECT_EQ(with_.log.errors,
            (std::vector<std::string>{
                "IONCAPModule.RunScript ShellExecute failure: The operating system denied access "
                "to the specified file.",
                "       Exe filename = " + Folder("~IonCap/ioncap.exe"),
                "       Bat filename = " + Folder("~IonCap/ioncap.bat"),
                "    Driver filename = " + Folder("~IonCap/iondrive.txt"),
                "    Script filename = " + Folder("~IonCap/script.txt"),
                "   Results filename = " + Folder("~IonCap/results.txt"),
                "             Folder = " + Folder("~IonCap")}));
  EXPECT_EQ(LaunchErrorText(17), "error code 17");
}

TEST_F(RunControlTest, RunStatesSelectWhatHappensWithIonCapResults) {
  const std::filesystem::path results = folder_ / "IonCap" / "results.txt";
  ASSERT_TRUE(run_.IonCapPaths());
  WriteFile(results, TestData("results/newyork-london-method26.results.txt"));
  run_.SetRunState(RunState::kChartWithoutLuf);
  run_.HandleIonCapTimer();
  EXPECT_EQ(table_.Luf(5), -1.0F);
  run_.SetRunState(RunState::kViewer);
  run_.HandleIonCapTimer();
  EXPECT_EQ(launcher_.viewed,
            std::vector<std::string>{"c:\\windows\\notepad.exe " + PathText(results)});
  launcher_.code = 2;
  run_.HandleIonCapTimer();
  ASSERT_EQ(with_.log.errors.size(), 1U);
  EXPECT_NE(with_.log.errors[0].find("The specified file was not found."), std::string::npos);
}

TEST_F(RunControlTest, SnrResultsWithoutTheirHeaderAreShownToTheUser) {
  Choose(EngineChoice::kVoaCapSnr);
  ASSERT_TRUE(run_.ForecastPaths());
  WriteFile(folder_ / "ITSHFBC" / "run" / "results.txt", "something else");
  run_.HandleIonCapTimer();
  EXPECT_EQ(with_.messages.Texts(), std::vector<std::string>{"results missing expected header"});
  EXPECT_TRUE(Logged("   results missing expected header"));
}

TEST_F(RunControlTest, CutSnrResultsAreShownAsFarAsTheyGo) {
  Choose(EngineChoice::kVoaCapSnr);
  ASSERT_TRUE(run_.ForecastPaths());
  const std::string whole = TestData("results/newyork-london-method30.results.txt");
  const struct {
    std::string results;
    std::size_t displayed;
    std::size_t errors;
    const char* reason;
  } cuts[] = {
      {" MULTIPATH POWER TOLERANCE\n   1.0 11.2  x\n", 0, 1, ", after hour 0; 0 of 24 hours are"},
      {whole.substr(0, whole.find("  13.0 ")), 1, 1,
       ", after hour 12; 12 of 24 hours are complete"},
      // The file ends within the last hour, between its frequencies and the other lines.
      {whole.substr(0, whole.find('\n', whole.find("  24.0 "))), 1, 2,
       ", after hour 24; 23 of 24 hours are complete"},
  };
  for (const auto& [results, displayed, errors, reason] : cuts) {
    WriteFile(folder_ / "ITSHFBC" / "run" / "results.txt", results);
    with_.log.errors.clear();
    displayed_.clear();
    run_.HandleIonCapTimer();
    EXPECT_FALSE(run_.LastRunDisplayed());
    EXPECT_EQ(displayed_.size(), displayed);
    ASSERT_EQ(with_.log.errors.size(), errors);
    EXPECT_NE(with_.log.errors.back().find(reason), std::string::npos) << with_.log.errors.back();
  }
}

TEST(EngineOutput, NeitherABacktraceNorTheBatchFilesOwnLinesAreAReason) {
  EXPECT_EQ(EngineOutputLines("\n no deck\r\nstopped\noff\n/x/ioncap.bat: 4: cls: not found\n"),
            (std::vector<std::string>{" no deck", "stopped"}));
  const struct {
    const char* output;
    const char* line;
  } cases[] = {
      {"", ""},
      {"OPENing antenna file=/x/antennas/a/b.1\n\nPress Enter\n",
       "OPENing antenna file=/x/antennas/a/b.1"},
      {"At line 36 of file reddat.f90 (unit = 11)\n"
       "Fortran runtime error: Cannot open file '/x/coeffs/coeff11w.txt'\n\n"
       "Error termination. Backtrace:\n#0  0x7f00 in ???\n#1  0x7f01\n",
       "Fortran runtime error: Cannot open file '/x/coeffs/coeff11w.txt'"},
      {"\nProgram received signal SIGSEGV: Segmentation fault - invalid memory reference.\n\n"
       "Backtrace for this error:\n#0  0x7f00\n",
       "Program received signal SIGSEGV: Segmentation fault - invalid memory reference."},
      {"At line 36 of file reddat.f90 (unit = 11)\n#0  0x7f00\n",
       "At line 36 of file reddat.f90 (unit = 11)"},
      {"#0  0x7f00\n#1  0x7f01\noff\n", ""},
  };
  for (const auto& [output, line] : cases) EXPECT_EQ(FirstMeaningfulLine(output), line);
}

}  // namespace
}  // namespace skyhop::IONCAPModule
