#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/errors.h"
#include "interop/link_transport.h"

namespace skyhop::testing {

/// Keeps the events of a conversation.
class RecordingListener : public LinkListener {
 public:
  void Changed(const std::string& item, const std::string& value) override {
    changes.emplace_back(item, value);
    if (on_call) on_call();
  }
  void Closed() override {
    ++closed;
    if (on_call) on_call();
  }

  std::vector<std::pair<std::string, std::string>> changes;
  int closed = 0;
  std::function<void()> on_call;
};

/// Keeps the received commands. The test sets its items.
class RecordingTopic : public LinkTopic {
 public:
  void Execute(const std::string& command) override { executed.push_back(command); }
  [[nodiscard]] std::optional<std::string> Request(const std::string& item) override {
    const auto found = items.find(item);
    return found == items.end() ? std::nullopt : std::optional(found->second);
  }

  std::vector<std::string> executed;
  std::map<std::string, std::string> items;
};

/// Connects with repeated attempts like the program: a busy machine may need longer than one call
/// waits.
inline std::unique_ptr<LinkConversation> ConnectPatiently(LinkTransport& links,
                                                          const std::string& application,
                                                          const std::string& topic,
                                                          LinkListener& listener) {
  constexpr int longest = 60;
  for (int attempt = 1;; ++attempt) {
    try {
      return links.Connect(application, topic, listener);
    } catch (const Error& error) {
      if (error.Number() != errors::kLinkTimedOut || attempt == longest) throw;
    }
  }
}

}  // namespace skyhop::testing
