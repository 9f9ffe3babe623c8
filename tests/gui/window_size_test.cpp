// Tests the sizes of the windows: the program keeps them over closing and opening, and never cuts
// off content.

#include <wx/frame.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/statbox.h>

#include "gui_fixture.h"
#include "ui/wx/wx_text.h"

namespace skyhop::testing {
namespace {

struct SideWindow {
  const char* name;
  Button button;
};
constexpr SideWindow kSideWindows[] = {{"SolarForecast", Button::kForecastCmd},
                                       {"CurrentConditions", Button::kCurrentCmd},
                                       {"IoncapConfig", Button::kConfigCmd},
                                       {"BeaconMonitor", Button::kBeaconCmd}};

class WindowSizes : public GuiTest {
 protected:
  WindowSizes() {
    for (const char* page : {"/forecast", "/wwv"}) server_.Serve(page, Reply("200 OK", "none"));
  }

  static wxFrame& Window(const SideWindow& window) {
    return *dynamic_cast<wxFrame*>(wxWindow::FindWindowByName(window.name));
  }
  /// Opens the window and waits until the window manager has framed it.
  void Open(const SideWindow& window) {
    Click(*Frame().Controls().ButtonOf(window.button));
    ASSERT_TRUE(PumpUntil([&] { return Window(window).IsActive(); })) << window.name;
    Settle();
  }
  static void Close(const SideWindow& window) {
    Window(window).Close();
    ASSERT_TRUE(PumpUntil([&] { return !Window(window).IsShown(); }));
    Settle();
  }
  /// Waits for the window manager. If it is slow, the test finds fewer faults, but never a false
  /// one.
  static void Settle() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
    PumpUntil([end] { return std::chrono::steady_clock::now() > end; });
  }

  static std::string Text(wxSize size) {
    return std::to_string(size.x) + "x" + std::to_string(size.y);
  }

  /// Makes a window as small as possible and expects all of it to be visible.
  static void ExpectNothingCutOff(wxFrame& window) {
    window.SetSize(50, 50);
    Settle();
    for (const wxWindow* child : Descendants(window)) {
      const wxWindow* const parent = child->GetParent();
      // Ignore controls that are scrolled or on another page. A group's rectangle begins below its
      // title.
      if (!child->IsShownOnScreen() || dynamic_cast<const wxScrolledWindow*>(parent) != nullptr ||
          dynamic_cast<const wxStaticBox*>(child) != nullptr) {
        continue;
      }
      const std::string what =
          FromWx(window.GetName() + ": " + child->GetName() + " \"" + child->GetLabel() + "\"");
      const wxRect area = child->GetScreenRect();
      EXPECT_TRUE(parent->GetScreenRect().Contains(area)) << what;
      if (dynamic_cast<const wxButton*>(child) != nullptr ||
          dynamic_cast<const wxCheckBox*>(child) != nullptr ||
          dynamic_cast<const wxRadioButton*>(child) != nullptr) {
        EXPECT_GE(area.width, child->GetBestSize().x) << what;
        EXPECT_GE(area.height, child->GetBestSize().y) << what;
      }
    }
  }
};

TEST_F(WindowSizes, StayTheSameAfterClosingAndOpening) {
  Start();
  for (const SideWindow& window : kSideWindows) {
    Open(window);
    wxSize size = Window(window).GetSize();
    for (int time = 1; time <= 2; ++time) {
      Close(window);
      Open(window);
      EXPECT_EQ(Text(Window(window).GetSize()), Text(size)) << window.name << " " << time;
      size += wxSize(30, 20);
      Window(window).SetSize(size);
      Settle();
    }
    Close(window);
  }
  // Peers can hide and show the main window too.
  const wxSize size = Frame().GetSize();
  Frame().Hide();
  Settle();
  Frame().Show();
  Settle();
  EXPECT_EQ(Text(Frame().GetSize()), Text(size));
}

TEST_F(WindowSizes, ReturnToTheFirstSizesOnReset) {
  Start();
  const wxSize main = Frame().GetSize();
  for (const SideWindow& window : kSideWindows) {
    Open(window);
    const wxSize first = Window(window).GetSize();
    for (const bool open : {true, false}) {
      Window(window).SetSize(first + wxSize(60, 40));
      Frame().SetSize(main + wxSize(40, 30));
      Settle();
      if (!open) Close(window);
      Program().Controller().Commands().ResetWindows(0);
      Settle();
      if (!open) Open(window);
      EXPECT_EQ(Text(Window(window).GetSize()), Text(first)) << window.name << " " << open;
      EXPECT_EQ(Text(Frame().GetSize()), Text(main));
    }
    Close(window);
  }
}

TEST_F(WindowSizes, ShowAllControlsWhenSmallest) {
  Start();
  for (std::size_t page = 0; page < Tabs().GetPageCount(); ++page) {
    Tabs().SetSelection(page);
    SCOPED_TRACE(Tabs().GetPageText(page));
    ExpectNothingCutOff(Frame());
  }
  const wxRect inside(Frame().ClientToScreen(wxPoint(0, 0)), Frame().GetClientSize());
  EXPECT_GE(inside.height, Frame().GetSizer()->GetMinSize().y) << "menu and status bar take room";
  for (const SideWindow& window : kSideWindows) {
    Open(window);
    ExpectNothingCutOff(Window(window));
    Close(window);
  }
}

}  // namespace
}  // namespace skyhop::testing
