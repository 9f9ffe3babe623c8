#include "bus_world.h"

#include <chrono>
#include <thread>

#include "link_peer_process.h"
#include "platform/linux/dbus_links.h"

namespace skyhop::testing {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

BusWorld::BusWorld() : bus_(g_test_dbus_new(G_TEST_DBUS_NONE)) {
  g_test_dbus_up(bus_);
}

BusWorld::~BusWorld() {
  Down();
}

void BusWorld::Down() {
  if (bus_ == nullptr) return;
  g_test_dbus_down(bus_);
  g_clear_object(&bus_);
}

std::unique_ptr<LinkTransport> BusWorld::MakeTransport(const std::string& name) {
  return std::make_unique<platform::DBusLinks>(name);
}

std::unique_ptr<LinkPeer> BusWorld::StartPeer(const std::string& name) {
  return std::make_unique<LinkPeerProcess>(name);
}

bool BusWorld::RunUntil(const std::function<bool()>& done) {
  const auto end = steady_clock::now() + std::chrono::seconds(20);
  while (!done()) {
    if (steady_clock::now() > end) return false;
    if (g_main_context_iteration(nullptr, FALSE) == 0) {
      std::this_thread::sleep_for(milliseconds(1));
    }
  }
  return true;
}

void BusWorld::RunShortly() {
  const auto end = steady_clock::now() + milliseconds(200);
  RunUntil([&] { return steady_clock::now() > end; });
}

std::unique_ptr<LinkWorld> MakeSystemLinkWorld() {
  return std::make_unique<BusWorld>();
}

}  // namespace skyhop::testing
