#include "ui/wx/focus.h"

#include <wx/weakref.h>

namespace skyhop {
namespace {

/// A disabled control that waits for the keyboard focus, and the control that has it meanwhile.
/// There is only one focus.
struct LentFocus {
  wxWeakRef<wxWindow> owner;
  wxWeakRef<wxWindow> holder;
};

LentFocus& Lent() {
  static LentFocus lent;
  return lent;
}

void Disable(wxWindow& control, wxWindow* next) {
  wxWindow* owner = &control;
  // A holder that is disabled too passes the focus on.
  if (Lent().owner && Lent().holder == &control) owner = Lent().owner;
  if (next != nullptr && next->IsEnabled()) {
    next->SetFocus();
  } else {
    control.Navigate();
  }
  control.Disable();
  Lent().owner = owner;
  Lent().holder = wxWindow::FindFocus();
}

}  // namespace

void EnableKeepingFocus(wxWindow& control, bool enable, wxWindow* next) {
  if (!enable && control.IsEnabled() && control.HasFocus()) return Disable(control, next);
  control.Enable(enable);
  if (!enable || Lent().owner != &control) return;
  if (Lent().holder && Lent().holder->HasFocus()) control.SetFocus();
  Lent().owner = nullptr;
}

void LeaveFocus(const wxWindow& window, wxWindow& next) {
  for (const wxWindow* focus = wxWindow::FindFocus(); focus != nullptr;
       focus = focus->GetParent()) {
    if (focus == &window) return next.SetFocus();
    if (focus->IsTopLevel()) return;
  }
}

}  // namespace skyhop
