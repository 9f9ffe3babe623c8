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
  /// As it is stored.
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

/// Saves where a window is, under the window's own name such as "IonCap", in section "Windows".
/// A minimised or maximised window has the place that it would be restored to. Failures are logged.
void SaveWindowPosition(const std::string& window, const WindowPlacement& placement,
                        const Common::Settings& settings, Diagnostics& diagnostics);

/// The stored place of a window; what is missing or unreadable is taken from `current`. The result
/// always lies on a monitor: a place beyond them comes back onto the nearest one, a window larger
/// than its monitor becomes as large as it. A stored minimised state is read as normal, since a
/// program that starts out of sight seems not to start. Unless the user has set "DualMonitor",
/// a place on any other than the main monitor, the first one, comes back onto that one.
[[nodiscard]] WindowPlacement RestoreWindowPosition(const std::string& window,
                                                    const WindowPlacement& current,
                                                    std::span<const Monitor> monitors,
                                                    const Common::Settings& settings);

/// `placement` moved and, where necessary, shrunk so that it lies on one of the monitors. Without
/// monitors it is returned as it is.
[[nodiscard]] WindowPlacement OnScreen(const WindowPlacement& placement,
                                       std::span<const Monitor> monitors);

}  // namespace skyhop
