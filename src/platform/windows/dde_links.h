#pragma once

#include <memory>
#include <string>
#include <vector>

#include "interop/link_transport.h"
#include "platform/windows/dde_talk.h"
#include "platform/windows/dde_topics.h"
#include "platform/windows/window_queue.h"

namespace skyhop::platform {

/// Links over DDE. The application's name is the service, texts are those of the machine's own code
/// page, advise loops are hot ones of clipboard text. Several programs may serve under one name;
/// which of them a peer reaches is the system's choice, so that nobody is refused a name.
///
/// Callbacks come out of the message loop of the thread that made this object. Topics are served on
/// that thread; each conversation that it opens has a thread of its own, which the program does not
/// wait for longer than it says.
class DdeLinks : public LinkTransport {
 public:
  explicit DdeLinks(std::string application);
  /// Waits up to a second for commands that are on their way.
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
  /// An attempt that nobody waits for any more: it goes on, and the next one takes it up.
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
