#include "common/errors.h"
#include "platform/links.h"

namespace skyhop::platform {
namespace {

/// Says that this build has no links, wherever they are asked for.
class AbsentLinks : public LinkTransport {
 public:
  [[nodiscard]] std::string Problem() const override {
    return "this version has no links to other programs on Windows";
  }
  void Serve(const std::string&, LinkTopic&) override {
    throw Error(errors::kDiskNotReady, Problem());
  }
  void Unserve(const std::string&) override {}
  void Publish(const std::string&, const std::string&, const std::string&) override {}
  [[nodiscard]] std::unique_ptr<LinkConversation> Connect(const std::string&, const std::string&,
                                                          LinkListener&) override {
    throw Error(errors::kNoLinkPartner, Problem());
  }
};

}  // namespace

std::unique_ptr<LinkTransport> MakeLinkTransport(const std::string&) {
  return std::make_unique<AbsentLinks>();
}

}  // namespace skyhop::platform
