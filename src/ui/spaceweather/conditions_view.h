#pragma once

#include <string>
#include <vector>

#include "ui/shared/window_placement.h"

namespace skyhop {

/// The current conditions window `CurrentConditions` without its rules: a read-only text box with a
/// fixed-width font and scroll bars that fills the window at every size. The controller decides
/// everything. When the user closes the window, it calls CurrentConditions::Form_QueryUnload
/// instead of closing.
///
/// Texts are UTF-8.
class ConditionsView {
 public:
  virtual ~ConditionsView() = default;

  /// Lines are separated by carriage return and line feed.
  virtual void SetText(const std::string& text) = 0;

  /// Shows the window in front of the others; it may be shown already.
  virtual void ShowWindow() = 0;
  virtual void HideWindow() = 0;
  [[nodiscard]] virtual bool Visible() const = 0;

  [[nodiscard]] virtual WindowPlacement Placement() const = 0;
  virtual void SetPlacement(const WindowPlacement& placement) = 0;
  /// The monitors of the desktop; the main one comes first.
  [[nodiscard]] virtual std::vector<Monitor> Monitors() const = 0;
};

}  // namespace skyhop
