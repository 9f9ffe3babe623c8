#include "ui/wx/control_set.h"

#include <wx/settings.h>
#include <wx/sizer.h>

#include <algorithm>
#include <utility>

#include "ui/wx/canvas_paint.h"
#include "ui/wx/focus.h"
#include "ui/wx/wx_surface.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

constexpr const char* kNoMode = "(none)";

wxColour RefusedBackground() {
  return ToWx(PaletteOn(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW)).refused);
}

}  // namespace

ControlSet::ControlSet(ControlEvents& events, TieLabel tie_label)
    : events_(&events), tie_label_(std::move(tie_label)) {}

wxTextCtrl* ControlSet::Field(TextField field) {
  if (texts_.at(Index(field)) == nullptr && make_rest_) make_rest_();
  return texts_.at(Index(field));
}

wxButton* ControlSet::ButtonOf(Button button) {
  if (buttons_.at(Index(button)) == nullptr && make_rest_) make_rest_();
  return buttons_.at(Index(button));
}

void ControlSet::SetToolTip(wxWindow* control, std::string_view text) {
  if (text.empty()) return;
  tool_tips_.emplace_back(control, std::string(text));
  if (show_tool_tips_) control->SetToolTip(ToWx(text));
}

/// Ages grow, so the tip is made when it may be wanted.
void ControlSet::RefreshToolTip(TextField field) {
  if (!show_tool_tips_) return;
  const std::string origin = events_->Origin(field);
  if (origin.empty()) return;
  Field(field)->SetToolTip(ToWx(std::string(ToolTip(field)) + "\n" + origin));
}

void ControlSet::ShowToolTips(bool show) {
  show_tool_tips_ = show;
  for (const auto& [control, text] : tool_tips_) {
    if (show) {
      control->SetToolTip(ToWx(text));
    } else {
      control->UnsetToolTip();
    }
  }
  for (const auto& labels : labels_) {
    for (wxStaticText* label : labels) ShowWhole(*label);
  }
}

void ControlSet::OnChar(TextField field, wxKeyEvent& event) {
  const wxChar key = event.GetUnicodeKey();
  // Keys without a character, and those that are commands, are none of the filter's business.
  const bool typed = key >= WXK_SPACE && key != WXK_DELETE && !event.HasModifiers();
  if (typed && !events_->Accepts(field, static_cast<char32_t>(key))) return;
  event.Skip();
}

void ControlSet::Leave(TextField field) {
  bool& pending = leave_pending_.at(Index(field));
  if (!pending) return;
  // The user has gone to another window in the middle of a value, and will be back.
  const wxWindow* const focus = wxWindow::FindFocus();
  if (focus == nullptr || wxGetTopLevelParent(const_cast<wxWindow*>(focus)) !=
                              wxGetTopLevelParent(texts_.at(Index(field)))) {
    return;
  }
  pending = false;
  events_->Left(field);
}

bool ControlSet::CommitFocusedField() {
  bool accepted = true;
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    if (texts_.at(i) == nullptr) continue;
    if (!leave_pending_.at(i) && !texts_.at(i)->HasFocus()) continue;
    leave_pending_.at(i) = false;
    if (!events_->Left(static_cast<TextField>(i))) accepted = false;
  }
  return accepted;
}

std::string ControlSet::Text(TextField field) const {
  const wxTextCtrl* const text = texts_.at(Index(field));
  return text != nullptr ? FromWx(text->GetValue()) : unmade_.texts.at(Index(field));
}

void ControlSet::SetText(TextField field, const std::string& text) {
  wxTextCtrl* const control = texts_.at(Index(field));
  if (control == nullptr) {
    unmade_.texts.at(Index(field)) = text;
    return;
  }
  const wxString shown = ToWx(text);
  // Setting an equal text would move the insertion point.
  if (control->GetValue() != shown) control->ChangeValue(shown);
}

void ControlSet::MarkRefused(TextField field, bool refused) {
  refused_.at(Index(field)) = refused;
  wxTextCtrl* const text = texts_.at(Index(field));
  if (text == nullptr) return;
  text->SetBackgroundColour(refused ? RefusedBackground() : wxNullColour);
  text->Refresh();
}

void ControlSet::FollowTheme() {
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    if (texts_.at(i) != nullptr && refused_.at(i)) MarkRefused(static_cast<TextField>(i), true);
  }
  for (const OptionGroup group : indicators_) MakeIndicator(group);
}

int ControlSet::Selected(OptionGroup group) const {
  if (group == OptionGroup::kModeSNRCombo && modes_ != nullptr) return modes_->GetSelection() - 1;
  const Options& options = options_.at(Index(group));
  if (options.empty()) return unmade_.selected.at(Index(group));
  for (std::size_t i = 0; i < options.size(); ++i) {
    if (options[i] != nullptr && options[i]->GetValue()) return static_cast<int>(i);
  }
  return -1;
}

void ControlSet::Select(OptionGroup group, int index) {
  if (group == OptionGroup::kModeSNRCombo) return SelectMode(index);
  const Options& options = options_.at(Index(group));
  if (options.empty()) {
    unmade_.selected.at(Index(group)) = index;
    return;
  }
  if (index < 0 || index >= static_cast<int>(options.size())) return;
  options[static_cast<std::size_t>(index)]->SetValue(true);
}

void ControlSet::SelectMode(int index) {
  const std::size_t count = modes_ != nullptr ? modes_->GetCount() - 1 : unmade_.modes.size();
  const int offered = index < static_cast<int>(count) ? std::max(index, -1) : -1;
  if (modes_ != nullptr) {
    modes_->SetSelection(offered + 1);
  } else {
    unmade_.selected.at(Index(OptionGroup::kModeSNRCombo)) = offered;
  }
}

void ControlSet::SetModes(std::span<const std::string> modes) {
  if (modes_ == nullptr) {
    unmade_.modes.assign(modes.begin(), modes.end());
  } else {
    wxArrayString texts;
    texts.Add(kNoMode);
    for (const std::string& mode : modes) texts.Add(ToWx(mode));
    modes_->Set(texts);
  }
  SelectMode(-1);
}

bool ControlSet::Checked(CheckBox box) const {
  const wxCheckBox* const check = checks_.at(Index(box));
  return check != nullptr ? check->GetValue() : unmade_.checked.at(Index(box));
}

void ControlSet::SetChecked(CheckBox box, bool checked) {
  wxCheckBox* const check = checks_.at(Index(box));
  if (check != nullptr) {
    check->SetValue(checked);
  } else {
    unmade_.checked.at(Index(box)) = checked;
  }
}

void ControlSet::SetLabel(Label label, const std::string& text) {
  std::string& present = label_texts_.at(Index(label));
  if (present == text) return;
  present = text;
  ShowLabel(label);
}

void ControlSet::ShowLabel(Label label) {
  const wxString text = ToWx(label_texts_.at(Index(label)));
  for (wxStaticText* shown : labels_.at(Index(label))) {
    if (shown->GetLabel() == text) continue;
    // A label takes "&" for the mark of a shortcut, which is what doubled ones are for.
    shown->SetLabel(text);
    shown->InvalidateBestSize();
    shown->GetParent()->Layout();
    ShowWhole(*shown);
  }
}

/// Gives a label whose text is cut off a tool tip with the whole text.
void ControlSet::ShowWhole(wxStaticText& label) const {
  const bool cut = label.HasFlag(wxST_ELLIPSIZE_END) &&
                   label.GetTextExtent(label.GetLabelText()).x > label.GetSize().x;
  if (cut && show_tool_tips_) {
    label.SetToolTip(label.GetLabelText());
  } else {
    label.UnsetToolTip();
  }
}

void ControlSet::ShowLabels() {
  for (std::size_t label = 0; label < labels_.size(); ++label) {
    ShowLabel(static_cast<Label>(label));
  }
}

void ControlSet::Enable(Button button, bool enabled) {
  wxButton* const made = buttons_.at(Index(button));
  if (made != nullptr) {
    EnableKeepingFocus(*made, enabled, NextOf(button));
  } else {
    unmade_.disabled.at(Index(button)) = !enabled;
  }
}

/// Where the keyboard goes while `button` is disabled: from starting a prediction to ending it and
/// back. Null leaves it to the order of the window.
wxWindow* ControlSet::NextOf(Button button) const {
  switch (button) {
    case Button::kPathsButton:
    case Button::kPredictSPToCmd:
    case Button::kPredictLPToCmd:
    case Button::kPredictSPFromCmd:
    case Button::kPredictLPFromCmd:
      return buttons_.at(Index(Button::kAbortButton));
    case Button::kAbortButton:
      return buttons_.at(Index(Button::kPathsButton));
    default:
      return nullptr;
  }
}

bool ControlSet::Enabled(Button button) const {
  const wxButton* const made = buttons_.at(Index(button));
  return made != nullptr ? made->IsEnabled() : !unmade_.disabled.at(Index(button));
}

}  // namespace skyhop
