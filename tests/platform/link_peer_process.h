#pragma once

#include <gio/gio.h>
#include <sys/types.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "contract/link_world.h"

namespace skyhop::testing {

/// A peer in a process of its own.
class LinkPeerProcess : public LinkPeer {
 public:
  explicit LinkPeerProcess(const std::string& application);
  ~LinkPeerProcess() override;
  LinkPeerProcess(const LinkPeerProcess&) = delete;
  LinkPeerProcess& operator=(const LinkPeerProcess&) = delete;

  void Serve(const std::string& topic, const std::map<std::string, std::string>& items) override;
  void Publish(const std::string& topic, const std::string& item,
               const std::string& value) override;
  void Execute(const std::string& application, const std::string& topic,
               const std::string& command) override;
  void Request(const std::string& application, const std::string& topic,
               const std::string& item) override;
  void Hang() override;
  void Continue() override;
  [[nodiscard]] std::vector<std::string> Executed() override;
  [[nodiscard]] std::vector<std::string> Values() override;

  /// Sends the same command many times without waiting for answers.
  void Flood(const std::string& application, const std::string& topic, const std::string& command,
             int times);
  void SendGarbage(const std::string& application, const std::string& topic);
  /// Whether everything that it sent was answered.
  [[nodiscard]] bool AllTaken();

 private:
  void Order(const std::vector<std::string>& words);
  void Read(int longest_ms);

  pid_t process_ = 0;
  int input_ = -1;
  int output_ = -1;
  std::string unread_;
  int done_ = 0;
  int taken_ = 0;
  std::vector<std::string> executed_;
  std::vector<std::string> values_;
};

/// A session bus of its own, and this thread's main context.
class BusWorld : public LinkWorld {
 public:
  BusWorld();
  ~BusWorld() override;
  BusWorld(const BusWorld&) = delete;
  BusWorld& operator=(const BusWorld&) = delete;

  [[nodiscard]] std::unique_ptr<LinkTransport> MakeTransport(const std::string& name) override;
  [[nodiscard]] std::unique_ptr<LinkPeer> StartPeer(const std::string& name) override;
  bool RunUntil(const std::function<bool()>& done) override;
  void RunShortly() override;
  /// Ends the bus.
  void Down();

 private:
  GTestDBus* bus_;
};

}  // namespace skyhop::testing
