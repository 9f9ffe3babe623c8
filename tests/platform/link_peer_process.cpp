#include "link_peer_process.h"

#include <chrono>
#include <stdexcept>

#include "link_words.h"

namespace skyhop::testing {

using std::chrono::steady_clock;

LinkPeerProcess::LinkPeerProcess(const std::string& application)
    : process_(SKYHOP_LINK_PEER, application) {}

void LinkPeerProcess::Order(const std::vector<std::string>& words) {
  process_.Write(Line(words));
  const auto end = steady_clock::now() + std::chrono::seconds(30);
  for (const int before = done_; done_ == before;) {
    Read(100);
    if (steady_clock::now() > end) throw std::runtime_error("the peer does not obey");
  }
}

void LinkPeerProcess::Read(int longest_ms) {
  unread_ += process_.Read(longest_ms);
  for (std::size_t end = unread_.find('\n'); end != std::string::npos; end = unread_.find('\n')) {
    const std::vector<std::string> words = Words(unread_.substr(0, end));
    unread_.erase(0, end + 1);
    if (words.at(0) == "done") ++done_;
    if (words.at(0) == "taken") ++taken_;
    if (words.at(0) == "executed") executed_.push_back(words.at(1));
    if (words.at(0) == "value") values_.push_back(words.at(1));
    if (words.at(0) == "asked") asked_.push_back(words.at(1));
  }
}

void LinkPeerProcess::Serve(const std::string& topic,
                            const std::map<std::string, std::string>& items) {
  std::vector<std::string> words = {"serve", topic};
  for (const auto& [item, value] : items) words.insert(words.end(), {item, value});
  Order(words);
}

void LinkPeerProcess::Publish(const std::string& topic, const std::string& item,
                              const std::string& value) {
  Order({"publish", topic, item, value});
}

void LinkPeerProcess::Execute(const std::string& application, const std::string& topic,
                              const std::string& command) {
  Order({"execute", application, topic, command});
}

void LinkPeerProcess::Request(const std::string& application, const std::string& topic,
                              const std::string& item) {
  Order({"request", application, topic, item});
}

std::vector<std::string> LinkPeerProcess::Executed() {
  Read(0);
  return executed_;
}

std::vector<std::string> LinkPeerProcess::Values() {
  Read(0);
  return values_;
}

std::vector<std::string> LinkPeerProcess::Asked() {
  Read(0);
  return asked_;
}

void LinkPeerProcess::Flood(const std::string& application, const std::string& topic,
                            const std::string& command, int times) {
  taken_ = 0;
  Order({"flood", application, topic, command, std::to_string(times)});
}

void LinkPeerProcess::SendGarbage(const std::string& application, const std::string& topic) {
  taken_ = 0;
  Order({"garbage", application, topic});
}

bool LinkPeerProcess::AllTaken() {
  Read(0);
  return taken_ > 0;
}

}  // namespace skyhop::testing
