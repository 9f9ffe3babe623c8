#pragma once

#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/timer.h>

#include "ui/prediction/prediction_view.h"

namespace skyhop {

/// The strip above the chart that tells of a running or failed prediction; hidden otherwise.
class NoticeBar : public wxPanel {
 public:
  explicit NoticeBar(wxWindow* parent);

  /// Shows or hides the strip. A running prediction is shown only when it takes its time.
  void Show_(const Notice& notice);

  /// Takes colours that fit the desktop's present theme.
  void FollowTheme();

 private:
  void Update_();

  wxStaticText* text_;
  Notice notice_;
  wxTimer delay_;
};

}  // namespace skyhop
