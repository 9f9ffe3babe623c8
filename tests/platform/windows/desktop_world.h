#pragma once

#include <functional>
#include <memory>
#include <string>

#include "contract/link_world.h"

namespace skyhop::testing {

/// Dispatches the messages of this thread's windows. Returns whether there were any.
bool RunMessages();

/// The desktop, and this thread's message loop.
class DesktopWorld : public LinkWorld {
 public:
  [[nodiscard]] std::unique_ptr<LinkTransport> MakeTransport(const std::string& name) override;
  [[nodiscard]] std::unique_ptr<LinkPeer> StartPeer(const std::string& name) override;
  bool RunUntil(const std::function<bool()>& done) override;
  void RunShortly() override;
};

}  // namespace skyhop::testing
