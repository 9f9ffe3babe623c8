#pragma once

#include <wx/frame.h>

#include <functional>
#include <utility>
#include <vector>

#include "ui/wx/least_size.h"
#include "ui/wx/normal_place.h"

namespace skyhop {

/// A window beside the main one: Esc and Ctrl+W close it like its close button does, and closing
/// leaves it to the controller to hide it.
///
/// Its controls are made when it is first shown, or before by Furnish(), so that a window that
/// nobody looks at costs no time when the program starts. What is set until then is kept. The
/// window cannot be made smaller than its controls need.
class SideFrame : public wxFrame {
 public:
  /// `parent` may be null; `size` is that of a fresh installation, in DIP and for text of the usual
  /// size. The window is not shown.
  SideFrame(wxWindow* parent, const wxString& title, const wxString& name, wxSize size);

  bool Show(bool show = true) override;

  /// The size and place of a fresh installation.
  void PutToDefaultPlace();

  /// Makes the controls unless they are there.
  void Furnish();
  [[nodiscard]] bool Furnished() const { return furnished_; }

 protected:
  /// Makes the controls; called once.
  virtual void MakeControls() = 0;

  /// Calls `change`, which uses controls: at once where they are there, else as soon as they are.
  template <class Change>
  void WithControls(Change&& change) {
    if (furnished_) {
      std::forward<Change>(change)();
    } else {
      changes_.emplace_back(std::forward<Change>(change));
    }
  }
  /// The user closes the window.
  virtual void UserCloses() = 0;

  /// Pixels for a length in DIP that is meant for text of the usual size: more for larger text.
  [[nodiscard]] int TextPixels(int dip) const;

  /// Shows the window where it was, in front of the others.
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
  bool furnished_ = false;
  std::vector<std::function<void()>> changes_;  ///< for controls that are not there yet
};

}  // namespace skyhop
