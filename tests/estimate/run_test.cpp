#include "estimate/run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "common/errors.h"
#include "common/files.h"
#include "common/program.h"
#include "common/text.h"
#include "support/temporary_folder.h"

namespace skyhop::estimate {
namespace {

using skyhop::testing::TemporaryFolder;
using skyhop::testing::TestData;

std::string ExampleResults() {
  return ReplaceAll(TestData("estimate/example.results.txt"), "@VERSION@", VersionText());
}

std::ptrdiff_t FileCount(const std::filesystem::path& folder) {
  return std::distance(std::filesystem::directory_iterator(folder), {});
}

struct Outcome {
  int status = 0;
  std::string out;
  std::string err;
};

Outcome RunWith(const std::string& driver, const std::vector<std::string_view>& arguments = {}) {
  std::istringstream in(driver);
  std::ostringstream out;
  std::ostringstream err;
  const int status = RunEngine(arguments, in, out, err);
  return {status, out.str(), err.str()};
}

std::string DriverFor(const std::filesystem::path& deck, const std::filesystem::path& results) {
  return PathText(deck) + "\r\n" + PathText(results) + "\r\n";
}

/// A folder with the example deck, with blanks and letters beyond ASCII in its name.
struct Site {
  Site() { WriteFile(deck, TestData("estimate/example.deck.txt")); }

  TemporaryFolder folder{"Ünïcode fôlder"};
  std::filesystem::path deck = folder / "the deck.txt";
  std::filesystem::path results = folder / "results.txt";
};

TEST(EstimateRun, WritesTheResultsThatTheDriverAsksFor) {
  const Site site;
  for (const char* line_end : {"\n", "\r\n"}) {
    const std::string driver =
        PathText(site.deck) + line_end + PathText(site.results) + line_end + "more" + line_end;
    const Outcome outcome = RunWith(driver);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out + outcome.err, "");
    EXPECT_EQ(ReadFile(site.results, 1 << 20), ExampleResults());
    EXPECT_EQ(FileCount(site.folder.Path()), 2);
  }
}

TEST(EstimateRun, TakesTheArgumentsOfTheOtherEngines) {
  const TemporaryFolder folder{"Ünïcode fôlder"};
  const std::string root = PathText(folder.Path());
  const std::string run_option = "--run-dir=" + PathText(folder / "elsewhere");
  const struct {
    std::vector<std::string_view> arguments;
    const char* run_folder;
  } cases[] = {{{"SILENT", root, "deck.txt", "results.txt"}, "run"},
               {{"-s", root, "deck.txt", "results.txt"}, "run"},
               {{run_option, "-s", root, "deck.txt", "results.txt"}, "elsewhere"}};
  for (const auto& [arguments, run_folder] : cases) {
    std::filesystem::create_directories(folder / run_folder);
    WriteFile(folder / run_folder / "deck.txt", TestData("estimate/example.deck.txt"));
    const Outcome outcome = RunWith("", arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(ReadFile(folder / run_folder / "results.txt", 1 << 20), ExampleResults());
    std::filesystem::remove_all(folder / run_folder);
  }
  EXPECT_EQ(RunWith("", {"SILENT", root, "deck.txt"}).status, 2);
  EXPECT_EQ(RunWith("", {root, "deck.txt", "results.txt"}).status, 2);
}

TEST(EstimateRun, ReplacesOldResultsWithoutWritingIntoThem) {
  const Site site;
  WriteFile(site.results, "old");
  const std::filesystem::path kept = site.folder / "kept.txt";
  std::filesystem::create_hard_link(site.results, kept);
  EXPECT_EQ(RunWith(DriverFor(site.deck, site.results)).status, 0);
  EXPECT_EQ(ReadFile(site.results, 1 << 20), ExampleResults());
  EXPECT_EQ(ReadFile(kept, 1 << 20), "old");
}

TEST(EstimateRun, KeepsTheResultsFileWhenTheDeckIsBad) {
  const Site site;
  WriteFile(site.deck, ReplaceAll(TestData("estimate/example.deck.txt"), "0202600011", "02026"));
  WriteFile(site.results, "old");
  const Outcome outcome = RunWith(DriverFor(site.deck, site.results));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "skyhop-estimate: " + PathText(site.deck) +
                ", line 3, MONTH card, columns 16-20: month \"\" is not from 1 to 12\n");
  EXPECT_EQ(ReadFile(site.results, 1 << 20), "old");
  EXPECT_EQ(FileCount(site.folder.Path()), 2);
}

TEST(EstimateRun, ReportsWhyTheDriverIsUnusable) {
  const Site site;
  const std::string deck = PathText(site.deck) + "\n";
  const std::string too_long = PathText(site.folder / "long.txt");
  WriteFile(PathFromText(too_long), std::string((1U << 20U) + 1, '\n'));
  struct Case {
    std::string driver;
    std::string complaint;
  };
  const std::vector<Case> cases = {
      {"", "driver, line 1 (deck): the line is missing"},
      {"\r\nresults.txt\n", "driver, line 1 (deck): the line is empty"},
      {deck, "driver, line 2 (results): the line is missing"},
      {deck + "\n", "driver, line 2 (results): the line is empty"},
      {deck + std::string("a\0b", 3), "driver, line 2 (results): the path holds a null byte"},
      {std::string(100000, 'x'), "driver, line 1 (deck): the line is too long for a path"},
      {PathText(site.folder / "absent.txt") + "\nresults.txt\n", "cannot read "},
      {PathText(site.folder.Path()) + "\nresults.txt\n", "it is a folder"},
      {too_long + "\nresults.txt\n", "it is longer than 1048576 bytes"},
      {deck + PathText(site.folder.Path()), "it is not a regular file"},
      {deck + PathText(site.folder / "absent" / "results.txt"), "cannot write "},
      {deck + deck, "the results would replace the deck "},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.complaint);
    const Outcome outcome = RunWith(c.driver);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find(c.complaint), std::string::npos) << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  }
  EXPECT_EQ(FileCount(site.folder.Path()), 2) << "something was left behind";
  EXPECT_EQ(ReadFile(site.deck, 1 << 20), TestData("estimate/example.deck.txt"));
}

TEST(EstimateRun, PrintsHelpAndVersion) {
  EXPECT_EQ(RunWith("", {"--version"}).out, "skyhop-estimate " + VersionText() + "\n");
  EXPECT_EQ(RunWith("", {"--help"}).out.substr(0, 6), "usage:");
  const Outcome outcome = RunWith("", {"--frequency", "7"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.err.find("\"--frequency\""), std::string::npos);
  EXPECT_NE(outcome.err.find("usage:"), std::string::npos);
}

#ifdef WEXITSTATUS
// On other systems a command cannot hold the letters of these paths. There the tests of whole
// predictions run the program.

/// Exit status of the program itself, run as the shell runs it.
int StatusOfProgram(const Site& site, const std::filesystem::path& errors) {
  const std::filesystem::path driver = site.folder / "driver.txt";
  WriteFile(driver, DriverFor(site.deck, site.results));
  const std::string command = "\"" SKYHOP_ESTIMATE_ENGINE "\" < \"" + PathText(driver) +
                              "\" 2> \"" + PathText(errors) + "\"";
  return WEXITSTATUS(std::system(command.c_str()));
}

TEST(EstimateProgram, ComputesADeckFromItsStandardInput) {
  const Site site;
  const std::filesystem::path errors = site.folder / "errors.txt";
  EXPECT_EQ(StatusOfProgram(site, errors), 0);
  EXPECT_EQ(ReadFile(errors, 1 << 20), "");
  EXPECT_EQ(ReadFile(site.results, 1 << 20), ExampleResults());
}

TEST(EstimateProgram, FailsWithAMessageAndWithoutResults) {
  const Site site;
  WriteFile(site.deck, "SYSTEM    *****");
  const std::filesystem::path errors = site.folder / "errors.txt";
  EXPECT_EQ(StatusOfProgram(site, errors), 1);
  EXPECT_EQ(ReadFile(errors, 1 << 20),
            "skyhop-estimate: " + PathText(site.deck) +
                ", line 1, SYSTEM card, columns 11-15: power in kW \"*****\" is not a number\n");
  EXPECT_FALSE(std::filesystem::exists(site.results));
}

#endif

}  // namespace
}  // namespace skyhop::estimate
