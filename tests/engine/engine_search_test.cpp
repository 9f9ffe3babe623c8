#include "engine/engine_search.h"

#include <gtest/gtest.h>

#include "common/files.h"
#include "support/fake_engine_host.h"
#include "support/fake_launcher.h"
#include "support/temporary_folder.h"

namespace skyhop {
namespace {

using skyhop::testing::FakeEngineHost;
using skyhop::testing::PlainLauncher;
using std::filesystem::perms;

constexpr const char* kWindowsProgram = "MZ...";
constexpr const char* kBinary =
    "\x7F"
    "ELF...";
constexpr const char* kScript = "#!/bin/sh";

class EngineSearchTest : public ::testing::Test {
 protected:
  std::filesystem::path Install(const std::string& name, const std::string& content,
                                perms rights = perms::owner_all) {
    std::filesystem::path file = folder_ / name;
    std::filesystem::create_directories(file.parent_path());
    WriteFile(file, content);
    std::filesystem::permissions(file, rights);
    return file;
  }
  void InstallEstimate() { host_.estimate = Install("libexec/skyhop-estimate", kBinary); }
  void InstallWine() { host_.wine = Install("bin/wine", kBinary); }
  void InstallVoacapl(bool with_data) {
    host_.voacap = Install("bin/voacapl", kBinary);
    host_.data = folder_ / "home/itshfbc";
    if (with_data) std::filesystem::create_directories(host_.data);
  }

  EngineFinding Find(EngineChoice engine, EngineUse use = EngineUse::kChart) {
    return FindEngine(host_, folder_.Path(), engine, use);
  }

  /// The command for a deck in "run", with the folder's name left out.
  std::string Command(EngineChoice engine, EngineUse use = EngineUse::kChart) {
    std::string text = ItsCommand(Find(engine, use), folder_ / EngineFolder(engine, use),
                                  "deck.txt", "results.txt", launcher_);
    const std::string root = PathText(folder_.Path());
    for (std::size_t at = text.find(root); at != std::string::npos; at = text.find(root)) {
      text.erase(at, root.size());
    }
    return text;
  }

  skyhop::testing::TemporaryFolder folder_;
  FakeEngineHost host_;
  PlainLauncher launcher_;
};

TEST_F(EngineSearchTest, TheProgramFolderComesFirst) {
  InstallEstimate();
  InstallVoacapl(true);
  Install("ITSHFBC/bin_win/voacapw.exe", kScript);
  Install("IonCap/ioncap.exe", kScript, perms::owner_read);
  const EngineFinding voacap = Find(EngineChoice::kVoaCapSnr);
  EXPECT_EQ(voacap.kind, EngineKind::kOwn);
  EXPECT_EQ(voacap.executable, folder_ / "ITSHFBC/bin_win/voacapw.exe");
  EXPECT_TRUE(voacap.can_run);
  EXPECT_EQ(FindingText(voacap), "Found: " + PathText(voacap.executable));
  const EngineFinding ioncap = Find(EngineChoice::kIonCap);
  EXPECT_EQ(FindingText(ioncap),
            "Found, but it cannot be executed: " + PathText(folder_ / "IonCap/ioncap.exe"));
  EXPECT_EQ(Command(EngineChoice::kVoaCap),
            "[/ITSHFBC/bin_win/voacapw.exe] SILENT [/ITSHFBC] deck.txt results.txt");
}

TEST_F(EngineSearchTest, APortedVoacapInTheFolderIsCalledAsItWantsToBe) {
  Install("ITSHFBC/bin_win/voacapw.exe", kBinary);
  EXPECT_EQ(Command(EngineChoice::kVoaCap),
            "[/ITSHFBC/bin_win/voacapw.exe] -s [/ITSHFBC] deck.txt results.txt");
}

TEST_F(EngineSearchTest, TheSystemsVoacapRunsInTheFoldersOfThisProgram) {
  InstallEstimate();
  InstallVoacapl(true);
  EXPECT_EQ(Command(EngineChoice::kVoaCap),
            "[/bin/voacapl] -s [--run-dir=/ITSHFBC/run] [/home/itshfbc] deck.txt results.txt");
  EXPECT_EQ(Command(EngineChoice::kVoaCapSnr, EngineUse::kPoint),
            "[/bin/voacapl] -s [--run-dir=/ITSHFBC2/run] [/home/itshfbc] deck.txt results.txt");
  EXPECT_EQ(FindingText(Find(EngineChoice::kVoaCap)), "Uses " + PathText(folder_ / "bin/voacapl") +
                                                          " with the data of " +
                                                          PathText(folder_ / "home/itshfbc") + ".");
  // This ICEPAC does not exist.
  EXPECT_EQ(Find(EngineChoice::kIcePac).kind, EngineKind::kEstimate);
}

TEST_F(EngineSearchTest, WindowsProgramsNeedSomethingThatRunsThem) {
  InstallEstimate();
  const std::filesystem::path icepac = Install("ITSHFBC/bin_win/icepacw.exe", kWindowsProgram);
  Install("IonCap/ioncap.exe", kWindowsProgram);
  const EngineFinding without = Find(EngineChoice::kIcePac);
  EXPECT_EQ(FindingText(without), "Uses the built-in estimate engine. " + PathText(icepac) +
                                      " is a Windows program. There is no wine that could run it.");
  InstallWine();
  const EngineFinding with = Find(EngineChoice::kIcePac);
  EXPECT_EQ(FindingText(with),
            "Found: " + PathText(icepac) + ", run by " + PathText(folder_ / "bin/wine"));
  const std::string command = Command(EngineChoice::kIcePac);
  EXPECT_EQ(command.substr(0, command.find('Z')),
            "[/bin/wine] [/ITSHFBC/bin_win/icepacw.exe] SILENT [");
  EXPECT_TRUE(command.ends_with("\\ITSHFBC] deck.txt results.txt")) << command;
  const EngineFinding ioncap = Find(EngineChoice::kIonCap);
  EXPECT_EQ(IonCapCommand(ioncap, "/f/IonCap/iondrive.txt", launcher_),
            "[" + PathText(*host_.wine) + "] [/f/IonCap/ioncap.exe] < [/f/IonCap/iondrive.txt]");
  EXPECT_EQ(DriverLine(ioncap, "/f/IonCap/script.txt", launcher_), "Z:\\f\\IonCap\\script.txt");
  host_.runs_windows_programs = true;
  EXPECT_EQ(Find(EngineChoice::kIcePac).kind, EngineKind::kOwn);
}

TEST_F(EngineSearchTest, TheEstimateStandsInAndSaysForWhat) {
  InstallEstimate();
  InstallVoacapl(false);
  const EngineFinding finding = Find(EngineChoice::kVoaCap);
  EXPECT_EQ(FindingText(finding),
            "Uses the built-in estimate engine. There is no " +
                PathText(folder_ / "ITSHFBC/bin_win/voacapw.exe") + ". There is " +
                PathText(folder_ / "bin/voacapl") + ", but its data are missing in " +
                PathText(folder_ / "home/itshfbc") + "; makeitshfbc makes them.");
  // A point prediction uses only the second folder.
  Install("ITSHFBC/bin_win/voacapw.exe", kScript);
  EXPECT_EQ(Find(EngineChoice::kVoaCapSnr, EngineUse::kPoint).kind, EngineKind::kEstimate);
  EXPECT_EQ(Command(EngineChoice::kVoaCapSnr, EngineUse::kPoint),
            "[/libexec/skyhop-estimate] -s [/ITSHFBC2] deck.txt results.txt");
}

TEST_F(EngineSearchTest, VoacapIsAutomaticWhereItIsInstalledWithItsData) {
  const auto automatic = [&] { return AutomaticEngine(host_, folder_.Path()); };
  EXPECT_EQ(automatic(), EngineChoice::kIonCap);
  InstallEstimate();
  InstallVoacapl(true);
  EXPECT_EQ(automatic(), EngineChoice::kIonCap);
  const std::string data = PathText(folder_ / "home/itshfbc");
  EXPECT_EQ(MissingParts(EngineChoice::kVoaCap, Find(EngineChoice::kVoaCap)),
            "Its coefficients are missing: there is no folder " + data +
                "/coeffs. The antenna file default/isotrope is missing in " + data + "/antennas.");
  std::filesystem::create_directories(folder_ / "home/itshfbc/coeffs");
  Install("home/itshfbc/antennas/default/isotrope", "antenna");
  EXPECT_EQ(automatic(), EngineChoice::kVoaCap);
  host_.voacap.reset();
  EXPECT_EQ(automatic(), EngineChoice::kIonCap);
  Install("ITSHFBC/bin_win/voacapw.exe", kScript);
  EXPECT_EQ(automatic(), EngineChoice::kVoaCap);
}

TEST_F(EngineSearchTest, TheEstimateIsKnownInIonCapsPlace) {
  InstallEstimate();
  EXPECT_TRUE(IsEstimate(Find(EngineChoice::kIcePac), host_));
  Install("IonCap/ioncap.exe", kBinary);
  EXPECT_TRUE(IsEstimate(Find(EngineChoice::kIonCap), host_));
  Install("IonCap/ioncap.exe", std::string(kBinary) + "another");
  EXPECT_FALSE(IsEstimate(Find(EngineChoice::kIonCap), host_));
}

TEST_F(EngineSearchTest, WithoutAnyTheExpectedPlaceIsTold) {
  const EngineFinding finding = Find(EngineChoice::kIcePac);
  EXPECT_FALSE(finding.exists);
  EXPECT_EQ(FindingText(finding),
            "Not found; expected at " + PathText(folder_ / "ITSHFBC/bin_win/icepacw.exe"));
  EXPECT_FALSE(Find(EngineChoice::kNone).exists);
}

}  // namespace
}  // namespace skyhop
