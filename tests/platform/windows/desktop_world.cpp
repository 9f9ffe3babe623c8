#include "desktop_world.h"

#include <windows.h>

#include <chrono>

#include "link_peer_process.h"
#include "platform/windows/dde_links.h"

namespace skyhop::testing {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

bool RunMessages() {
  bool any = false;
  MSG message{};
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    ::DispatchMessageW(&message);
    any = true;
  }
  return any;
}

std::unique_ptr<LinkTransport> DesktopWorld::MakeTransport(const std::string& name) {
  return std::make_unique<platform::DdeLinks>(name);
}

std::unique_ptr<LinkPeer> DesktopWorld::StartPeer(const std::string& name) {
  return std::make_unique<LinkPeerProcess>(name);
}

bool DesktopWorld::RunUntil(const std::function<bool()>& done) {
  const auto end = steady_clock::now() + std::chrono::seconds(60);
  while (!done()) {
    if (steady_clock::now() > end) return false;
    if (!RunMessages()) ::Sleep(1);
  }
  return true;
}

void DesktopWorld::RunShortly() {
  const auto end = steady_clock::now() + milliseconds(200);
  RunUntil([&] { return steady_clock::now() > end; });
}

std::unique_ptr<LinkWorld> MakeSystemLinkWorld() {
  return std::make_unique<DesktopWorld>();
}

}  // namespace skyhop::testing
