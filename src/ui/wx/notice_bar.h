#pragma once

#include <wx/button.h>
#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/timer.h>

#include <functional>

#include "ui/shared/prediction_view.h"

namespace skyhop {

/// The strip above the chart that explains a running, failed or doubtful prediction; hidden
/// otherwise. A notice with an action has a button.
class NoticeBar : public wxPanel {
 public:
  /// Calls `on_click` when the user clicks the button.
  NoticeBar(wxWindow* parent, std::function<void()> on_click);

  /// Shows or hides the strip. Shows a running prediction only after a short delay.
  void Show_(const Notice& notice);

  /// Takes colours that fit the desktop's present theme.
  void FollowTheme();

 private:
  void Update_();

  wxStaticText* text_;
  wxButton* button_;
  Notice notice_;
  wxTimer delay_;
};

}  // namespace skyhop
