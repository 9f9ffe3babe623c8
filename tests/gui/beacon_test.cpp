// Tests the beacon window on the system's own clock, with predictions of the built-in engine.

#include <wx/listctrl.h>
#include <wx/uiaction.h>

#include <algorithm>

#include "beacon/beacon_files.h"
#include "beacon/schedule.h"
#include "common/dates.h"
#include "common/files.h"
#include "gui_fixture.h"
#include "screen.h"
#include "ui/wx/painted_canvas.h"
#include "ui/wx/wx_text.h"

namespace skyhop::testing {
namespace {

using std::chrono::milliseconds;

constexpr int kNow = 1;  // columns of the list
constexpr int kShortPath = 4;
constexpr int kPredicted = 7;

class BeaconWindows : public GuiTest {
 protected:
  void Open() {
    wxButton& button = *Frame().Controls().ButtonOf(Button::kBeaconCmd);
    ShowPageOf(button);
    Click(button);
    ASSERT_TRUE(PumpUntil([&] { return Window().IsActive() && List().GetItemCount() > 0; }));
  }

  [[nodiscard]] static wxFrame& Window() {
    return *dynamic_cast<wxFrame*>(wxWindow::FindWindowByName("BeaconMonitor"));
  }
  template <class Kind>
  [[nodiscard]] static Kind& Named(const char* name) {
    return *dynamic_cast<Kind*>(wxWindow::FindWindowByName(name, &Window()));
  }
  [[nodiscard]] static wxListView& List() { return Named<wxListView>("Beacons on the bands"); }
  [[nodiscard]] static std::string Cell(long row, int column) {
    return FromWx(List().GetItemText(row, column));
  }
  [[nodiscard]] static bool Tells(const std::string& text) {
    const std::vector<wxWindow*> windows = Descendants(Window());
    return std::any_of(windows.begin(), windows.end(), [&](wxWindow* window) {
      const auto* label = dynamic_cast<wxStaticText*>(window);
      return label != nullptr && label->IsShown() &&
             FromWx(label->GetLabelText()).find(text) != std::string::npos;
    });
  }
  static void Choose(const char* name, const char* text) {
    auto& list = Named<wxChoice>(name);
    const int index = list.FindString(text);
    ASSERT_NE(index, wxNOT_FOUND) << text;
    list.SetSelection(index);
    wxCommandEvent event(wxEVT_CHOICE, list.GetId());
    event.SetEventObject(&list);
    event.SetInt(index);
    list.ProcessWindowEvent(event);
    Pump();
  }
  [[nodiscard]] static UtcTime Clock() {
    return std::chrono::floor<milliseconds>(std::chrono::system_clock::now());
  }
};

TEST_F(BeaconWindows, ShowsAndPredictsTheBands) {
  Start();
  EnterStations();
  Open();
  const BeaconModule::Schedule schedule(
      *BeaconModule::ReadBeaconFiles(home_.Path(), false, Program().GetDiagnostics()).schedule);
  ASSERT_TRUE(PumpUntil([&] {
    // A slot may end during the comparison.
    const UtcTime before = Clock();
    bool same = List().GetItemCount() == 5;
    for (std::size_t band = 0; same && band < 5; ++band) {
      same = Cell(static_cast<long>(band), kNow) == schedule.CallOn(band, before);
    }
    return same;
  }));
  EXPECT_NE(Cell(0, kShortPath).find(" mi"), std::string::npos);
  ASSERT_TRUE(PumpUntil([&] {
    for (long band = 0; band < 5; ++band) {
      if (Cell(band, kPredicted).empty()) return false;
    }
    return !Tells("Predicting");
  }));
  const auto& canvas = Named<PaintedCanvas>("BeaconDay");
  const auto open_pixels = [&] {
    const wxSize size = canvas.GetClientSize();
    return CountPixels(ScreenPart(canvas, {0, 0, double(size.x), double(size.y)}), {218, 112, 218},
                       4);
  };
  EXPECT_TRUE(PumpUntil([&] { return open_pixels() > 1000; })) << open_pixels();

  // The user can still predict.
  Frame().Raise();
  ASSERT_TRUE(PumpUntil([&] { return Frame().IsActive(); }));
  Predict();
}

TEST_F(BeaconWindows, MarksABeaconByKeyFromTheNote) {
  Start();
  Open();
  auto& note = Named<wxTextCtrl>("S-meter or note");
  Click(note);
  ASSERT_TRUE(PumpUntil([&] { return note.HasFocus(); }));
  wxUIActionSimulator().Text("S7");
  ASSERT_TRUE(PumpUntil([&] { return note.GetValue() == "S7"; }));
  Press(WXK_F2);
  ASSERT_TRUE(PumpUntil([&] { return Tells("is marked as heard"); }));
  EXPECT_TRUE(note.IsEmpty());
  const std::string log = ReadFile(home_ / "BeaconHeard.csv", 1000);
  EXPECT_NE(log.find(",14100,yes,S7\n"), std::string::npos) << log;
  // A press of another key is not a repetition of the first one.
  wxUIActionSimulator().Text("S8");
  ASSERT_TRUE(PumpUntil([&] { return note.GetValue() == "S8"; }));
  Press(WXK_F3);
  EXPECT_TRUE(PumpUntil([&] { return note.IsEmpty(); }));

  dialogs_.answer = [](wxDialog&) { return wxID_CANCEL; };
  Press(WXK_ESCAPE);
  EXPECT_TRUE(PumpUntil([&] { return !Window().IsShown(); }));
}

TEST_F(BeaconWindows, ChangesSlotsOnTime) {
  Start();
  WriteFile(home_ / BeaconModule::kCustomScheduleFile,
            "slot, 0.5\nfrequencies, 14100, 1\nOH2B\nW6WX\nVR2B\nYV5B\nCS3B\n");
  Open();
  Click(*FindControl<wxCheckBox>(Window(), "Custom schedule"));
  ASSERT_TRUE(PumpUntil([&] { return List().GetItemCount() == 1; }));
  EXPECT_TRUE(Tells("CustomBeaconSchedule.txt, line 2, column 21: \"1\" is not a frequency"));
  // A busy machine may delay some slots, so the median counts. No slot may begin early.
  std::vector<milliseconds> late;
  for (int edge = 0; edge < 9; ++edge) {
    const std::string before = Cell(0, kNow);
    ASSERT_TRUE(PumpUntil([&] { return Cell(0, kNow) != before; }));
    late.push_back((Clock() - UtcTime()) % milliseconds(500));
  }
  std::sort(late.begin(), late.end());
  EXPECT_LE(late[late.size() / 2], milliseconds(50));
  RecordProperty("median_ms", static_cast<int>(late[late.size() / 2].count()));
  RecordProperty("worst_ms", static_cast<int>(late.back().count()));
}

TEST_F(BeaconWindows, RestoresSelectionAndPlace) {
  Start();
  Open();
  Choose("Select by", "Call");
  Choose("Selected", "OH2B");
  Click(*FindControl<wxCheckBox>(Window(), "Turn antenna"));
  Window().SetSize(40, 50, 1100, 800);
  ASSERT_TRUE(PumpUntil([&] { return std::abs(Window().GetSize().x - 1100) < 30; }));
  CloseWindow();
  EXPECT_NE(Settings().find("Call=OH2B"), std::string::npos);

  Start();
  Open();
  EXPECT_EQ(Named<wxChoice>("Selected").GetStringSelection(), "OH2B");
  EXPECT_TRUE(FindControl<wxCheckBox>(Window(), "Turn antenna")->IsChecked());
  EXPECT_FALSE(FindControl<wxCheckBox>(Window(), "Follow")->IsChecked());
  EXPECT_LT(std::abs(Window().GetSize().x - 1100), 30);
}

}  // namespace
}  // namespace skyhop::testing
