#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <string>

#include "contract/link_world.h"

namespace skyhop::testing {

/// A separate session bus, and this thread's main context.
class BusWorld : public LinkWorld {
 public:
  BusWorld();
  ~BusWorld() override;
  BusWorld(const BusWorld&) = delete;
  BusWorld& operator=(const BusWorld&) = delete;

  [[nodiscard]] std::unique_ptr<LinkTransport> MakeTransport(const std::string& name) override;
  [[nodiscard]] std::unique_ptr<LinkPeer> StartPeer(const std::string& name) override;
  bool RunUntil(const std::function<bool()>& done) override;
  void RunShortly() override;
  /// Ends the bus.
  void Down();

 private:
  GTestDBus* bus_;
};

}  // namespace skyhop::testing
