#include "platform/windows/dde_links.h"

#include <algorithm>
#include <utility>

#include "common/errors.h"
#include "platform/links.h"
#include "platform/windows/code_page.h"
#include "platform/windows/dde_text.h"

namespace skyhop::platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// The listener of a conversation. `open` is true while it may be called. Only the window's thread
/// uses it.
struct Ear {
  LinkListener* listener;
  bool open = true;
};

/// Events that a talk passes to the ear on the window's thread.
DdeTalk::Events TellingOf(const std::shared_ptr<Ear>& ear,
                          const std::shared_ptr<WindowQueue::Entry>& queue) {
  DdeTalk::Events events;
  events.changed = [weak = std::weak_ptr(ear), queue](const std::string& item,
                                                      const std::string& value) {
    queue->Post([weak, item, value] {
      const std::shared_ptr<Ear> heard = weak.lock();
      if (heard && heard->open) heard->listener->Changed(item, value);
    });
  };
  events.closed = [weak = std::weak_ptr(ear), queue] {
    queue->Post([weak] {
      const std::shared_ptr<Ear> heard = weak.lock();
      if (heard && std::exchange(heard->open, false)) heard->listener->Closed();
    });
  };
  return events;
}

class DdeConversation : public LinkConversation {
 public:
  DdeConversation(std::string application, std::shared_ptr<DdeTalk> talk, std::shared_ptr<Ear> ear)
      : application_(std::move(application)), talk_(std::move(talk)), ear_(std::move(ear)) {}
  ~DdeConversation() override { talk_->End(); }
  DdeConversation(const DdeConversation&) = delete;
  DdeConversation& operator=(const DdeConversation&) = delete;

  void Execute(const std::string& command) override {
    if (ear_->open) talk_->Execute(DdeBytes(command, MachineCodePages().ansi));
  }
  [[nodiscard]] std::string Request(const std::string& item) override {
    if (!ear_->open || item.empty() || item.size() > LongestName()) {
      throw Error(errors::kNoLinkPartner, application_ + " has no item " + item);
    }
    const auto question = talk_->Ask(item, steady_clock::now() + LinkTransport::kLongestWait);
    if (!question) throw Error(errors::kLinkTimedOut, application_ + " does not answer");
    if (!question->value) {
      throw Error(errors::kNoLinkPartner, application_ + " has no item " + item);
    }
    return *question->value;
  }
  void Advise(const std::string& item) override {
    if (ear_->open && !item.empty() && item.size() <= LongestName()) talk_->Advise(item);
  }
  [[nodiscard]] bool Open() const override { return ear_->open; }

 private:
  static constexpr std::size_t LongestName() { return 200; }

  std::string application_;
  std::shared_ptr<DdeTalk> talk_;
  std::shared_ptr<Ear> ear_;
};

}  // namespace

DdeLinks::DdeLinks(std::string application)
    : application_(std::move(application)), topics_(application_, queue_.GetEntry()) {}

DdeLinks::~DdeLinks() {
  const auto until = steady_clock::now() + std::chrono::seconds(1);
  for (const Attempt& attempt : attempts_) attempt.talk->End();
  for (const std::weak_ptr<DdeTalk>& weak : talks_) {
    const std::shared_ptr<DdeTalk> talk = weak.lock();
    if (!talk) continue;
    talk->End();
    talk->WaitForEnd(until);
  }
}

void DdeLinks::Serve(const std::string& name, LinkTopic& topic) {
  if (!Problem().empty()) throw Error(errors::kDiskNotReady, Problem());
  if (!IsDdeName(name) || !IsDdeName(application_)) {
    throw Error(errors::kInvalidCall, "not a name for a topic: " + application_ + "|" + name);
  }
  topics_.Serve(name, topic);
}

void DdeLinks::Unserve(const std::string& name) {
  topics_.Unserve(name);
}

void DdeLinks::Publish(const std::string& topic, const std::string& item,
                       const std::string& value) {
  topics_.Publish(topic, item, value);
}

/// One hanging window delays every attempt to open a conversation. During such a delay, further
/// attempts wait only a moment, so that together they do not block the program's window.
DdeTalk::Time DdeLinks::EndOfWait() const {
  constexpr milliseconds moment{50};
  const bool held_up =
      std::any_of(attempts_.begin(), attempts_.end(),
                  [](const Attempt& one) { return one.talk->IsOpening(); }) ||
      std::any_of(talks_.begin(), talks_.end(), [](const std::weak_ptr<DdeTalk>& weak) {
        const std::shared_ptr<DdeTalk> talk = weak.lock();
        return talk && talk->IsOpening();
      });
  return steady_clock::now() + (held_up ? moment : kLongestWait);
}

DdeLinks::Attempt DdeLinks::TakeUpAttempt(const std::string& application,
                                          const std::string& topic) {
  const auto found = std::find_if(attempts_.begin(), attempts_.end(), [&](const Attempt& one) {
    return one.application == application && one.topic == topic;
  });
  if (found == attempts_.end()) {
    return {application, topic, DdeTalk::Begin(application, topic), steady_clock::now()};
  }
  Attempt attempt = std::move(*found);
  attempts_.erase(found);
  return attempt;
}

/// Ends attempts that have finished if no caller has asked again for a minute.
void DdeLinks::DropOldAttempts() {
  constexpr std::chrono::minutes longest{1};
  std::erase_if(attempts_, [&](const Attempt& one) {
    if (one.talk->IsOpening() || steady_clock::now() - one.begun < longest) return false;
    one.talk->End();
    return true;
  });
}

void DdeLinks::CheckPartner(const std::string& application, const std::string& topic) const {
  if (!Problem().empty()) throw Error(errors::kNoLinkPartner, Problem());
  if (!IsDdeName(application) || !IsDdeName(topic)) {
    throw Error(errors::kNoLinkPartner, "there is no " + application + "|" + topic);
  }
}

void DdeLinks::KeepUntilSent(const std::shared_ptr<DdeTalk>& talk) {
  std::erase_if(talks_, [](const std::weak_ptr<DdeTalk>& other) { return other.expired(); });
  talks_.push_back(talk);
}

void DdeLinks::Tell(const std::string& application, const std::string& topic,
                    const std::string& command) {
  CheckPartner(application, topic);
  const std::shared_ptr<DdeTalk> talk = DdeTalk::Begin(application, topic);
  talk->Execute(DdeBytes(command, MachineCodePages().ansi));
  talk->End();
  // Wait here: simultaneous searches for several partners slow each other down.
  (void)talk->WaitForOpening(EndOfWait());
  KeepUntilSent(talk);
}

std::unique_ptr<LinkConversation> DdeLinks::Connect(const std::string& application,
                                                    const std::string& topic,
                                                    LinkListener& listener) {
  CheckPartner(application, topic);
  DropOldAttempts();
  Attempt attempt = TakeUpAttempt(application, topic);
  const DdeTalk::Opening opening = attempt.talk->WaitForOpening(EndOfWait());
  if (opening == DdeTalk::Opening::kUnknown) {
    attempts_.push_back(std::move(attempt));
    throw Error(errors::kLinkTimedOut, application + " does not answer");
  }
  auto ear = std::make_shared<Ear>(Ear{&listener});
  if (opening == DdeTalk::Opening::kNobody ||
      !attempt.talk->Tell(TellingOf(ear, queue_.GetEntry()))) {
    throw Error(errors::kNoLinkPartner, application + " is not running or has no topic " + topic);
  }
  KeepUntilSent(attempt.talk);
  return std::make_unique<DdeConversation>(application, std::move(attempt.talk), std::move(ear));
}

std::unique_ptr<LinkTransport> MakeLinkTransport(const std::string& application) {
  return std::make_unique<DdeLinks>(application);
}

}  // namespace skyhop::platform
