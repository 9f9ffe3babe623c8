// Tests the point prediction and the table of reliabilities on the screen.

#include "gui_fixture.h"
#include "screen.h"
#include "ui/prediction/chart/reliability_table.h"
#include "ui/wx/wx_text.h"

namespace skyhop::testing {
namespace {

class SnrOfWindow : public GuiTest {
 protected:
  /// Whether a visible label contains the text.
  [[nodiscard]] bool Reads(const std::string& text) {
    for (wxWindow* child : Descendants(Frame())) {
      auto* const label = dynamic_cast<wxStaticText*>(child);
      if (label == nullptr || !label->IsShownOnScreen()) continue;
      if (FromWx(label->GetLabelText()).find(text) != std::string::npos) return true;
    }
    return false;
  }
  [[nodiscard]] wxCheckBox& Box(const char* caption) {
    auto* const box = FindControl<wxCheckBox>(Frame(), caption);
    if (box == nullptr) throw std::logic_error(caption);
    return *box;
  }
};

TEST_F(SnrOfWindow, PredictsBothPathsDuringAChartRun) {
  Start();
  EnterStations();
  EXPECT_FALSE(Field(TextField::kSNRFrequency).IsShownOnScreen());
  Click(Box("SNR at a Frequency"));
  ASSERT_TRUE(PumpUntil([&] { return Field(TextField::kSNRFrequency).HasFocus(); }));
  Click(*Frame().Controls().ButtonOf(Button::kPathsButton));
  TypeInto(TextField::kSNRFrequency, "14074");
  Press(WXK_RETURN);
  EXPECT_TRUE(PumpUntil([&] { return Reads("14.074 MHz to IO91 at "); }));
  EXPECT_TRUE(PumpUntil([&] { return Reads(" dBm, S"); }));
  EXPECT_TRUE(Reads("Short path"));
  EXPECT_TRUE(Reads("Long path"));
  EXPECT_TRUE(PumpUntil([&] { return Program().Chart().HasResult() && !Running(); })) << Notice();
  TypeInto(TextField::kLocalPwr, "5");
  Press(WXK_TAB);
  EXPECT_TRUE(PumpUntil([&] { return Reads("Previous prediction: 14.074 MHz"); }));
  EXPECT_TRUE(dialogs_.messages.empty());
  CloseWindow();
  EXPECT_NE(Settings().find("ShowSNRDisplay"), std::string::npos) << Settings();
}

TEST_F(SnrOfWindow, SwitchesBetweenTableAndChart) {
  WriteSettings("[Configuration]\nEngine=3\n");
  Start();
  EnterStations();
  Predict();
  const auto dark_cells = [&] {
    const wxImage plot = ScreenPart(Frame().Canvas(), Program().Chart().Layout().ionprop);
    return CountPixels(plot, ReliabilityColors(95).fill);
  };
  EXPECT_EQ(dark_cells(), 0);
  Press('H', wxMOD_CONTROL);
  EXPECT_TRUE(PumpUntil([&] { return dark_cells() > 1000; }));
  Press('H', wxMOD_CONTROL);
  EXPECT_TRUE(PumpUntil([&] { return dark_cells() == 0; }));
}

}  // namespace
}  // namespace skyhop::testing
