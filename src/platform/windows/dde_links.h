#pragma once

#include <memory>
#include <string>
#include <vector>

#include "interop/link_transport.h"
#include "platform/windows/dde_talk.h"
#include "platform/windows/dde_topics.h"
#include "platform/windows/window_queue.h"

namespace skyhop::platform {

/// Links over DDE. The application's name is the service; texts use the machine's own code page;
/// advise loops are hot loops of clipboard text. Several programs may serve the same name, and the
/// system chooses which of them a peer reaches.
///
/// Callbacks run in the message loop of the thread that created this object. This thread serves the
/// topics. Each conversation that the program opens has its own thread. The program waits for it no
/// longer than LinkTransport states.
class DdeLinks : public LinkTransport {
 public:
  explicit DdeLinks(std::string application);
  /// Waits up to a second for pending commands.
  ~DdeLinks() override;
  DdeLinks(const DdeLinks&) = delete;
  DdeLinks& operator=(const DdeLinks&) = delete;

  [[nodiscard]] std::string Problem() const override { return topics_.Problem(); }
  void Serve(const std::string& name, LinkTopic& topic) override;
  void Unserve(const std::string& name) override;
  void Publish(const std::string& topic, const std::string& item,
               const std::string& value) override;
  [[nodiscard]] std::unique_ptr<LinkConversation> Connect(const std::string& application,
                                                          const std::string& topic,
                                                          LinkListener& listener) override;
  void Tell(const std::string& application, const std::string& topic,
            const std::string& command) override;

 private:
  /// An attempt whose caller has stopped waiting. It continues, and the next Connect to the same
  /// topic takes it up.
  struct Attempt {
    std::string application;
    std::string topic;
    std::shared_ptr<DdeTalk> talk;
    DdeTalk::Time begun;
  };

  [[nodiscard]] Attempt TakeUpAttempt(const std::string& application, const std::string& topic);
  void DropOldAttempts();
  void CheckPartner(const std::string& application, const std::string& topic) const;
  void KeepUntilSent(const std::shared_ptr<DdeTalk>& talk);
  [[nodiscard]] DdeTalk::Time EndOfWait() const;

  std::string application_;
  WindowQueue queue_;
  DdeTopics topics_;
  std::vector<Attempt> attempts_;
  std::vector<std::weak_ptr<DdeTalk>> talks_;
};

}  // namespace skyhop::platform
