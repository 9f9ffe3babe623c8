#pragma once

#include <windows.h>

#include <ddeml.h>

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "interop/link_transport.h"
#include "platform/windows/window_queue.h"

namespace skyhop::platform {

/// Serves an application's topics on the thread that created this object. Acknowledges a command at
/// once and executes it from `queue`, so that a command that waits for the user does not block its
/// peer.
class DdeTopics {
 public:
  DdeTopics(std::string application, std::shared_ptr<WindowQueue::Entry> queue);
  ~DdeTopics();
  DdeTopics(const DdeTopics&) = delete;
  DdeTopics& operator=(const DdeTopics&) = delete;

  /// The reason why nothing can be served; empty if there is none.
  [[nodiscard]] const std::string& Problem() const { return problem_; }

  /// As in LinkTransport. The names must be valid (see IsDdeName).
  void Serve(const std::string& name, LinkTopic& topic);
  void Unserve(const std::string& name);
  void Publish(const std::string& topic, const std::string& item, const std::string& value);

 private:
  struct Served {
    std::string name;
    LinkTopic* topic;
    std::map<std::string, std::string> published;  ///< last values
  };

  static HDDEDATA CALLBACK OnEvent(UINT type, UINT format, HCONV conversation, HSZ first,
                                   HSZ second, HDDEDATA data, ULONG_PTR, ULONG_PTR);
  [[nodiscard]] std::shared_ptr<Served> Find(const std::string& name) const;
  [[nodiscard]] bool Accepts(HSZ topic, HSZ application) const;
  [[nodiscard]] HDDEDATA Take(HSZ topic, HDDEDATA command);
  [[nodiscard]] bool HasItem(HSZ topic, HSZ item) const;
  [[nodiscard]] HDDEDATA Value(HSZ topic, HSZ item, bool as_published) const;

  const std::string application_;
  const std::shared_ptr<WindowQueue::Entry> queue_;
  const unsigned code_page_;
  DWORD instance_ = 0;
  std::string problem_;
  // Waiting commands hold their entry weakly, so that none runs after Unserve.
  std::map<std::string, std::shared_ptr<Served>> served_;  ///< by name in capitals
  std::map<HCONV, std::string> conversations_;             ///< their topics in capitals
};

}  // namespace skyhop::platform
