// Tests the configuration window by keyboard.

#include <wx/choice.h>
#include <wx/listbox.h>
#include <wx/simplebook.h>
#include <wx/uiaction.h>

#include "gui_fixture.h"
#include "ui/wx/commit_field.h"
#include "ui/wx/wx_text.h"

namespace skyhop::testing {
namespace {

class ConfigurationByKeyboard : public GuiTest {
 protected:
  void Open() {
    Press(',', wxMOD_CONTROL);
    ASSERT_TRUE(PumpUntil(
        [&] { return ConfigurationWindow().IsShown() && ConfigurationWindow().IsActive(); }));
  }
  [[nodiscard]] wxWindow& CurrentPage() {
    for (wxWindow* window : Descendants(ConfigurationWindow())) {
      if (auto* book = dynamic_cast<wxSimplebook*>(window)) return *book->GetCurrentPage();
    }
    throw std::logic_error("no pages");
  }
  [[nodiscard]] wxListBox& List() {
    for (wxWindow* window : Descendants(ConfigurationWindow())) {
      if (auto* list = dynamic_cast<wxListBox*>(window)) return *list;
    }
    throw std::logic_error("no list of pages");
  }
  /// Selects a page in the list with the arrow keys.
  void GoToPage(const char* name) {
    List().SetFocus();
    ASSERT_TRUE(PumpUntil([&] { return List().HasFocus(); }));
    const int wanted = List().FindString(name);
    ASSERT_NE(wanted, wxNOT_FOUND) << name;
    Press(WXK_HOME);
    ASSERT_TRUE(PumpUntil([&] { return List().GetSelection() == 0; }));
    for (int at = 1; at <= wanted; ++at) {
      Press(WXK_DOWN);
      ASSERT_TRUE(PumpUntil([&] { return List().GetSelection() == at; }));
    }
    ASSERT_TRUE(PumpUntil([&] { return CurrentPage().IsShownOnScreen(); }));
  }
  /// Presses Tab until a control has the focus.
  void TabTo(const wxWindow& control) {
    const auto focused = [&] { return Focused(ConfigurationWindow()) == &control; };
    for (int i = 0; i < 60 && !focused(); ++i) {
      const wxWindow* const before = Focused(ConfigurationWindow());
      Press(WXK_TAB);
      ASSERT_TRUE(PumpUntil([&] {
        const wxWindow* const now = Focused(ConfigurationWindow());
        return now != nullptr && now != before;
      })) << "the Tab key does not leave "
          << (before == nullptr ? wxString("nothing") : before->GetName());
    }
    ASSERT_TRUE(focused()) << control.GetLabel();
  }
  void CloseByEscape() {
    Press(WXK_ESCAPE);
    ASSERT_TRUE(PumpUntil([&] { return !ConfigurationWindow().IsShown(); }));
    ASSERT_TRUE(PumpUntil([&] { return Frame().IsActive(); }));
  }
};

TEST_F(ConfigurationByKeyboard, ReachesEveryControlOfEveryPage) {
  Start();
  Open();
  for (unsigned page = 0; page < List().GetCount(); ++page) {
    GoToPage(FromWx(List().GetString(page)).c_str());
    SCOPED_TRACE(List().GetString(page));
    for (wxWindow* window : Descendants(CurrentPage())) {
      if (!window->IsShown() || !window->IsEnabled()) continue;
      const auto* radio = dynamic_cast<wxRadioButton*>(window);
      if (dynamic_cast<wxTextCtrl*>(window) != nullptr ||
          dynamic_cast<wxButton*>(window) != nullptr ||
          dynamic_cast<wxCheckBox*>(window) != nullptr ||
          dynamic_cast<wxChoice*>(window) != nullptr || (radio != nullptr && radio->GetValue())) {
        TabTo(*window);
      }
    }
  }
  CloseByEscape();
}

TEST_F(ConfigurationByKeyboard, AppliesSettingsAtOnceAndAfterARestart) {
  Start();
  EnterStations();
  Tabs().SetSelection(4);
  const bool miles = Shows(" miles");
  ASSERT_NE(miles, Shows(" km"));
  Open();
  GoToPage("Stations and units");
  wxRadioButton* const unit =
      FindControl<wxRadioButton>(CurrentPage(), miles ? "statute miles" : "kilometres");
  TabTo(*unit);
  Press(miles ? WXK_DOWN : WXK_UP);
  EXPECT_TRUE(PumpUntil([&] { return Shows(miles ? " km" : " miles"); }));

  GoToPage("Windows");
  wxCheckBox* const tips = FindControl<wxCheckBox>(CurrentPage(), "Show tool tips");
  ASSERT_TRUE(tips->GetValue());
  EXPECT_EQ(Field(TextField::kLocalLat).GetToolTipText(),
            "your latitude (strike Enter to update your Grid Square)");
  TabTo(*tips);
  Press(WXK_SPACE);
  EXPECT_TRUE(PumpUntil([&] { return Field(TextField::kLocalLat).GetToolTip() == nullptr; }));

  GoToPage("Prediction URLs");
  CommitField* address = nullptr;
  for (wxWindow* window : Descendants(CurrentPage())) {
    if (address == nullptr) address = dynamic_cast<CommitField*>(window);
  }
  TabTo(*address);
  Press('A', wxMOD_CONTROL);
  wxUIActionSimulator().Text("http://localhost/sfi.txt");
  ASSERT_TRUE(PumpUntil([&] { return address->Text() == "http://localhost/sfi.txt"; }));
  CloseByEscape();
  EXPECT_NE(Settings().find("http://localhost/sfi.txt"), std::string::npos)
      << "a field that still has the focus counts too";
  CloseWindow();

  Start();
  (void)Field(TextField::kSNRFrequency);  // creates all controls
  for (const wxWindow* window : Descendants(Frame())) {
    EXPECT_EQ(window->GetToolTip(), nullptr) << window->GetName();
  }
  EnterStations();
  EXPECT_TRUE(Shows(miles ? " km" : " miles"));
  Open();
  GoToPage("Windows");
  EXPECT_FALSE(FindControl<wxCheckBox>(CurrentPage(), "Show tool tips")->GetValue());
}

TEST_F(ConfigurationByKeyboard, OffersANewModeInTheMainWindow) {
  Start();
  Open();
  GoToPage("Mode-dependent settings");
  wxButton* const add = FindControl<wxButton>(CurrentPage(), "Add");
  TabTo(*add);
  Press(WXK_SPACE);
  ASSERT_TRUE(
      PumpUntil([] { return dynamic_cast<CommitField*>(wxWindow::FindFocus()) != nullptr; }));
  wxUIActionSimulator().Text("Beacon");
  Press(WXK_TAB);
  ASSERT_TRUE(PumpUntil([&] { return Settings().find("Beacon") != std::string::npos; }));
  CloseByEscape();
  for (wxWindow* window : Descendants(Frame())) {
    if (auto* modes = dynamic_cast<wxChoice*>(window)) {
      EXPECT_NE(modes->FindString("Beacon"), wxNOT_FOUND);
    }
  }
}

TEST_F(ConfigurationByKeyboard, TestsTheEngine) {
  Start();
  Open();
  GoToPage("Engine");
  wxButton* const test = FindControl<wxButton>(CurrentPage(), "Test the engine");
  ASSERT_NE(test, nullptr);
  TabTo(*test);
  Press(WXK_SPACE);
  const wxWindow* const result = Descendants(CurrentPage()).back();
  EXPECT_TRUE(PumpUntil([&] { return !result->GetLabel().empty() && test->IsEnabled(); }));
  EXPECT_EQ(FromWx(result->GetLabel()).find("failed"), std::string::npos) << result->GetLabel();
  EXPECT_FALSE(Program().Chart().HasResult()) << "a test is no prediction";
}

}  // namespace
}  // namespace skyhop::testing
