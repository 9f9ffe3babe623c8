// Creates the controls of a ControlSet.

#include <wx/settings.h>
#include <wx/sizer.h>

#include "ui/wx/control_set.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// Far more than any value needs, and little enough to keep a pasted book out of a field.
constexpr unsigned long kLongestText = 60;

/// The least width of a label, in DIP.
constexpr int kLeastLabel = 60;

}  // namespace

wxStaticText* ControlSet::MakeCaption(wxWindow* parent, TextField field) {
  auto* caption = new wxStaticText(parent, wxID_ANY, ToWx(Caption(field)));
  captions_.at(Index(field)) = caption;
  return caption;
}

wxTextCtrl* ControlSet::MakeText(wxWindow* parent, TextField field, int characters) {
  auto* text = new wxTextCtrl(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxTE_PROCESS_ENTER);
  text->SetInitialSize(text->GetSizeFromTextSize(text->GetTextExtent(wxString('0', characters))));
  text->SetMaxLength(kLongestText);
  texts_.at(Index(field)) = text;
  wxStaticText* const caption = captions_.at(Index(field));
  if (caption != nullptr) {
    text->SetName(wxStaticText::RemoveMnemonics(caption->GetLabel()));
    if (tie_label_) tie_label_(caption->GetHandle(), text->GetHandle());
  }
  SetToolTip(text, ToolTip(field));
  SetText(field, std::exchange(unmade_.texts.at(Index(field)), {}));
  if (refused_.at(Index(field))) MarkRefused(field, true);

  text->Bind(wxEVT_CHAR, [this, field](wxKeyEvent& event) { OnChar(field, event); });
  text->Bind(wxEVT_TEXT_ENTER, [this, field](wxCommandEvent&) { events_->Entered(field); });
  text->Bind(wxEVT_TEXT, [this, field](wxCommandEvent& event) {
    events_->Changed(field);
    event.Skip();
  });
  text->Bind(wxEVT_ENTER_WINDOW, [this, field](wxMouseEvent& event) {
    RefreshToolTip(field);
    event.Skip();
  });
  text->Bind(wxEVT_LEFT_DCLICK, [this, field](wxMouseEvent& event) {
    events_->DoubleClicked(field);
    event.Skip();
  });
  text->Bind(wxEVT_KILL_FOCUS, [this, field, text](wxFocusEvent& event) {
    // A message box must not open while the focus is on its way to the next control.
    leave_pending_.at(Index(field)) = true;
    text->CallAfter([this, field] { Leave(field); });
    event.Skip();
  });
  return text;
}

wxCheckBox* ControlSet::MakeCheckBox(wxWindow* parent, CheckBox box) {
  auto* check = new wxCheckBox(parent, wxID_ANY, ToWx(Caption(box)));
  checks_.at(Index(box)) = check;
  SetToolTip(check, ToolTip(box));
  check->SetValue(unmade_.checked.at(Index(box)));
  check->Bind(wxEVT_CHECKBOX, [this, box](wxCommandEvent&) { events_->Toggled(box); });
  return check;
}

wxButton* ControlSet::MakeButton(wxWindow* parent, Button button) {
  auto* made = new wxButton(parent, wxID_ANY, ToWx(Caption(button)));
  buttons_.at(Index(button)) = made;
  SetToolTip(made, ToolTip(button));
  if (unmade_.disabled.at(Index(button))) made->Disable();
  made->Bind(wxEVT_BUTTON, [this, button](wxCommandEvent&) { events_->Clicked(button); });
  return made;
}

wxStaticText* ControlSet::MakeLabel(wxWindow* parent, Label label, long style) {
  auto* text = new wxStaticText(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                style | wxST_NO_AUTORESIZE);
  // The text must not decide how wide the window is.
  text->SetMinSize(wxSize(parent->FromDIP(kLeastLabel), -1));
  text->Bind(wxEVT_SIZE, [this, text](wxSizeEvent& event) {
    ShowWhole(*text);
    event.Skip();
  });
  labels_.at(Index(label)).push_back(text);
  return text;
}

wxSizer* ControlSet::MakeOptions(wxWindow* parent, OptionGroup group,
                                 std::span<const OptionText> options, int orientation) {
  auto* sizer = new wxBoxSizer(orientation);
  Options& made = options_.at(Index(group));
  made.assign(options.size(), nullptr);
  long style = wxRB_GROUP;
  for (const OptionText& option : options) {
    auto* radio = new wxRadioButton(parent, wxID_ANY, ToWx(option.text), wxDefaultPosition,
                                    wxDefaultSize, style);
    style = 0;
    made.at(static_cast<std::size_t>(option.index)) = radio;
    SetToolTip(radio, ToolTip(group));
    radio->Bind(wxEVT_RADIOBUTTON, [this, group](wxCommandEvent&) { events_->Chosen(group); });
    const int side = orientation == wxHORIZONTAL ? wxRIGHT : wxBOTTOM;
    sizer->Add(radio,
               wxSizerFlags().Border(side, parent->FromDIP(orientation == wxHORIZONTAL ? 10 : 2)));
  }
  Select(group, unmade_.selected.at(Index(group)));
  return sizer;
}

void ControlSet::MakeIndicator(OptionGroup group) {
  for (wxRadioButton* option : options_.at(Index(group))) {
    if (option == nullptr) continue;
    option->Disable();
    // It is to be read all the same.
    option->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
  }
  indicators_.insert(group);
}

wxChoice* ControlSet::MakeModeList(wxWindow* parent) {
  modes_ = new wxChoice(parent, wxID_ANY);
  const int selected = unmade_.selected.at(Index(OptionGroup::kModeSNRCombo));
  SetModes(unmade_.modes);
  Select(OptionGroup::kModeSNRCombo, selected);
  SetToolTip(modes_, ToolTip(OptionGroup::kModeSNRCombo));
  modes_->Bind(wxEVT_CHOICE,
               [this](wxCommandEvent&) { events_->Chosen(OptionGroup::kModeSNRCombo); });
  return modes_;
}

}  // namespace skyhop
