#pragma once

#include <wx/frame.h>

#include "ui/wx/normal_place.h"

namespace skyhop {

/// A window beside the main one: Esc and Ctrl+W close it like its close button does, and closing
/// leaves it to the controller to hide it.
class SideFrame : public wxFrame {
 public:
  /// `parent` may be null; `size` is that of a fresh installation, in DIP. The window is not shown.
  SideFrame(wxWindow* parent, const wxString& title, const wxString& name, wxSize size);

  /// The size and place of a fresh installation.
  void PutToDefaultPlace();

 protected:
  /// The user closes the window.
  virtual void UserCloses() = 0;

  /// Shows the window where it was, in front of the others.
  void BringUp();
  [[nodiscard]] NormalPlace& NormalPlaceOf() { return place_; }
  [[nodiscard]] const NormalPlace& NormalPlaceOf() const { return place_; }

 private:
  void OnClose(wxCloseEvent& event);
  void OnKey(wxKeyEvent& event);

  wxSize default_size_;
  NormalPlace place_;
};

}  // namespace skyhop
