#include "interop/link_transport.h"

namespace skyhop {
namespace {

/// Ignores what a conversation reports.
class IgnoringListener : public LinkListener {
 public:
  void Changed(const std::string& /*item*/, const std::string& /*value*/) override {}
  void Closed() override {}
};

}  // namespace

void LinkTransport::Tell(const std::string& application, const std::string& topic,
                         const std::string& command) {
  IgnoringListener listener;
  Connect(application, topic, listener)->Execute(command);
}

}  // namespace skyhop
