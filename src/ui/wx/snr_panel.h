#pragma once

#include <wx/panel.h>
#include <wx/stattext.h>

#include <array>

#include "ui/prediction/snr_display.h"
#include "ui/wx/control_set.h"

namespace skyhop {

/// The point prediction: a frequency to be typed in, and what is predicted of it on both paths.
class SnrPanel : public wxPanel {
 public:
  SnrPanel(wxWindow* parent, ControlSet& controls);

  /// Shows itself or hides, as `display` says, and arranges what is around it.
  void Show_(const SnrDisplay& display);

 private:
  static constexpr std::size_t kColumns = 6;

  void Fill(std::size_t row, const SnrRow& texts);

  wxStaticText* headline_;
  wxStaticText* engine_;
  wxStaticText* problem_;
  wxSizer* table_ = nullptr;
  std::array<std::array<wxStaticText*, kColumns>, 2> cells_{};
};

}  // namespace skyhop
