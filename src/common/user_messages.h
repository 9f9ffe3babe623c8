#pragma once

#include <string>

namespace skyhop {

/// Shows the user a message and waits until the user acknowledges it: a message box whose only
/// button is OK, or a line on standard error where there is no window.
class UserMessages {
 public:
  virtual ~UserMessages() = default;

  virtual void Show(const std::string& text, const std::string& caption) = 0;
};

}  // namespace skyhop
