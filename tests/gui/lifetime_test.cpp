// Tests what the program keeps from one start to the next.

#include <wx/display.h>

#include <optional>
#include <string>

#include "gui_fixture.h"
#include "ui/wx/nested_loops.h"

namespace skyhop::testing {
namespace {

using std::string_literals::operator""s;

class WindowOverTime : public GuiTest {
 protected:
  [[nodiscard]] wxCheckBox& Box(const char* label) {
    return *FindControl<wxCheckBox>(Frame(), label);
  }
  void ExpectOnScreen() {
    const wxRect desktop = wxDisplay(0U).GetClientArea();
    EXPECT_TRUE(PumpUntil([&] {
      const wxRect window = Frame().GetRect();
      return desktop.Contains(wxPoint(window.x + window.width / 2, window.y + window.height / 2)) &&
             window.y >= desktop.y && window.x >= desktop.x;
    })) << Frame().GetRect().x
        << "," << Frame().GetRect().y;
    EXPECT_LE(Frame().GetClientSize().x, desktop.width);
    EXPECT_LE(Frame().GetClientSize().y, desktop.height);
  }
};

TEST_F(WindowOverTime, RestoresInputsAndOptions) {
  Start();
  EnterStations("JN58", "PM95");
  TypeInto(TextField::kLocalPwr, "400");
  TypeInto(TextField::kAvail, "85");
  wxRadioButton* const rural = FindControl<wxRadioButton>(Frame(), "Rural");
  ShowPageOf(*rural);
  Click(*rural);
  ASSERT_TRUE(PumpUntil([&] { return rural->GetValue(); }));
  const bool keys = Box("Show Color Keys").GetValue();
  Click(Box("Show Color Keys"));
  ASSERT_TRUE(PumpUntil([&] { return Box("Show Color Keys").GetValue() != keys; }));
  const std::string latitude = Text(TextField::kLocalLat);
  const int noise = Frame().Controls().Selected(OptionGroup::kLocalNoiseLevel);
  CloseWindow();

  Start();
  EXPECT_EQ(Text(TextField::kLocalLat), latitude);
  EXPECT_EQ(Text(TextField::kLocalGrid), "JN58");
  EXPECT_EQ(Text(TextField::kDXGrid), "PM95");
  EXPECT_EQ(Text(TextField::kLocalPwr), "400");
  EXPECT_EQ(Text(TextField::kAvail), "85");
  EXPECT_EQ(Frame().Controls().Selected(OptionGroup::kLocalNoiseLevel), noise);
  EXPECT_NE(Box("Show Color Keys").GetValue(), keys);
}

TEST_F(WindowOverTime, ShowsStoredValuesOnPagesThatGetTheirControlsLater) {
  WriteSettings(
      "[Configuration]\nKindex=4\nNoiseLevel=3\nLcoalNoiseLevel=0\nDXPower=3\nSNRMode=0\n");
  Start();
  for (std::size_t page = 0; page < Tabs().GetPageCount(); ++page) {
    EXPECT_EQ(Tabs().GetPage(page)->GetChildren().empty(), page > 0);
    Tabs().SetSelection(page);
    EXPECT_FALSE(Tabs().GetPage(page)->GetChildren().empty());
  }
  EXPECT_TRUE(FindControl<wxRadioButton>(Frame(), "500 W")->GetValue());
  EXPECT_TRUE(FindControl<wxRadioButton>(Frame(), "Industrial")->GetValue()) << "at this station";
  const wxRadioButton* const here =
      FindControl<wxRadioButton>(*Tabs().GetPage(4), "Requested here");
  EXPECT_TRUE(here->GetValue());
  EXPECT_FALSE(here->IsEnabled()) << "it shows something and is not to be chosen";
  EXPECT_EQ(Field(TextField::kKindex).GetValue(), "4");
  EXPECT_TRUE(Shows("Your station transmits"));
  EXPECT_EQ(Frame().Controls().Selected(OptionGroup::kModeSNRCombo), 0);
}

TEST_F(WindowOverTime, RestoresPlaceSizeAndMaximisedState) {
  Start();
  Frame().SetSize(150, 120, 1210, 840);
  ASSERT_TRUE(PumpUntil([&] { return Frame().GetSize() == wxSize(1210, 840); }));
  const wxRect place = Frame().GetRect();
  CloseWindow();
  Start();
  EXPECT_TRUE(PumpUntil([&] {
    const wxRect now = Frame().GetRect();
    return now.GetSize() == place.GetSize() && std::abs(now.x - place.x) < 30 &&
           std::abs(now.y - place.y) < 50;
  })) << Frame().GetRect().x
      << "," << Frame().GetRect().y << " " << Frame().GetSize().x << "x" << Frame().GetSize().y;
  Frame().Maximize();
  ASSERT_TRUE(PumpUntil([&] { return Frame().IsMaximized(); }));
  CloseWindow();
  Start();
  EXPECT_TRUE(PumpUntil([&] { return Frame().IsMaximized(); }));
  Frame().Maximize(false);
  EXPECT_TRUE(PumpUntil([&] {
    return !Frame().IsMaximized() && std::abs(Frame().GetSize().x - 1210) < 30;
  })) << Frame().GetSize().x;
}

TEST_F(WindowOverTime, MovesOntoTheDesktopWhenStoredOutside) {
  for (const char* place : {"IonCapLeft=-5000\nIonCapTop=-3000\nIonCapWidth=1000\nIonCapHeight=700",
                            "IonCapLeft=9000\nIonCapTop=8000\nIonCapWidth=1000\nIonCapHeight=700",
                            "IonCapLeft=0\nIonCapTop=0\nIonCapWidth=99999\nIonCapHeight=99999",
                            "IonCapLeft=x\nIonCapTop=\nIonCapWidth=-7\nIonCapHeight=0"}) {
    SCOPED_TRACE(place);
    WriteSettings("[Windows]\n" + std::string(place) + "\nIonCapWindowState=1\n");
    Start();
    ExpectOnScreen();
    EXPECT_FALSE(Frame().IsIconized()) << "a program that starts out of sight seems not to start";
    CloseWindow();
  }
}

TEST_F(WindowOverTime, WorksWhenTheSettingsFileIsDamaged) {
  const auto garbage = "[Configuration\0\xFF\xFEPower=\x80\x81\nSNRMode=99\nXLat=99999"s;
  WriteSettings(garbage + std::string(100000, '\xA7'));
  Start();
  EnterStations();
  Predict();
  TypeInto(TextField::kLocalPwr, "321");
  CloseWindow();
  EXPECT_TRUE(std::filesystem::exists(config_ / "marlo/Skyhop.ini.damaged"));
  Start();
  EXPECT_EQ(Text(TextField::kLocalPwr), "321");
  for (const auto& [caption, text] : dialogs_.messages) {
    EXPECT_EQ(caption, "Skyhop Sunspot Number") << "all but the lost addresses is well: " << text;
  }
}

TEST_F(WindowOverTime, ClosesOnlyAfterOpenDialogsEnd) {
  Start();
  std::optional<NestedLoops::Scope> dialog(std::in_place);
  const wxWeakRef<PredictionFrame> frame(&Frame());
  Program().Controller().Commands().SetShutdownTrigger();
  PumpUntil([&] { return !frame; }, std::chrono::seconds(1));
  ASSERT_TRUE(frame) << "whoever opened the dialog needs the window";
  frame->Close();
  Pump();
  ASSERT_TRUE(frame);
  dialog.reset();
  EXPECT_TRUE(PumpUntil([&] { return !frame; }));
}

}  // namespace
}  // namespace skyhop::testing
