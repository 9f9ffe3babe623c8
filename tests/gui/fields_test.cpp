// Tests typing and pasting into the fields, and the window's messages about it.

#include <wx/uiaction.h>

#include <tuple>

#include "gui_fixture.h"
#include "ui/wx/wx_text.h"

namespace skyhop::testing {
namespace {

using Message = std::pair<std::string, std::string>;

class FieldsOfWindow : public GuiTest {
 protected:
  /// Inserts a text like the clipboard and input methods, which bypass the key filter.
  void Insert(TextField field, const wxString& text) {
    SCOPED_TRACE(Caption(field));
    wxTextCtrl& control = Field(field);
    ShowPageOf(control);
    if (!control.HasFocus()) Click(control);
    ASSERT_TRUE(PumpUntil([&] { return control.HasFocus(); }));
    control.SelectAll();
    control.WriteText(text);
  }

  /// Leaves the field and waits until the program has handled that.
  void Leave() {
    wxWindow* const left = wxWindow::FindFocus();
    Press(WXK_TAB);
    ASSERT_TRUE(PumpUntil([&] { return wxWindow::FindFocus() != left; }));
    Pump();
  }
};

TEST_F(FieldsOfWindow, RefuseUselessKeys) {
  Start();
  const std::tuple<TextField, const char*, const char*> filters[] = {
      {TextField::kLocalLat, "4x0n", "40n"},
      {TextField::kAvail, "9.5", "95"},
      {TextField::kTheDate, "1/5-nov-26", "15-nov-26"},
  };
  for (const auto& [field, typed, kept] : filters) {
    TypeInto(field, "");
    // The last key of each text is valid, so its arrival shows that all keys are handled.
    wxUIActionSimulator().Text(typed);
    EXPECT_TRUE(PumpUntil([&, at = field, text = kept] { return Text(at) == text; }))
        << typed << " became " << Text(field);
  }
}

TEST_F(FieldsOfWindow, MarkRefusedTextsUntilTheyAreCorrected) {
  Start();
  struct Refusal {
    TextField field;
    const char* text;
    const char* message;
    const char* accepted;
  };
  const Refusal refusals[] = {
      {TextField::kLocalLat, "99 N", "Illegal latitude", "40 30 N"},
      {TextField::kDXGrid, "ZZ99", "Illegal grid square", "IO91"},
      {TextField::kTheDate, "31-feb-26", "Illegal date", "15-nov-26"},
      {TextField::kSNR, "999", "Illegal SNR", "24"},
      {TextField::kKindex, "99", "Illegal geomagnetic K-index", "2"},
  };
  for (const Refusal& refusal : refusals) {
    dialogs_.messages.clear();
    TypeInto(refusal.field, refusal.text);
    Leave();
    ASSERT_TRUE(PumpUntil([&] { return !dialogs_.messages.empty(); })) << refusal.message;
    EXPECT_EQ(dialogs_.messages, (std::vector<Message>{{"Skyhop", refusal.message}}));
    EXPECT_EQ(Text(refusal.field), refusal.text);
    EXPECT_TRUE(Marked(refusal.field)) << refusal.message;
    TypeInto(refusal.field, refusal.accepted);
    Leave();
    EXPECT_TRUE(PumpUntil([&] { return !Marked(refusal.field); })) << refusal.message;
    EXPECT_EQ(dialogs_.messages.size(), 1U) << "the corrected text is no cause for a message";
  }
}

TEST_F(FieldsOfWindow, ShowExactMessagesWhenInputsAreInvalid) {
  Start();
  const auto told = [&](const char* message) {
    dialogs_.messages.clear();
    Click(*Frame().Controls().ButtonOf(Button::kPathsButton));
    EXPECT_TRUE(PumpUntil([&] { return !dialogs_.messages.empty(); })) << message;
    EXPECT_EQ(dialogs_.messages, (std::vector<Message>{{"Skyhop", message}}));
    EXPECT_FALSE(Running());
  };
  told("DX station latitude or longitude not specified");
  EnterStations();
  // The prediction checks the text. Leaving the field adds no second message.
  TypeInto(TextField::kLocalTakeOff, "99");
  told(
      "Invalid Takeoff specified in the 'Your Stations' panel on the Main window's Parameters tab");
}

TEST_F(FieldsOfWindow, KeepValidValuesWhenAnythingIsPasted) {
  Start();
  // This makes its field visible.
  Program().Controller().SetSNRDisplayActive(true);
  EnterStations();
  TypeInto(TextField::kLocalPwr, "100");
  TypeInto(TextField::kLocalTakeOff, "5");
  TypeInto(TextField::kFlux, "120");
  TypeInto(TextField::kKindex, "2");
  TypeInto(TextField::kSSN, "79");
  TypeInto(TextField::kSNR, "24");
  TypeInto(TextField::kAvail, "90");
  Leave();
  std::vector<std::string> valid;
  for (int i = 0; i < kTextFieldCount; ++i) valid.push_back(Text(static_cast<TextField>(i)));

  wxString book = wxString::FromUTF8("\xC3\xBC\xE6\x97\xA5 x");
  while (book.length() < 10000) book += book;
  wxString megabytes = book;
  while (megabytes.length() < 1000000) megabytes += megabytes;
  const wxString inserted[] = {
      book.Left(60), wxString::FromUTF8("\xE2\x80\xAE\xC2\xA0\xF0\x9F\x93\xA1"), "a\tb\x01 c\r\nd"};
  const auto insert = [&](TextField field, const wxString& text) {
    Insert(field, text);
    Leave();
    EXPECT_TRUE(PumpUntil([&] { return Marked(field); })) << Caption(field);
  };
  for (const wxString& text : {book, megabytes}) {
    Insert(TextField::kLocalGrid, text);
    EXPECT_EQ(Text(TextField::kLocalGrid), "") << "what is longer than any value is not let in";
  }
  for (const wxString& text : inserted) {
    for (int i = 0; i < kTextFieldCount; ++i) insert(static_cast<TextField>(i), text);
  }
  // The next start must not read one of these texts either.
  CloseWindow();
  dialogs_.messages.clear();
  Start();
  for (int i = 0; i < kTextFieldCount; ++i) {
    const auto field = static_cast<TextField>(i);
    // Every start fetches the sunspot number.
    if (field == TextField::kSSN) continue;
    // The station's square was deleted, so the next start computes it from the station's place, in
    // full length.
    const std::string shown = Text(field).substr(0, field == TextField::kLocalGrid ? 4 : 60);
    EXPECT_EQ(shown, valid.at(static_cast<std::size_t>(i))) << Caption(field);
    EXPECT_FALSE(Marked(field)) << Caption(field);
  }
  EnterStations();
  Predict();
  EXPECT_TRUE(dialogs_.messages.empty());
}

TEST_F(FieldsOfWindow, SetTodayOnADoubleClick) {
  Start();
  const std::string today = Text(TextField::kTheDate);
  ASSERT_NE(today, "");
  TypeInto(TextField::kTheDate, "15-nov-20");
  EXPECT_FALSE(FindControl<wxCheckBox>(Frame(), "Show Current Time")->GetValue())
      << "the clock would overwrite what is typed";
  wxTextCtrl& date = Field(TextField::kTheDate);
  wxUIActionSimulator pointer;
  pointer.MouseMove(date.ClientToScreen(wxPoint(20, date.GetClientSize().y / 2)));
  pointer.MouseDblClick();
  EXPECT_TRUE(PumpUntil([&] { return Text(TextField::kTheDate) == today; }))
      << Text(TextField::kTheDate);
}

}  // namespace
}  // namespace skyhop::testing
