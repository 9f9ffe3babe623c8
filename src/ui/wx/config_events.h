#pragma once

#include <utility>

#include "ui/configuration/ioncap_config.h"

namespace skyhop {

/// Where the pages of the configuration window send what the user does. The window exists before
/// its controller: until that is known, nothing is sent.
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
