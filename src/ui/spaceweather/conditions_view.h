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
class ConditionsView : public SideView {
 public:
  /// Lines are separated by carriage return and line feed.
  virtual void SetText(const std::string& text) = 0;
};

}  // namespace skyhop
