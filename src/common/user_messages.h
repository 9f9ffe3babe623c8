#pragma once

#include <string>

namespace skyhop {

/// Tells the user something and waits until it was acknowledged: a message box whose only button is
/// OK, or a line on standard error where there is no window.
class UserMessages {
 public:
  virtual ~UserMessages() = default;

  virtual void Show(const std::string& text, const std::string& caption) = 0;
};

}  // namespace skyhop
