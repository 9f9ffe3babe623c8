// Tests that the keyboard alone reaches everything.

#include <gtk/gtk.h>

#include <wx/listbox.h>
#include <wx/menu.h>
#include <wx/uiaction.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <sstream>

#include "common/files.h"
#include "common/text.h"
#include "gui_fixture.h"
#include "ui/wx/wx_text.h"

namespace skyhop::testing {
namespace {

class KeyboardAlone : public GuiTest {
 protected:
  /// Presses Tab until the focus returns to where it began.
  std::vector<wxWindow*> TabThrough(int modifiers = 0) {
    std::vector<wxWindow*> stops;
    const wxWindow* const begin = Focused(Frame());
    for (wxWindow* at = Focused(Frame()); stops.size() < 200;) {
      Press(WXK_TAB, modifiers);
      const wxWindow* const before = at;
      if (!PumpUntil([&] { return Focused(Frame()) != before; }, std::chrono::seconds(10))) {
        ADD_FAILURE() << "the Tab key does not leave " << NameOf(before);
        return stops;
      }
      at = Focused(Frame());
      if (at == nullptr) {
        ADD_FAILURE() << "the Tab key leads nowhere from " << NameOf(before);
        return stops;
      }
      stops.push_back(at);
      if (at == begin) return stops;
    }
    ADD_FAILURE() << "the Tab key does not come back";
    return stops;
  }

  static std::string NameOf(const wxWindow* window) {
    if (window == nullptr) return "nothing";
    return FromWx(window->GetName() + " \"" + window->GetLabel() + "\"");
  }

  /// Whether Tab must reach a control: of radio buttons only the selected one, since the arrow keys
  /// reach the others.
  static bool IsStop(wxWindow* window) {
    if (!window->IsShownOnScreen() || !window->IsEnabled()) return false;
    if (const auto* radio = dynamic_cast<wxRadioButton*>(window)) return radio->GetValue();
    return dynamic_cast<wxTextCtrl*>(window) != nullptr ||
           dynamic_cast<wxButton*>(window) != nullptr ||
           dynamic_cast<wxCheckBox*>(window) != nullptr ||
           dynamic_cast<wxChoice*>(window) != nullptr ||
           dynamic_cast<wxListBox*>(window) != nullptr ||
           dynamic_cast<ChartCanvas*>(window) != nullptr;
  }

  static void ExpectAllVisited(const wxWindow& frame, const std::vector<wxWindow*>& stops) {
    for (wxWindow* window : Descendants(frame)) {
      if (!IsStop(window)) continue;
      EXPECT_EQ(std::count(stops.begin(), stops.end(), window), 1) << NameOf(window);
    }
  }

  /// Within a group the focus moves in reading order: along a row, then down.
  static void ExpectReadingOrder(const std::vector<wxWindow*>& stops) {
    for (std::size_t i = 0; i + 2 < stops.size(); ++i) {
      if (stops[i]->GetParent() != stops[i + 1]->GetParent()) continue;
      const wxRect here = stops[i]->GetScreenRect();
      const wxRect next = stops[i + 1]->GetScreenRect();
      const bool right = next.x >= here.GetRight() && next.y < here.GetBottom();
      EXPECT_TRUE(right || next.y >= here.GetBottom())
          << NameOf(stops[i]) << " before " << NameOf(stops[i + 1]);
    }
  }
};

TEST_F(KeyboardAlone, VisitsEveryControlByTab) {
  Start();
  for (std::size_t page = 0; page < Tabs().GetPageCount(); ++page) {
    Tabs().SetSelection(page);
    wxCheckBox* const begin = FindControl<wxCheckBox>(Frame(), "Show Open Bands");
    begin->SetFocus();
    ASSERT_TRUE(PumpUntil([&] { return begin->HasFocus(); }));
    SCOPED_TRACE(Tabs().GetPageText(page));
    const std::vector<wxWindow*> stops = TabThrough();
    ExpectAllVisited(Frame(), stops);
    ExpectReadingOrder(stops);
    std::vector<wxWindow*> back = TabThrough(wxMOD_SHIFT);
    ASSERT_EQ(back.size(), stops.size());
    // Both end where they began.
    std::reverse(back.begin(), back.end() - 1);
    EXPECT_EQ(back, stops);
  }
  EXPECT_TRUE(dialogs_.messages.empty());
}

TEST_F(KeyboardAlone, FindsTheCaptionOfEveryField) {
  Start();
  for (int i = 0; i < kTextFieldCount; ++i) {
    const auto field = static_cast<TextField>(i);
    GList* const labels =
        gtk_widget_list_mnemonic_labels(static_cast<GtkWidget*>(Field(field).GetHandle()));
    ASSERT_EQ(g_list_length(labels), 1U) << Caption(field);
    EXPECT_EQ(gtk_label_get_text(GTK_LABEL(labels->data)), Caption(field));
    g_list_free(labels);
    EXPECT_EQ(FromWx(Field(field).GetName()), Caption(field));
  }
}

TEST_F(KeyboardAlone, PredictsAbortsAndChangesTheChart) {
  Start();
  EnterStations();
  Press(WXK_F5);
  ASSERT_TRUE(PumpUntil([&] { return Program().Chart().HasResult() && !Running(); })) << Notice();

  struct Shortcut {
    char key;
    int path;
    int direction;
  };
  ReplaceEngine("exec sleep 600\n");
  ControlSet& controls = Frame().Controls();
  for (const Shortcut& shortcut : {Shortcut{'1', 0, 1}, {'2', 1, 1}, {'3', 0, 0}, {'4', 1, 0}}) {
    Press(shortcut.key, wxMOD_CONTROL);
    ASSERT_TRUE(PumpUntil([&] { return Running(); })) << shortcut.key;
    EXPECT_EQ(controls.Selected(OptionGroup::kPath), shortcut.path) << shortcut.key;
    EXPECT_EQ(controls.Selected(OptionGroup::kPredictSignals), shortcut.direction);
    Press(WXK_ESCAPE);
    ASSERT_TRUE(PumpUntil([&] { return !Running(); })) << shortcut.key;
  }
  for (const auto& [key, box] : {std::pair('L', CheckBox::kPlotEnable),
                                 {'B', CheckBox::kOpenBandEnable},
                                 {'K', CheckBox::kShowColorKeyCheck},
                                 {'T', CheckBox::kShowCurrentTimeCheck}}) {
    for (int i = 0; i < 2; ++i) {
      const bool before = controls.Checked(box);
      Press(key, wxMOD_CONTROL);
      EXPECT_TRUE(PumpUntil([&, which = box] { return controls.Checked(which) != before; })) << key;
    }
  }
  // The shortcut letters of the controls' captions.
  Press('P', wxMOD_ALT);
  ASSERT_TRUE(PumpUntil([&] { return Running(); }));
  Press('A', wxMOD_ALT);
  ASSERT_TRUE(PumpUntil([&] { return !Running(); }));
  Press('Q', wxMOD_CONTROL);
  EXPECT_TRUE(PumpUntil([] { return wxWindow::FindWindowByName("IonCap") == nullptr; }));
}

TEST_F(KeyboardAlone, KeepsFocusWhenButtonsAreDisabled) {
  Start();
  EnterStations();
  ReplaceEngine("exec sleep 600\n");
  ControlSet& controls = Frame().Controls();
  wxButton* const abort = controls.ButtonOf(Button::kAbortButton);
  for (const Button button : {Button::kPathsButton, Button::kPredictLPToCmd}) {
    wxButton* const predict = controls.ButtonOf(button);
    predict->SetFocus();
    ASSERT_TRUE(PumpUntil([&] { return Focused(Frame()) == predict; }));
    Press(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([&] { return Running(); }));
    EXPECT_TRUE(PumpUntil([&] { return Focused(Frame()) == abort; })) << NameOf(predict);
    Press(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([&] { return !Running(); })) << "the key reaches Abort";
    EXPECT_TRUE(PumpUntil([&] { return Focused(Frame()) == predict; })) << NameOf(predict);
  }
  wxButton* const update = controls.ButtonOf(Button::kUpdateSSNCmd);
  ShowPageOf(*update);
  update->SetFocus();
  ASSERT_TRUE(PumpUntil([&] { return Focused(Frame()) == update; }));
  ServeSunspotNumber("96");
  Press(WXK_SPACE);
  ASSERT_TRUE(PumpUntil([&] { return Text(TextField::kSSN) == "96"; }));
  EXPECT_TRUE(PumpUntil([&] { return Focused(Frame()) == update; }));

  // A field that disappears with its panel.
  Press('R', wxMOD_CONTROL);
  ASSERT_TRUE(PumpUntil([&] { return Focused(Frame()) == &Field(TextField::kSNRFrequency); }));
  Press('R', wxMOD_CONTROL);
  EXPECT_TRUE(PumpUntil([&] { return Focused(Frame()) == &Frame().Canvas(); }));
}

TEST_F(KeyboardAlone, CommitsTheEditedFieldBeforeAPrediction) {
  Start();
  EnterStations();
  TypeInto(TextField::kDXGrid, "JO62");
  Press(WXK_F5);
  ASSERT_TRUE(PumpUntil([&] { return Program().Chart().HasResult() && !Running(); })) << Notice();
  EXPECT_EQ(Text(TextField::kDXLat), "52 30' 0\" N");
}

/// The keys that a table of the guide lists, such as "Ctrl+S".
std::set<std::string> GuideKeys(const std::string& table) {
  std::set<std::string> keys;
  const std::string guide = ReadFile(SKYHOP_GUIDE, std::size_t{1} << 20U);
  const std::size_t begin = guide.find("<table id=\"" + table + "\">");
  EXPECT_NE(begin, std::string::npos) << table;
  if (begin == std::string::npos) return keys;
  std::istringstream lines(guide.substr(begin, guide.find("</table>", begin) - begin));
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("<tr><td>")) continue;
    line = line.substr(8, line.find("</td>") - 8);
    for (const char* tag : {"<kbd>", "</kbd>"}) line = ReplaceAll(line, tag, "");
    EXPECT_TRUE(keys.insert(line).second) << line << " twice in " << table;
  }
  return keys;
}

/// "Alt+P" for "&Predict"; empty for a caption without a marked letter.
std::string LetterKey(const wxString& words) {
  const wxString plain = wxString(words).Mid(0).BeforeFirst('\t');
  const int mark = plain.Find('&');
  if (mark == wxNOT_FOUND || plain.Mid(static_cast<std::size_t>(mark), 2) == "&&") return {};
  return "Alt+" + FromWx(plain.Mid(static_cast<std::size_t>(mark) + 1, 1).Upper());
}

TEST_F(KeyboardAlone, MatchesTheGuidesListOfMenuKeys) {
  Start();
  std::set<std::string> keys;
  const wxMenuBar& bar = *Frame().GetMenuBar();
  for (std::size_t menu = 0; menu < bar.GetMenuCount(); ++menu) {
    for (const wxMenuItem* item : bar.GetMenu(menu)->GetMenuItems()) {
      const wxString label = item->GetItemLabel();
      EXPECT_FALSE(label.Contains("....")) << label;
      if (label.Contains("\t")) keys.insert(FromWx(label.AfterFirst('\t')));
    }
  }
  EXPECT_EQ(GuideKeys("keys-menu"), keys);
}

TEST_F(KeyboardAlone, MatchesTheGuidesListOfLetters) {
  Start();
  (void)Field(TextField::kSNRFrequency);
  for (const char* name : {"IonCap", "SolarForecast", "BeaconMonitor", "IoncapConfig"}) {
    auto& window = *dynamic_cast<wxFrame*>(wxWindow::FindWindowByName(name));
    if (auto* const side = dynamic_cast<SideFrame*>(&window)) side->CreateControls();
    std::set<std::string> keys;
    for (const wxWindow* control : Descendants(window)) {
      if (dynamic_cast<const wxControl*>(control) == nullptr) continue;
      keys.insert(LetterKey(control->GetLabel()));
    }
    const wxMenuBar* const bar = window.GetMenuBar();
    for (std::size_t menu = 0; bar != nullptr && menu < bar->GetMenuCount(); ++menu) {
      keys.insert(LetterKey(bar->GetMenuLabel(menu)));
    }
    keys.erase("");
    EXPECT_EQ(GuideKeys(std::string("keys-") + name), keys) << name;
  }
}

TEST_F(KeyboardAlone, ReportsAMissingBrowserOnce) {
  WriteSettings("[Configuration]\nURL0=https://example.org/a-page\nURL1=\nURL2=\nURL3=\n");
  Start();
  const std::string path = std::getenv("PATH");
  ::setenv("PATH", home_.Path().c_str(), 1);
  wxMenu& weather = *Frame().GetMenuBar()->GetMenu(4);
  const int page = weather.FindItem("A page (example.org)");
  ASSERT_NE(page, wxNOT_FOUND);
  EXPECT_EQ(weather.GetHelpString(page), "https://example.org/a-page");
  wxCommandEvent click(wxEVT_MENU, page);
  Frame().ProcessWindowEvent(click);
  ::setenv("PATH", path.c_str(), 1);
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
  PumpUntil([end] { return std::chrono::steady_clock::now() > end; });
  ASSERT_EQ(dialogs_.messages.size(), 1U);
  EXPECT_EQ(dialogs_.messages[0].second,
            "https://example.org/a-page cannot be opened in a browser");
}

}  // namespace
}  // namespace skyhop::testing
