#pragma once

#include <memory>

/// The services of the operating system that a window needs beyond the toolkit. They are a separate
/// library because programs without windows do not need them.
namespace skyhop::platform {

/// While this object lives, a toolkit that starts does not load the display's 3D drivers. Loading
/// them takes time and some 50 MB, and the program draws nothing with them. A setting for them in
/// the environment takes precedence. No other thread may run meanwhile.
class PlainDisplayStart {
 public:
  PlainDisplayStart();
  ~PlainDisplayStart();
  PlainDisplayStart(const PlainDisplayStart&) = delete;
  PlainDisplayStart& operator=(const PlainDisplayStart&) = delete;

 private:
  bool changed_ = false;
};

/// Starts to load the system's fonts in the background, so that the first measured text does not
/// wait for them. Call it after the toolkit has started.
void LoadFontsAhead();

/// Tells screen readers that a caption names a field. Both are native handles of the toolkit's
/// windows.
void TieLabel(void* label, void* field);

/// Gives a window its layout at this size before it is shown. Otherwise the toolkit may lose place
/// and size while it waits for the window manager. `window` is the native handle.
void LayOutHidden(void* window, int width, int height);

/// While this object lives, the program's windows are light or dark as the desktop's setting
/// demands, and follow its changes. Without such a setting, the toolkit's own settings apply.
/// Create it after the toolkit has started.
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

/// From now on, a request of the system to end the program does not end it at once: EndRequested
/// reports it. Such requests come from a terminal, a session that ends, or a service manager. A
/// second request ends the program at once.
void KeepEndRequests();

/// Whether the system has made such a request.
[[nodiscard]] bool EndRequested();

/// Whether the user has pressed Esc in a window of the program while its events were held back.
/// Removes the key press from the queue and keeps the other events.
bool TakeEscapeKey();

/// Cancels the open native dialogs. Returns whether there were any.
bool CancelNativeDialogs();

}  // namespace skyhop::platform
