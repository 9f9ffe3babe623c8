#pragma once

#include <wx/panel.h>
#include <wx/stattext.h>

#include "ui/prediction/prediction_view.h"

namespace skyhop {

/// The strip above the chart that tells of a running or failed prediction; hidden otherwise.
class NoticeBar : public wxPanel {
 public:
  explicit NoticeBar(wxWindow* parent);

  void Show_(const Notice& notice);

 private:
  wxStaticText* text_;
};

}  // namespace skyhop
