#pragma once

#include <wx/toplevel.h>

namespace skyhop {

/// Keeps a window large enough to show its whole content, as far as the monitor allows. The content
/// is what the window's sizer holds; menu bar, status bar and the window manager's frame are added.
/// Make it a member of its window: it uses the window as long as it lives.
class LeastSize {
 public:
  explicit LeastSize(wxTopLevelWindow& window);

  /// Adapts the minimum size to the content. This also happens whenever the program is idle.
  void Update();

 private:
  wxTopLevelWindow* window_;
};

/// The area of the monitor that shows `window`, without the desktop's bars.
[[nodiscard]] wxRect MonitorArea(const wxWindow& window);

}  // namespace skyhop
