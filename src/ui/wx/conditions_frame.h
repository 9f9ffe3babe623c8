#pragma once

#include <wx/textctrl.h>

#include "ui/spaceweather/current_conditions_window.h"
#include "ui/wx/side_frame.h"

namespace skyhop {

/// A window with a text that the user can read and copy: the bulletin of the current conditions, or
/// files.
class ConditionsFrame : public ViewFrame<ConditionsView> {
 public:
  /// Title, name and sizes of a window.
  struct Words {
    const char* title = "Skyhop Current Conditions";
    const char* name = "CurrentConditions";
    const char* text = "Current conditions bulletin";  ///< for screen readers
    wxSize size{680, 440};                             ///< of a fresh installation, in DIP
  };

  /// `parent` may be null. The window is not shown.
  ConditionsFrame(wxWindow* parent, const Words& words);

  /// Sends the window's events to `controller` from now on; it must outlive the window.
  void Attach(CurrentConditions& controller) { controller_ = &controller; }

  void SetText(const std::string& text) override;

 private:
  void MakeControls() override;
  void UserCloses() override;

  CurrentConditions* controller_ = nullptr;
  Words words_;
  wxTextCtrl* text_ = nullptr;
};

}  // namespace skyhop
