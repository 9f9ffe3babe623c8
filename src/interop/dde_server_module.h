#pragma once

#include <string>

#include "common/diagnostics.h"
#include "interop/link_transport.h"

namespace skyhop::DDEServerModule {

/// Serves the topic "DDEServer" and tells the suite that this program has started and ended.
class Announcer {
 public:
  /// All must outlive this object.
  Announcer(LinkTransport& transport, LinkTopic& server, Diagnostics& diagnostics)
      : transport_(&transport), server_(&server), diagnostics_(&diagnostics) {}

  /// Serves the commands and tells the applications that know this program.
  void Initialize();
  /// Tells an application, when it runs, that this program has started.
  void InformClient(const std::string& application);
  /// Tells the launcher that this program has started.
  void AcknowledgeLauncher();
  /// Tells the launcher that this program has ended, and serves no more.
  void Terminate();

 private:
  void Announce(const std::string& application, const char* word);

  LinkTransport* transport_;
  LinkTopic* server_;
  Diagnostics* diagnostics_;
};

}  // namespace skyhop::DDEServerModule
