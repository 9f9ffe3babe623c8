#pragma once

#include "contract/link_transport_contract.h"
#include "support/fake_links.h"

namespace skyhop::testing {

class FakeLinkPeer : public LinkPeer {
 public:
  FakeLinkPeer(FakeLinkBus& bus, const std::string& name)
      : bus_(&bus), name_(name), links_(bus, name) {}
  ~FakeLinkPeer() override { bus_->hung.erase(name_); }
  FakeLinkPeer(const FakeLinkPeer&) = delete;
  FakeLinkPeer& operator=(const FakeLinkPeer&) = delete;

  void Serve(const std::string& topic, const std::map<std::string, std::string>& items) override {
    topics_[topic].items = items;
    topics_[topic].all = &executed_;
    links_.Serve(topic, topics_[topic]);
  }
  void Publish(const std::string& topic, const std::string& item,
               const std::string& value) override {
    topics_[topic].items[item] = value;
    links_.Publish(topic, item, value);
  }
  void Execute(const std::string& application, const std::string& topic,
               const std::string& command) override {
    try {
      links_.Connect(application, topic, listener_)->Execute(command);
    } catch (const Error&) {
      // A peer may send commands that fail.
    }
  }
  void Request(const std::string& application, const std::string& topic,
               const std::string& item) override {
    try {
      values_.push_back(links_.Connect(application, topic, listener_)->Request(item));
    } catch (const Error&) {
      values_.emplace_back("(error)");
    }
  }
  void Hang() override { bus_->hung.insert(name_); }
  void Continue() override { bus_->hung.erase(name_); }
  [[nodiscard]] std::vector<std::string> Executed() override { return executed_; }
  [[nodiscard]] std::vector<std::string> Values() override { return values_; }

 private:
  struct Topic : RecordingTopic {
    void Execute(const std::string& command) override { all->push_back(command); }
    std::vector<std::string>* all = nullptr;
  };

  FakeLinkBus* bus_;
  std::string name_;
  RecordingListener listener_;
  std::map<std::string, Topic> topics_;
  std::vector<std::string> executed_;
  std::vector<std::string> values_;
  FakeLinks links_;
};

class FakeLinkWorld : public LinkWorld {
 public:
  [[nodiscard]] std::unique_ptr<LinkTransport> MakeTransport(const std::string& name) override {
    return std::make_unique<FakeLinks>(bus, name);
  }
  [[nodiscard]] std::unique_ptr<LinkPeer> StartPeer(const std::string& name) override {
    return std::make_unique<FakeLinkPeer>(bus, name);
  }
  bool RunUntil(const std::function<bool()>& done) override {
    bus.Run();
    return done();
  }
  void RunShortly() override { bus.Run(); }

  FakeLinkBus bus;
};

}  // namespace skyhop::testing
