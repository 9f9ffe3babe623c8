#pragma once

#include <wx/panel.h>
#include <wx/stattext.h>

#include <array>

#include "ui/prediction/prediction_view.h"
#include "ui/wx/control_set.h"

namespace skyhop {

/// The point prediction: a frequency to be typed in, and what is predicted of it on both paths.
/// Hidden, and without its controls, until it is wanted.
class SnrPanel : public wxPanel {
 public:
  /// `controls` must outlive the panel.
  SnrPanel(wxWindow* parent, ControlSet& controls);

  /// Shows itself or hides, as `display` says, and arranges what is around it.
  void Show_(const SnrDisplay& display);
  /// Makes the controls unless they are there.
  void MakeControls();

 private:
  static constexpr std::size_t kColumns = 6;

  void Fill(std::size_t row, const SnrRow& texts);

  ControlSet* controls_;
  wxStaticText* headline_ = nullptr;
  wxStaticText* engine_ = nullptr;
  wxStaticText* problem_ = nullptr;
  wxSizer* table_ = nullptr;
  std::array<std::array<wxStaticText*, kColumns>, 2> cells_{};
};

}  // namespace skyhop
