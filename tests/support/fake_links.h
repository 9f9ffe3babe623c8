#pragma once

#include <algorithm>
#include <cctype>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "common/errors.h"
#include "interop/link_transport.h"

namespace skyhop::testing {

class FakeLinks;

/// The medium of fake links: it delivers nothing until Run.
class FakeLinkBus {
 public:
  void Post(std::function<void()> delivery) { queue_.push_back(std::move(delivery)); }
  void Run() {
    while (!queue_.empty()) {
      const std::function<void()> delivery = std::move(queue_.front());
      queue_.pop_front();
      delivery();
    }
  }

  std::map<std::string, FakeLinks*> applications;
  std::set<std::string> hung;  ///< applications that do not answer

 private:
  std::deque<std::function<void()>> queue_;
};

/// Links within one test. Keeps the sent commands.
class FakeLinks : public LinkTransport {
 public:
  FakeLinks(FakeLinkBus& bus, std::string application)
      : bus_(&bus), application_(std::move(application)) {}
  ~FakeLinks() override { Leave(); }
  FakeLinks(const FakeLinks&) = delete;
  FakeLinks& operator=(const FakeLinks&) = delete;

  [[nodiscard]] std::string Problem() const override { return problem; }

  void Serve(const std::string& name, LinkTopic& topic) override {
    if (!problem.empty()) throw Error(errors::kDiskNotReady, problem);
    if (!IsName(name)) throw Error(errors::kInvalidCall, "not a name: " + name);
    if (!topics_.try_emplace(name, &topic).second) {
      throw Error(errors::kInvalidCall, name + " is served already");
    }
    bus_->applications[application_] = this;
  }
  void Unserve(const std::string& name) override { topics_.erase(name); }
  void Publish(const std::string& topic, const std::string& item,
               const std::string& value) override {
    for (const std::weak_ptr<End>& weak : ends_) {
      const std::shared_ptr<End> end = weak.lock();
      if (end && end->topic == topic && end->items.contains(item)) Deliver(weak, item, value);
    }
  }

  [[nodiscard]] std::unique_ptr<LinkConversation> Connect(const std::string& application,
                                                          const std::string& topic,
                                                          LinkListener& listener) override {
    connects.push_back(application + "|" + topic);
    if (while_connecting) std::exchange(while_connecting, {})();
    if (!problem.empty()) throw Error(errors::kNoLinkPartner, problem);
    const auto found = bus_->applications.find(application);
    if (found == bus_->applications.end()) {
      throw Error(errors::kNoLinkPartner, application + " is not running");
    }
    if (bus_->hung.contains(application)) {
      throw Error(errors::kLinkTimedOut, application + " does not answer");
    }
    if (!found->second->topics_.contains(topic)) {
      throw Error(errors::kNoLinkPartner, application + " has no topic " + topic);
    }
    return std::make_unique<Conversation>(*this, *found->second, topic, listener);
  }

  std::string problem;
  std::vector<std::string> connects;       ///< "application|topic", each attempt
  std::vector<std::string> sent;           ///< "application|topic command"
  std::function<void()> while_connecting;  ///< called while the next connection waits

 private:
  struct End {
    FakeLinks* server;
    std::string application;
    std::string topic;
    LinkListener* listener;
    std::set<std::string> items;
    bool open = true;
  };

  class Conversation : public LinkConversation {
   public:
    Conversation(FakeLinks& client, FakeLinks& server, const std::string& topic,
                 LinkListener& listener)
        : client_(&client),
          bus_(client.bus_),
          end_(std::make_shared<End>(
              End{&server, server.application_, topic, &listener, {}, true})) {
      server.ends_.push_back(end_);
    }

    void Execute(const std::string& command) override {
      if (!end_->open) return;
      client_->sent.push_back(end_->application + "|" + end_->topic + " " + command);
      Reach([server = end_->server, topic = end_->topic, command] {
        const auto found = server->topics_.find(topic);
        if (found != server->topics_.end()) found->second->Execute(command);
      });
    }
    [[nodiscard]] std::string Request(const std::string& item) override {
      if (!end_->open) throw Error(errors::kNoLinkPartner, "the link is closed");
      if (bus_->hung.contains(end_->application)) throw Error(errors::kLinkTimedOut, "no answer");
      const auto value = end_->server->topics_.at(end_->topic)->Request(item);
      if (!value) throw Error(errors::kNoLinkPartner, "no such item");
      return *value;
    }
    void Advise(const std::string& item) override {
      if (!end_->open) return;
      end_->items.insert(item);
      Reach([weak = std::weak_ptr(end_), item] {
        const std::shared_ptr<End> end = weak.lock();
        if (!end || !end->open) return;
        const auto value = end->server->topics_.at(end->topic)->Request(item);
        if (value) end->listener->Changed(item, *value);
      });
    }
    [[nodiscard]] bool Open() const override { return end_->open; }

   private:
    /// Delivers something to the peer unless it hangs.
    void Reach(std::function<void()> delivery) {
      if (bus_->hung.contains(end_->application)) {
        bus_->Post([weak = std::weak_ptr(end_)] { Close(weak); });
      } else {
        bus_->Post([bus = bus_, application = end_->application, delivery = std::move(delivery)] {
          if (bus->applications.contains(application)) delivery();
        });
      }
    }

    FakeLinks* client_;
    FakeLinkBus* bus_;
    std::shared_ptr<End> end_;
  };

  static bool IsName(const std::string& name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](unsigned char c) {
      return c == '_' || (c < 0x80 && std::isalnum(c) != 0);
    });
  }
  static void Close(const std::weak_ptr<End>& weak) {
    const std::shared_ptr<End> end = weak.lock();
    if (end && std::exchange(end->open, false)) end->listener->Closed();
  }
  void Deliver(const std::weak_ptr<End>& weak, const std::string& item, const std::string& value) {
    bus_->Post([weak, item, value] {
      const std::shared_ptr<End> end = weak.lock();
      if (end && end->open) end->listener->Changed(item, value);
    });
  }
  void Leave() {
    const auto found = bus_->applications.find(application_);
    if (found == bus_->applications.end() || found->second != this) return;
    bus_->applications.erase(found);
    for (const std::weak_ptr<End>& end : ends_) {
      bus_->Post([end] { Close(end); });
    }
  }

  FakeLinkBus* bus_;
  std::string application_;
  std::map<std::string, LinkTopic*> topics_;
  std::vector<std::weak_ptr<End>> ends_;
};

}  // namespace skyhop::testing
