#pragma once

#include <wx/window.h>

namespace skyhop {

/// Enables or disables a control without losing the keyboard focus. A disabled control passes the
/// focus to `next`, or, if `next` is not enabled, to the control after it. When the control is
/// enabled again, it gets the focus back unless the user has moved it meanwhile.
void EnableKeepingFocus(wxWindow& control, bool enable, wxWindow* next = nullptr);

/// Moves the focus to `next` if a control within `window` has it. Call this before hiding `window`.
void LeaveFocus(const wxWindow& window, wxWindow& next);

}  // namespace skyhop
