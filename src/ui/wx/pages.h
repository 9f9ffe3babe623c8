#pragma once

#include <wx/panel.h>

#include "ui/wx/control_set.h"

namespace skyhop {

// The pages of the tabbed dialog: layout only. Each fills an empty panel with its controls.

void FillParametersPage(wxPanel& panel, ControlSet& controls);
void FillTransmitterPage(wxPanel& panel, ControlSet& controls);
void FillReceiverPage(wxPanel& panel, ControlSet& controls);
void FillConditionsPage(wxPanel& panel, ControlSet& controls);
void FillPredictionPage(wxPanel& panel, ControlSet& controls);

/// The column of command buttons.
[[nodiscard]] wxPanel* MakeCommandColumn(wxWindow* parent, ControlSet& controls);

}  // namespace skyhop
