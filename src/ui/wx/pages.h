#pragma once

#include <wx/panel.h>

#include "ui/wx/control_set.h"

namespace skyhop {

// The pages of the tabbed dialog: layout only.

[[nodiscard]] wxPanel* MakeParametersPage(wxWindow* parent, ControlSet& controls);
[[nodiscard]] wxPanel* MakeTransmitterPage(wxWindow* parent, ControlSet& controls);
[[nodiscard]] wxPanel* MakeReceiverPage(wxWindow* parent, ControlSet& controls);
[[nodiscard]] wxPanel* MakeConditionsPage(wxWindow* parent, ControlSet& controls);
[[nodiscard]] wxPanel* MakePredictionPage(wxWindow* parent, ControlSet& controls);

/// The column of command buttons.
[[nodiscard]] wxPanel* MakeCommandColumn(wxWindow* parent, ControlSet& controls);

}  // namespace skyhop
