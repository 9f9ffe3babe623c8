#include "ui/wx/normal_place.h"

#include <wx/display.h>

namespace skyhop {

NormalPlace::NormalPlace(wxTopLevelWindow& window) : window_(&window) {
  window.Bind(wxEVT_MOVE, [this](wxMoveEvent& event) {
    Remember();
    event.Skip();
  });
  window.Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    Remember();
    event.Skip();
  });
}

void NormalPlace::Remember() {
  // A hidden window gets events for sizes that neither the user nor the program chose.
  if (window_->IsShown() && !window_->IsIconized() && !window_->IsMaximized()) {
    place_ = window_->GetRect();
    frame_ = window_->GetSize() - window_->GetClientSize();
  }
}

WindowPlacement NormalPlace::Placement() const {
  const wxRect place = Place();
  WindowPlacement placement{place.x, place.y, place.width, place.height,
                            WindowPlacement::State::kNormal};
  if (window_->IsIconized()) placement.state = WindowPlacement::State::kMinimized;
  if (window_->IsMaximized()) placement.state = WindowPlacement::State::kMaximized;
  return placement;
}

void NormalPlace::Put(const wxRect& place) {
  place_ = place;
  if (window_->IsShown() || frame_ == wxSize()) {
    window_->SetSize(place);
    return;
  }
  // The window manager removes its frame from a hidden window and adds it when the window is shown
  // again, so only the size of the client area stays the same.
  window_->Move(place.GetPosition());
  window_->SetClientSize(place.GetSize() - frame_);
}

void NormalPlace::Put(const WindowPlacement& placement) {
  Put(wxRect(placement.left, placement.top, placement.width, placement.height));
  window_->Maximize(placement.state == WindowPlacement::State::kMaximized);
}

std::vector<Monitor> DesktopMonitors() {
  std::vector<Monitor> monitors;
  for (unsigned i = 0; i < wxDisplay::GetCount(); ++i) {
    const wxDisplay display(i);
    const wxRect area = display.GetClientArea();
    const Monitor monitor{area.GetLeft(), area.GetTop(), area.GetRight() + 1, area.GetBottom() + 1};
    monitors.insert(display.IsPrimary() ? monitors.begin() : monitors.end(), monitor);
  }
  return monitors;
}

}  // namespace skyhop
