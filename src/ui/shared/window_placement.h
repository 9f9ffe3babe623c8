#pragma once

#include <span>
#include <string>
#include <vector>

#include "common/diagnostics.h"
#include "common/machine_facts.h"
#include "common/settings.h"

namespace skyhop {

/// Place and state of a window on the desktop, in the window system's units.
struct WindowPlacement {
  /// The stored numbers.
  enum class State { kNormal = 0, kMinimized = 1, kMaximized = 2 };

  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  State state = State::kNormal;

  friend bool operator==(const WindowPlacement&, const WindowPlacement&) = default;
};

/// A window beside the main one, as its controller uses it.
class SideView {
 public:
  virtual ~SideView() = default;

  /// Creates the controls unless the window has them. The controller calls it before it sets
  /// values.
  virtual void CreateControls() = 0;
  /// Shows the window in front of the others, with its controls. It may be shown already.
  virtual void ShowWindow() = 0;
  virtual void HideWindow() = 0;
  [[nodiscard]] virtual bool Visible() const = 0;

  [[nodiscard]] virtual WindowPlacement Placement() const = 0;
  virtual void SetPlacement(const WindowPlacement& placement) = 0;
  /// The monitors of the desktop; the main one is first.
  [[nodiscard]] virtual std::vector<Monitor> Monitors() const = 0;
};

/// Saves the place of a window under the window's own name such as "IonCap", in section "Windows".
/// For a minimised or maximised window, `placement` holds its restored place. Failures are logged.
void SaveWindowPosition(const std::string& window, const WindowPlacement& placement,
                        const Common::Settings& settings, Diagnostics& diagnostics);

/// The stored place of a window. Uses `current` for values that are missing or unreadable. The
/// result is always on a monitor: a place outside moves to the nearest monitor, and a window larger
/// than its monitor shrinks to its size. A stored minimised state becomes normal, because a program
/// that starts minimised seems not to start. Unless the user has set "DualMonitor", the window
/// moves to the main monitor, the first one.
[[nodiscard]] WindowPlacement RestoreWindowPosition(const std::string& window,
                                                    const WindowPlacement& current,
                                                    std::span<const Monitor> monitors,
                                                    const Common::Settings& settings);

/// `placement`, moved and if necessary shrunk so that it is on one of the monitors. Without
/// monitors it is unchanged.
[[nodiscard]] WindowPlacement OnScreen(const WindowPlacement& placement,
                                       std::span<const Monitor> monitors);

}  // namespace skyhop
