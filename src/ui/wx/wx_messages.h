#pragma once

#include <wx/window.h>

#include "common/pause.h"
#include "common/user_messages.h"

namespace skyhop {

/// Message boxes with an OK button, over the program's active window.
class WxMessages : public UserMessages {
 public:
  void Show(const std::string& text, const std::string& caption) override;
};

/// Waits and lets the windows repaint themselves meanwhile. Delays the user's input until after the
/// wait; timers and peers may run during it.
class WxPause : public Pause {
 public:
  void Wait(std::chrono::milliseconds duration) override;
};

}  // namespace skyhop
