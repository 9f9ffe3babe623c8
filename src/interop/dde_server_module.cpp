#include "interop/dde_server_module.h"

#include <array>
#include <memory>

#include "common/errors.h"
#include "interop/dde_common.h"
#include "interop/suite.h"

namespace skyhop::DDEServerModule {
namespace {

/// Applications that want to know when this program starts.
constexpr std::array<const char*, 5> kApplications = {"Gleaner", "MarloTest", "Tessera", "Chirpa",
                                                      "Archivo"};

}  // namespace

void Announcer::Initialize() {
  const bool serving = diagnostics_->Trap("DDEServerModule.Initialize", false, [&] {
    diagnostics_->DebugLog("DDEServerModule.Initialize");
    const std::string problem = transport_->Problem();
    if (!problem.empty()) {
      diagnostics_->DebugLog("   no links with other programs: " + problem);
      return false;
    }
    transport_->Serve(topic::kServer, *server_);
    return true;
  });
  if (!serving) return;
  for (const char* name : kApplications) InformClient(name);
}

void Announcer::InformClient(const std::string& application) {
  diagnostics_->Trap("DDEServerModule.InformClient", [&] { Announce(application, "start"); });
}

void Announcer::AcknowledgeLauncher() {
  diagnostics_->Trap("DDEServerModule.AcknowledgeLauncher",
                     [&] { Announce(application::kLauncher, "start"); });
}

void Announcer::Terminate() {
  diagnostics_->Trap("DDEServerModule.Terminate", [&] {
    diagnostics_->DebugLog("DDEServerModule.Terminate");
    transport_->Unserve(topic::kServer);
    Announce(application::kLauncher, "stop");
  });
}

void Announcer::Announce(const std::string& application, const char* word) {
  if (!transport_->Problem().empty()) return;
  try {
    transport_->Tell(application, topic::kClient, DDECommon::OwnCommand(word));
    diagnostics_->DebugLog("   told " + application + ": " + word);
  } catch (const Error& error) {
    // Not an error: most programs of the suite usually do not run.
    diagnostics_->DebugLog("   cannot tell " + application + ": " + error.what());
  }
}

}  // namespace skyhop::DDEServerModule
