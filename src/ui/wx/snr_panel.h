#pragma once

#include <wx/panel.h>
#include <wx/stattext.h>

#include <array>

#include "ui/shared/prediction_view.h"
#include "ui/wx/control_set.h"

namespace skyhop {

/// The point prediction: a field for a frequency, and its prediction on both paths. Hidden, and
/// without its controls, until it is needed.
class SnrPanel : public wxPanel {
 public:
  SnrPanel(wxWindow* parent, ControlSet& controls);

  /// Shows or hides the panel according to `display`, and arranges the window around it.
  void Show_(const SnrDisplay& display);
  /// Creates the controls if they do not exist yet.
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
