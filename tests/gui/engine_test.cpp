// Tests engines that fail.

#include <fstream>

#include "common/files.h"
#include "gui_fixture.h"
#include "screen.h"
#include "ui/drawing/chart_palette.h"

namespace skyhop::testing {
namespace {

/// Whether a process runs. An ended process that its parent has not reaped does not run.
bool Runs(int process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string text;
  std::getline(file, text);
  const std::size_t name_end = text.rfind(") ");
  return name_end != std::string::npos && text[name_end + 2] != 'Z';
}

/// An engine that does not answer and ignores the first request to end.
constexpr const char* kDeafEngine = "trap '' TERM\necho $$ > ../engine.pid\nexec sleep 600\n";

class EngineOfWindow : public GuiTest {
 protected:
  void PressPredict() { Click(*Frame().Controls().ButtonOf(Button::kPathsButton)); }

  [[nodiscard]] bool ShowsOldChart() {
    return PumpUntil([this] {
      const wxImage plot = ScreenPart(Frame().Canvas(), Program().Chart().Layout().ionprop);
      return CountPixels(plot, kLightPalette.old_paper) > 1000;
    });
  }
  [[nodiscard]] std::string Caption() { return Frame().GetTitle().utf8_string(); }
};

TEST_F(EngineOfWindow, ShowsReasonAndLogWhenItFails) {
  Start();
  EnterStations();
  Predict();
  EXPECT_FALSE(Program().Chart().Old());
  const std::string engine = PathText(home_ / "IonCap/ioncap.exe");
  ReplaceEngine(
      "echo 'no coefficients found' >&2\necho 'Backtrace for this error:' >&2\n"
      "echo '#0  0x7f00' >&2\nexit 3\n");
  PressPredict();
  ASSERT_TRUE(PumpUntil([&] {
    return Notice().find("ended without writing") != std::string::npos;
  })) << Notice();
  EXPECT_EQ(Notice().find(engine), 0U) << Notice();
  EXPECT_NE(Notice().find("It printed: no coefficients found."), std::string::npos) << Notice();
  EXPECT_NE(Notice().find("ErrorLog.txt"), std::string::npos) << Notice();
  EXPECT_NE(Caption().find("ErrorLog.txt"), std::string::npos) << Caption();
  EXPECT_NE(ReadFile(home_ / "ErrorLog.txt", 1U << 20U).find("ended without writing"),
            std::string::npos);
  EXPECT_TRUE(ShowsOldChart());

  std::filesystem::remove(home_ / "IonCap/ioncap.exe");
  std::filesystem::create_symlink(SKYHOP_ESTIMATE, home_ / "IonCap/ioncap.exe");
  PressPredict();
  EXPECT_TRUE(PumpUntil([&] { return !Running() && !Program().Chart().Old(); })) << Notice();
  EXPECT_EQ(Notice(), "IONCAP is not installed. The built-in estimate made this prediction.");
}

TEST_F(EngineOfWindow, EndsOnAbort) {
  Start();
  EnterStations();
  Predict();
  ReplaceEngine(kDeafEngine);
  ControlSet& controls = Frame().Controls();
  EXPECT_FALSE(controls.Enabled(Button::kAbortButton));
  PressPredict();
  const auto pid = [&] { return std::atoi(ReadFile(home_ / "engine.pid", 100).c_str()); };
  ASSERT_TRUE(
      PumpUntil([&] { return std::filesystem::exists(home_ / "engine.pid") && pid() > 0; }));
  EXPECT_TRUE(Running());
  EXPECT_FALSE(controls.Enabled(Button::kPathsButton));
  EXPECT_TRUE(PumpUntil([&] { return Notice().rfind("IONCAP is working", 0) == 0; })) << Notice();
  EXPECT_NE(Caption().find("IONCAP is working"), std::string::npos) << Caption();
  const int process = pid();
  EXPECT_TRUE(Runs(process));

  Click(*controls.ButtonOf(Button::kAbortButton));
  ASSERT_TRUE(PumpUntil([&] { return !Running(); }));
  EXPECT_TRUE(PumpUntil([&] { return !Runs(process); })) << "the engine still runs";
  EXPECT_EQ(Notice(), "The prediction was aborted. The chart shows the prediction before it.");
  EXPECT_TRUE(controls.Enabled(Button::kPathsButton));
  EXPECT_FALSE(controls.Enabled(Button::kAbortButton));
  EXPECT_EQ(Caption().find("is working"), std::string::npos) << Caption();
  EXPECT_TRUE(ShowsOldChart());
}

TEST_F(EngineOfWindow, EndsWhenTheWindowCloses) {
  Start();
  EnterStations();
  ReplaceEngine(kDeafEngine);
  PressPredict();
  const auto pid = [&] { return std::atoi(ReadFile(home_ / "engine.pid", 100).c_str()); };
  ASSERT_TRUE(
      PumpUntil([&] { return std::filesystem::exists(home_ / "engine.pid") && pid() > 0; }));
  const int process = pid();
  CloseWindow();
  EXPECT_TRUE(PumpUntil([&] { return !Runs(process); })) << "the engine still runs";
}

TEST_F(EngineOfWindow, ReportsAFailedStart) {
  Start();
  EnterStations();
  WriteFile(home_ / "IonCap/ioncap.exe", "#!/nonexistent/interpreter\n");
  PressPredict();
  EXPECT_TRUE(
      PumpUntil([&] { return !Running() && !(Notice().empty() && dialogs_.messages.empty()); }));
  EXPECT_FALSE(Program().Chart().HasResult());
}

TEST_F(EngineOfWindow, IsTheEstimateWhenNoneIsInstalled) {
  Start();
  EnterStations();
  std::filesystem::remove(home_ / "IonCap/ioncap.exe");
  Predict();
  EXPECT_TRUE(Shows("Built-in estimate engine")) << "the user sees what has predicted";
}

}  // namespace
}  // namespace skyhop::testing
