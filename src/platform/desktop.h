#pragma once

#include <memory>

/// What a window needs from the operating system beyond the toolkit. A library of its own, since
/// programs without windows do without it.
namespace skyhop::platform {

/// While it lives, a toolkit that starts leaves the display's 3D drivers alone. Loading them takes
/// time and some 50 MB, and nothing here is drawn with them. What the environment says of it goes
/// first. No other thread may run meanwhile.
class PlainDisplayStart {
 public:
  PlainDisplayStart();
  ~PlainDisplayStart();
  PlainDisplayStart(const PlainDisplayStart&) = delete;
  PlainDisplayStart& operator=(const PlainDisplayStart&) = delete;

 private:
  bool changed_ = false;
};

/// Begins to look up the system's fonts beside the rest of the start: the first text that is
/// measured would have to wait for them. Called once the toolkit has started.
void LoadFontsAhead();

/// Tells screen readers that a caption names a field. Both are native handles of the toolkit's
/// windows.
void TieLabel(void* label, void* field);

/// Lays a window out in its size before it is shown: the toolkit may otherwise forget place and
/// size while it waits for the window manager. `window` is the native handle.
void LayOutHidden(void* window, int width, int height);

/// While it lives, the program's windows are light or dark as the desktop wishes, also when the
/// wish changes. Where the desktop does not tell, they are as the toolkit's own settings say. Made
/// after the toolkit has started.
class ColorSchemeFollower {
 public:
  ColorSchemeFollower();
  ~ColorSchemeFollower();
  ColorSchemeFollower(const ColorSchemeFollower&) = delete;
  ColorSchemeFollower& operator=(const ColorSchemeFollower&) = delete;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

/// From now on the system's requests to end the program are kept for EndRequested instead of ending
/// it at once: those of a terminal, a session that ends, or a service manager. A second request
/// ends it all the same.
void KeepEndRequests();

/// Whether such a request has come.
[[nodiscard]] bool EndRequested();

/// Whether the user has struck Esc in a window of the program while its events were held back. The
/// key is taken, so that it does nothing else; the other events stay.
bool TakeEscapeKey();

/// Cancels the native dialogs that are open. Returns whether there were any.
bool CancelNativeDialogs();

}  // namespace skyhop::platform
