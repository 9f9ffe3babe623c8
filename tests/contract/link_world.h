#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "interop/link_transport.h"

namespace skyhop::testing {

/// An application in another place that a test controls. It ends with the object.
class LinkPeer {
 public:
  virtual ~LinkPeer() = default;

  /// Serves a topic with items and their first values.
  virtual void Serve(const std::string& topic, const std::map<std::string, std::string>& items) = 0;
  virtual void Publish(const std::string& topic, const std::string& item,
                       const std::string& value) = 0;
  /// Makes the application send a command or a request to another one.
  virtual void Execute(const std::string& application, const std::string& topic,
                       const std::string& command) = 0;
  virtual void Request(const std::string& application, const std::string& topic,
                       const std::string& item) = 0;
  /// Stops answering, and continues.
  virtual void Hang() = 0;
  virtual void Continue() = 0;

  /// The commands received so far.
  [[nodiscard]] virtual std::vector<std::string> Executed() = 0;
  /// The values that its requests returned so far, "(error)" for those that failed.
  [[nodiscard]] virtual std::vector<std::string> Values() = 0;
};

/// The environment in which a contract tests links.
class LinkWorld {
 public:
  virtual ~LinkWorld() = default;
  [[nodiscard]] virtual std::unique_ptr<LinkTransport> MakeTransport(const std::string& name) = 0;
  [[nodiscard]] virtual std::unique_ptr<LinkPeer> StartPeer(const std::string& name) = 0;
  /// Handles events until `done` returns true, or for a few seconds. Returns the result of `done`.
  virtual bool RunUntil(const std::function<bool()>& done) = 0;
  /// Handles events for a moment.
  virtual void RunShortly() = 0;
};

}  // namespace skyhop::testing
