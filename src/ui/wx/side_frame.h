#pragma once

#include <wx/frame.h>

#include <string_view>
#include <utility>
#include <vector>

#include "ui/wx/least_size.h"
#include "ui/wx/normal_place.h"

namespace skyhop {

/// A window beside the main one. The close button, Esc and Ctrl+W ask the controller to hide it.
/// The user cannot make it smaller than its controls need.
///
/// The window has no controls until it is shown for the first time, so that they do not delay the
/// start of the program.
class SideFrame : public wxFrame {
 public:
  /// `parent` may be null. `size` is that of a fresh installation, in DIP for text of the usual
  /// size. The window is not shown.
  SideFrame(wxWindow* parent, const wxString& title, const wxString& name, wxSize size);

  bool Show(bool show = true) override;

  /// The size and place of a fresh installation.
  void PutToDefaultPlace();

  /// Creates the controls unless the window has them.
  void CreateControls();

  /// Shows or hides the tool tips of AddToolTip; at first they are shown.
  void ShowToolTips(bool show);

 protected:
  /// Creates the controls; called once.
  virtual void MakeControls() = 0;

  void AddToolTip(wxWindow* control, std::string_view text);
  /// The user closes the window.
  virtual void UserCloses() = 0;

  /// A length in pixels. `dip` is for text of the usual size; the result is longer for larger text.
  [[nodiscard]] int TextPixels(int dip) const;

  /// Shows the window at its last place, in front of the others.
  void BringUp();
  [[nodiscard]] NormalPlace& NormalPlaceOf() { return place_; }
  [[nodiscard]] const NormalPlace& NormalPlaceOf() const { return place_; }

 private:
  void OnClose(wxCloseEvent& event);
  void OnKey(wxKeyEvent& event);
  [[nodiscard]] wxSize DefaultSize() const;

  wxSize default_size_;
  NormalPlace place_;
  LeastSize least_size_;
  bool has_controls_ = false;
  bool show_tool_tips_ = true;
  std::vector<std::pair<wxWindow*, wxString>> tool_tips_;
};

/// A side frame with the window functions of its view.
template <class View>
class ViewFrame : public SideFrame, public View {
 public:
  using SideFrame::SideFrame;

  void CreateControls() override { SideFrame::CreateControls(); }
  void ShowWindow() override { BringUp(); }
  void HideWindow() override { Hide(); }
  [[nodiscard]] bool Visible() const override { return IsShown(); }
  [[nodiscard]] WindowPlacement Placement() const override { return NormalPlaceOf().Placement(); }
  void SetPlacement(const WindowPlacement& placement) override { NormalPlaceOf().Put(placement); }
  [[nodiscard]] std::vector<Monitor> Monitors() const override { return DesktopMonitors(); }
};

}  // namespace skyhop
