#pragma once

#include <wx/window.h>

namespace skyhop {

/// Enables or disables a control without losing the keyboard: a control that has it and is disabled
/// hands it to `next`, or without an enabled `next` to the control after it. The keyboard comes
/// back when the control is enabled again, unless the user has taken it elsewhere meanwhile.
void EnableKeepingFocus(wxWindow& control, bool enable, wxWindow* next = nullptr);

/// Before `window` is hidden: hands the keyboard to `next` when a control within the window has it.
void LeaveFocus(const wxWindow& window, wxWindow& next);

}  // namespace skyhop
