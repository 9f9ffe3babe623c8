#pragma once

#include <wx/toplevel.h>

#include <vector>

#include "ui/shared/window_placement.h"

namespace skyhop {

/// Remembers the place of a window, or for a minimised or maximised window its place when restored,
/// which the toolkit does not offer. Make it a member of its window: it uses the window as long as
/// it lives.
class NormalPlace {
 public:
  explicit NormalPlace(wxTopLevelWindow& window);

  [[nodiscard]] WindowPlacement Placement() const;
  /// Moves the window to `placement`; shows a minimised one as normal.
  void Put(const WindowPlacement& placement);
  /// Moves the window to a place that is not maximised.
  void Put(const wxRect& place);
  [[nodiscard]] wxRect Place() const { return place_.IsEmpty() ? window_->GetRect() : place_; }

  /// Remembers the present place of the window. This also happens when it is moved or sized. Call
  /// it before hiding the window, because the window manager may add its frame without an event.
  void Remember();

 private:
  wxTopLevelWindow* window_;
  /// Empty until the window is shown or gets a place.
  wxRect place_;
  /// The difference between the window and its client area; empty until the window is shown.
  wxSize frame_;
};

/// The monitors of the desktop, the main one first.
[[nodiscard]] std::vector<Monitor> DesktopMonitors();

}  // namespace skyhop
