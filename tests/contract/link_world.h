#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "interop/link_transport.h"

namespace skyhop::testing {

/// An application elsewhere that a test has do things. It dies with the object.
class LinkPeer {
 public:
  virtual ~LinkPeer() = default;

  /// Serves a topic with items and their first values.
  virtual void Serve(const std::string& topic, const std::map<std::string, std::string>& items) = 0;
  virtual void Publish(const std::string& topic, const std::string& item,
                       const std::string& value) = 0;
  /// Has it execute a command, or request an item, elsewhere.
  virtual void Execute(const std::string& application, const std::string& topic,
                       const std::string& command) = 0;
  virtual void Request(const std::string& application, const std::string& topic,
                       const std::string& item) = 0;
  /// Stops answering, and takes up again.
  virtual void Hang() = 0;
  virtual void Continue() = 0;

  /// Commands that it got so far.
  [[nodiscard]] virtual std::vector<std::string> Executed() = 0;
  /// Values that its requests brought so far, "(error)" for those that failed.
  [[nodiscard]] virtual std::vector<std::string> Values() = 0;
};

/// Where links are tried.
class LinkWorld {
 public:
  virtual ~LinkWorld() = default;
  [[nodiscard]] virtual std::unique_ptr<LinkTransport> MakeTransport(const std::string& name) = 0;
  [[nodiscard]] virtual std::unique_ptr<LinkPeer> StartPeer(const std::string& name) = 0;
  /// Lets things happen until `done` or for a few seconds. Returns whether it is done.
  virtual bool RunUntil(const std::function<bool()>& done) = 0;
  /// Lets things happen for a moment.
  virtual void RunShortly() = 0;
};

}  // namespace skyhop::testing
