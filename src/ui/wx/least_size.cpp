#include "ui/wx/least_size.h"

#include <wx/display.h>
#include <wx/sizer.h>

namespace skyhop {

LeastSize::LeastSize(wxTopLevelWindow& window) : window_(&window) {
  // The content can change at any time, and the window manager's frame has its size only after the
  // window is shown.
  window.Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
    Update();
    event.Skip();
  });
}

void LeastSize::Update() {
  if (window_->GetSizer() == nullptr || window_->IsBeingDeleted()) return;
  const wxSize frame = window_->GetSize() - window_->GetClientSize();
  wxSize least = window_->GetSizer()->GetMinSize();
  least.DecTo(MonitorArea(*window_).GetSize() - frame);
  if (window_->GetMinSize() == least + frame) return;
  window_->SetMinSize(least + frame);
  if (window_->IsIconized() || window_->IsMaximized()) return;
  wxSize size = window_->GetClientSize();
  size.IncTo(least);
  if (size != window_->GetClientSize()) window_->SetClientSize(size);
}

wxRect MonitorArea(const wxWindow& window) {
  const int monitor = wxDisplay::GetFromWindow(&window);
  return wxDisplay(monitor == wxNOT_FOUND ? 0U : static_cast<unsigned>(monitor)).GetClientArea();
}

}  // namespace skyhop
