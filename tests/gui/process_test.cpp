// Tests the program as a separate process.

#include <csignal>

#include "common/files.h"
#include "gui_fixture.h"
#include "started_program.h"

namespace skyhop::testing {
namespace {

class ProgramAsProcess : public GuiTest {
 protected:
  /// Starts the program in this test's folders and waits for its window.
  std::unique_ptr<StartedProgram> StartProcess() {
    auto program = std::make_unique<StartedProgram>(SKYHOP_PROGRAM);
    EXPECT_TRUE(PumpUntil([&] { return program->HasWindow("Skyhop"); })) << "no window";
    return program;
  }
};

TEST_F(ProgramAsProcess, RefusesASecondInstance) {
  const auto first = StartProcess();
  StartedProgram second(SKYHOP_PROGRAM);
  ASSERT_TRUE(PumpUntil([&] { return second.HasWindow("Skyhop"); })) << "no message";
  EXPECT_FALSE(second.Ended()) << "the message waits for the user";
  // A key press before the box has the focus is lost, so press repeatedly.
  EXPECT_TRUE(PumpUntil([&] {
    second.PressKey("Return");
    return second.Ended();
  }));
  EXPECT_FALSE(first->Ended());

  // Repeat it within this process, which can read the message.
  {
    SkyhopProgram third;
    EXPECT_FALSE(third.Start());
  }
  ASSERT_EQ(dialogs_.messages.size(), 1U);
  EXPECT_EQ(dialogs_.messages[0].first, "Skyhop");
  EXPECT_EQ(dialogs_.messages[0].second, "Skyhop is already running on this PC");

  ASSERT_TRUE(PumpUntil([&] {
    // This is the window manager's key for the close button.
    first->PressKey("alt+F4");
    return first->Ended();
  }));
  EXPECT_EQ(first->Status(), 0);
  Start();
  EXPECT_EQ(dialogs_.messages.size(), 1U) << "the first one has gone";
}

TEST_F(ProgramAsProcess, ShowsItsWindowWhenStartedAgain) {
  const auto first = StartProcess();
  first->Minimise();
  ASSERT_TRUE(PumpUntil([&] { return first->Windows() == 0; }));
  const StartedProgram second(SKYHOP_PROGRAM);
  EXPECT_TRUE(PumpUntil([&] { return first->HasWindow("Skyhop"); }));
  EXPECT_TRUE(PumpUntil([&] { return second.HasWindow("Skyhop"); })) << "no message";
}

TEST_F(ProgramAsProcess, SavesSettingsWhenAskedToEnd) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    WriteSettings("");
    const auto program = StartProcess();
    program->Send(signal);
    ASSERT_TRUE(PumpUntil([&] { return program->Ended(); })) << signal;
    EXPECT_EQ(program->Status(), 0) << signal;
    EXPECT_NE(Settings().find("IonCapLeft="), std::string::npos) << signal;
    EXPECT_NE(Settings().find("Power="), std::string::npos) << signal;
  }
}

// The toolkit reads the window manager's properties while the first window waits to be shown. This
// must not change the window's place.
TEST_F(ProgramAsProcess, KeepsItsPlaceOverSeveralStarts) {
  const std::string place =
      "IonCapLeft=130\nIonCapTop=90\nIonCapWidth=1150\nIonCapHeight=810\nIonCapWindowState=0\n";
  WriteSettings("[Windows]\n" + place);
  for (int start = 1; start <= 3; ++start) {
    const auto program = StartProcess();
    PumpUntil([] { return false; }, std::chrono::seconds(1));
    program->Send(SIGTERM);
    ASSERT_TRUE(PumpUntil([&] { return program->Ended(); }));
    const std::string settings = Settings();
    EXPECT_NE(settings.find(place), std::string::npos) << "start " << start << "\n" << settings;
  }
}

TEST_F(ProgramAsProcess, EndsWhenAskedDuringAMessage) {
  const auto program = StartProcess();
  // Without a DX station the key shows a message.
  ASSERT_TRUE(PumpUntil([&] {
    program->PressKey("F5");
    return program->Windows() > 1;
  }));
  program->Send(SIGTERM);
  ASSERT_TRUE(PumpUntil([&] { return program->Ended(); }));
  EXPECT_EQ(program->Status(), 0);
  EXPECT_NE(Settings().find("IonCapLeft="), std::string::npos);
}

}  // namespace
}  // namespace skyhop::testing
