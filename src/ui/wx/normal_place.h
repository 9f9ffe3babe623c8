#pragma once

#include <wx/toplevel.h>

#include <vector>

#include "ui/shared/window_placement.h"

namespace skyhop {

/// Remembers where a window is, or would be restored to while it is minimised or maximised: the
/// toolkit only tells where it is now. Lives as long as its window, as a member of it.
class NormalPlace {
 public:
  explicit NormalPlace(wxTopLevelWindow& window);

  [[nodiscard]] WindowPlacement Placement() const;
  /// Puts the window there; minimised means normal.
  void Put(const WindowPlacement& placement);
  /// Puts the window to a place that is not maximised.
  void Put(const wxRect& place);
  [[nodiscard]] wxRect Place() const { return place_.IsEmpty() ? window_->GetRect() : place_; }

  /// Remembers where the window is now, as happens by itself when it is moved or sized. To be
  /// called before it is hidden: the window manager's frame may have come without an event.
  void Remember();

 private:
  wxTopLevelWindow* window_;
  /// Empty until the window has been shown or put somewhere.
  wxRect place_;
  /// What the window is larger than its client area; empty until it has been shown.
  wxSize frame_;
};

/// The monitors of the desktop, the main one first.
[[nodiscard]] std::vector<Monitor> DesktopMonitors();

}  // namespace skyhop
