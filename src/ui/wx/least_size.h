#pragma once

#include <wx/toplevel.h>

namespace skyhop {

/// Keeps a window so large that its content is never cut off, as far as the monitor allows. The
/// content is what the window's sizer holds; menu bar, status bar and the window manager's frame
/// come on top. Lives as long as its window, as a member of it.
class LeastSize {
 public:
  explicit LeastSize(wxTopLevelWindow& window);

  /// Follows the content, as happens by itself whenever the program is idle.
  void Update();

 private:
  wxTopLevelWindow* window_;
};

/// The area of the monitor that shows `window`, without the desktop's bars.
[[nodiscard]] wxRect MonitorArea(const wxWindow& window);

}  // namespace skyhop
