#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "contract/link_world.h"
#include "peer_process.h"

namespace skyhop::testing {

/// A peer in a separate process.
class LinkPeerProcess : public LinkPeer {
 public:
  explicit LinkPeerProcess(const std::string& application);

  void Serve(const std::string& topic, const std::map<std::string, std::string>& items) override;
  void Publish(const std::string& topic, const std::string& item,
               const std::string& value) override;
  void Execute(const std::string& application, const std::string& topic,
               const std::string& command) override;
  void Request(const std::string& application, const std::string& topic,
               const std::string& item) override;
  void Hang() override { process_.Suspend(); }
  void Continue() override { process_.Resume(); }
  [[nodiscard]] std::vector<std::string> Executed() override;
  [[nodiscard]] std::vector<std::string> Values() override;

  /// Sends the same command many times without waiting for answers.
  void Flood(const std::string& application, const std::string& topic, const std::string& command,
             int times);
  void SendGarbage(const std::string& application, const std::string& topic);
  /// Whether all its messages were answered.
  [[nodiscard]] bool AllTaken();
  /// The items that were requested from it, if the peer program of this system reports them.
  [[nodiscard]] std::vector<std::string> Asked();
  /// Sends an order that only the peer program of this system understands.
  void Order(const std::vector<std::string>& words);

 private:
  void Read(int longest_ms);

  PeerProcess process_;
  std::string unread_;
  int done_ = 0;
  int taken_ = 0;
  std::vector<std::string> executed_;
  std::vector<std::string> values_;
  std::vector<std::string> asked_;
};

/// The environment for tests of this system's links.
[[nodiscard]] std::unique_ptr<LinkWorld> MakeSystemLinkWorld();

}  // namespace skyhop::testing
