#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <array>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/shared/controls.h"

namespace skyhop {

/// Gets what the user does with the controls of the prediction window.
class ControlEvents {
 public:
  virtual ~ControlEvents() = default;
  virtual void Clicked(Button button) = 0;
  virtual void Chosen(OptionGroup group) = 0;
  virtual void Toggled(CheckBox box) = 0;
  /// Whether a typed character may enter a field.
  [[nodiscard]] virtual bool Accepts(TextField field, char32_t key) = 0;
  virtual void Entered(TextField field) = 0;
  /// Returns whether the field's text was accepted.
  virtual bool Left(TextField field) = 0;
  virtual void Changed(TextField field) = 0;
  virtual void DoubleClicked(TextField field) = 0;
  /// The source of a field's value, for its tool tip; may be empty.
  [[nodiscard]] virtual std::string Origin(TextField field) = 0;
};

/// One option of a group: its words and the index that choosing it means.
struct OptionText {
  int index = 0;
  std::string_view text;
};

/// Makes the controls of the prediction window, wires them and holds them by their names. The pages
/// lay them out. A control that is not made yet keeps what it is to show, and shows it from the
/// start: what fills the window needs no control to be there.
class ControlSet {
 public:
  /// Ties a caption to its field for screen readers; both are the toolkit's native handles.
  using TieLabel = std::function<void(void* label, void* field)>;

  /// `events` must outlive the controls.
  ControlSet(ControlEvents& events, TieLabel tie_label);

  /// `maker` makes all controls that are not there yet. It is called when one of them is asked for.
  void SetMaker(std::function<void()> maker) { make_rest_ = std::move(maker); }

  // Makers; each control may be made once, labels several times.
  /// The field's caption, to be put before the field.
  wxStaticText* MakeCaption(wxWindow* parent, TextField field);
  /// `characters` is the width that the field is made for. Call after MakeCaption.
  wxTextCtrl* MakeText(wxWindow* parent, TextField field, int characters);
  wxCheckBox* MakeCheckBox(wxWindow* parent, CheckBox box);
  wxButton* MakeButton(wxWindow* parent, Button button);
  wxStaticText* MakeLabel(wxWindow* parent, Label label, long style = 0);
  /// The options of a group, side by side or one below the other, in the order given.
  wxSizer* MakeOptions(wxWindow* parent, OptionGroup group, std::span<const OptionText> options,
                       int orientation);
  /// The options show something and cannot be chosen.
  void MakeIndicator(OptionGroup group);
  wxChoice* MakeModeList(wxWindow* parent);

  // Values.
  [[nodiscard]] std::string Text(TextField field) const;
  void SetText(TextField field, const std::string& text);
  void MarkRefused(TextField field, bool refused);
  [[nodiscard]] int Selected(OptionGroup group) const;
  void Select(OptionGroup group, int index);
  void SetModes(std::span<const std::string> modes);
  [[nodiscard]] bool Checked(CheckBox box) const;
  void SetChecked(CheckBox box, bool checked);
  void SetLabel(Label label, const std::string& text);
  /// Puts the texts into labels that were made since they came. Labels fill the room that the
  /// layout gives them, whatever they say; so this comes after it.
  void ShowLabels();
  void Enable(Button button, bool enabled);
  [[nodiscard]] bool Enabled(Button button) const;
  void ShowToolTips(bool show);
  /// Gives refused fields and indicators colours that fit the desktop's present theme.
  void FollowTheme();

  /// Tells that the field which has the focus was left, and whether its text was accepted. True
  /// when no field has the focus.
  bool CommitFocusedField();

  /// The control itself, made if need be.
  [[nodiscard]] wxTextCtrl* Field(TextField field);
  [[nodiscard]] wxButton* ButtonOf(Button button);

 private:
  /// What controls are to show that are not made yet.
  struct Unmade {
    Unmade() { selected.fill(-1); }

    std::array<std::string, kTextFieldCount> texts;
    std::array<int, kOptionGroupCount> selected{};  ///< -1 leaves it to the control
    std::array<bool, kCheckBoxCount> checked{};
    std::array<bool, kButtonCount> disabled{};
    std::vector<std::string> modes;
  };

  /// The radio button of each option index.
  using Options = std::vector<wxRadioButton*>;

  template <class Name>
  [[nodiscard]] static std::size_t Index(Name name) {
    return static_cast<std::size_t>(name);
  }
  void OnChar(TextField field, wxKeyEvent& event);
  void Leave(TextField field);
  void SelectMode(int index);
  [[nodiscard]] wxWindow* NextOf(Button button) const;
  void ShowLabel(Label label);
  void ShowWhole(wxStaticText& label) const;
  void SetToolTip(wxWindow* control, std::string_view text);
  void RefreshToolTip(TextField field);

  ControlEvents* events_;
  TieLabel tie_label_;
  std::function<void()> make_rest_;
  Unmade unmade_;
  std::array<wxTextCtrl*, kTextFieldCount> texts_{};
  std::array<wxStaticText*, kTextFieldCount> captions_{};
  std::array<bool, kTextFieldCount> leave_pending_{};
  std::array<bool, kTextFieldCount> refused_{};
  std::array<Options, kOptionGroupCount> options_{};
  std::array<wxCheckBox*, kCheckBoxCount> checks_{};
  std::array<wxButton*, kButtonCount> buttons_{};
  std::array<std::vector<wxStaticText*>, kLabelCount> labels_{};
  std::array<std::string, kLabelCount> label_texts_{};
  std::set<OptionGroup> indicators_;
  wxChoice* modes_ = nullptr;
  std::vector<std::pair<wxWindow*, std::string>> tool_tips_;
  bool show_tool_tips_ = true;
};

}  // namespace skyhop
