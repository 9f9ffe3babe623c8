#include <gtest/gtest.h>

#include <filesystem>

#include "common/files.h"
#include "platform/placed_files.h"
#include "platform/platform.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using platform::PlaceFiles;
using Texts = std::vector<std::string>;

class ProgramFolderTest : public ::testing::Test {
 protected:
  ProgramFolderTest() {
    WriteFile(installed_ / "bands", "first");
    WriteFile(installed_ / "engine", "engine 1");
  }

  Texts Place() {
    return PlaceFiles(folder_.Path(), {{installed_ / "bands", "Bands.txt", false},
                                       {installed_ / "engine", "IonCap/ioncap.exe", true}});
  }
  std::string Content(const char* name) { return ReadFile(folder_ / name, 1000); }

  TemporaryFolder installed_{"installed"};
  TemporaryFolder folder_{"program folder"};
};

TEST_F(ProgramFolderTest, FillsAnEmptyFolder) {
  EXPECT_EQ(Place(), Texts{});
  EXPECT_EQ(Content("Bands.txt"), "first");
  EXPECT_EQ(Content("IonCap/ioncap.exe"), "engine 1");
  const auto permissions = std::filesystem::status(folder_ / "IonCap/ioncap.exe").permissions();
  EXPECT_NE(permissions & std::filesystem::perms::owner_exec, std::filesystem::perms::none);
}

TEST_F(ProgramFolderTest, UpdatesPlacedFiles) {
  (void)Place();
  WriteFile(installed_ / "engine", "engine 22");
  EXPECT_EQ(Place(), Texts{});
  EXPECT_EQ(Content("IonCap/ioncap.exe"), "engine 22");
}

TEST_F(ProgramFolderTest, KeepsFilesOfTheUser) {
  std::filesystem::create_directories(folder_ / "IonCap");
  WriteFile(folder_ / "IonCap/ioncap.exe", "my own engine");
  EXPECT_EQ(Place(), Texts{});
  WriteFile(folder_ / "Bands.txt", "my bands");
  WriteFile(installed_ / "bands", "second");
  WriteFile(installed_ / "engine", "engine 22");
  EXPECT_EQ(Place(), Texts{});
  EXPECT_EQ(Content("Bands.txt"), "my bands");
  EXPECT_EQ(Content("IonCap/ioncap.exe"), "my own engine");
}

TEST_F(ProgramFolderTest, KeepsFilesWhenTheRecordIsDamaged) {
  (void)Place();
  WriteFile(folder_ / "installed-files.txt", "nonsense\n1 2 3\n");
  WriteFile(installed_ / "bands", "second");
  EXPECT_EQ(Place(), Texts{});
  EXPECT_EQ(Content("Bands.txt"), "first");
}

TEST_F(ProgramFolderTest, ReportsProblemsAndPlacesTheOtherFiles) {
  std::filesystem::remove(installed_ / "bands");
  Texts problems = Place();
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_NE(problems[0].find("Bands.txt"), std::string::npos);
  EXPECT_EQ(Content("IonCap/ioncap.exe"), "engine 1");

  WriteFile(folder_ / "Bands.txt", "the user's own");
  problems = Place();
  EXPECT_EQ(problems, Texts{}) << "nothing is missing where the user has a file";

  WriteFile(folder_ / "file", "");
  EXPECT_EQ(PlaceFiles(folder_.Path(), {{installed_ / "engine", "file/engine", true}}).size(), 1U);
}

TEST_F(ProgramFolderTest, PrefersTheUsersHelpPage) {
  const std::filesystem::path installed = platform::HelpFile(folder_.Path());
  EXPECT_TRUE(installed.generic_string().ends_with("/help/index.htm")) << installed;
  EXPECT_TRUE(installed.is_absolute());
  std::filesystem::create_directory(folder_ / "index.htm");
  EXPECT_EQ(platform::HelpFile(folder_.Path()), installed) << "a folder is no page";
  std::filesystem::remove(folder_ / "index.htm");
  WriteFile(folder_ / "index.htm", "<p>help</p>");
  EXPECT_EQ(platform::HelpFile(folder_.Path()), folder_ / "index.htm");
}

}  // namespace
}  // namespace skyhop::testing
