#pragma once

#include <utility>

#include "ui/configuration/ioncap_config.h"

namespace skyhop {

/// Sends the user's actions on the pages of the configuration window to the controller. The window
/// is created before its controller; until Attach, nothing is sent.
class ConfigEvents {
 public:
  void Attach(IoncapConfig& controller) { controller_ = &controller; }

  template <class... Parameters, class... Arguments>
  void Send(void (IoncapConfig::*event)(Parameters...), Arguments&&... arguments) const {
    if (controller_ != nullptr) (controller_->*event)(std::forward<Arguments>(arguments)...);
  }

 private:
  IoncapConfig* controller_ = nullptr;
};

}  // namespace skyhop
