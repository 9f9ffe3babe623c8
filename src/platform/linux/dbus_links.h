#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "interop/link_transport.h"
#include "platform/linux/dbus_conversation.h"

namespace skyhop::platform {

/// Links over the session bus. A topic is the object "/<Topic>" of the bus name
/// "org.marlo.<Application>", its interface "org.marlo.Link" has the methods Execute(s) and
/// Request(s) -> s and the signal Changed(s, s) with item and value. When the bus name vanishes,
/// the link is closed.
///
/// Callbacks run in the main context that is the thread's default when this object is created. Does
/// not start a bus if none is running.
class DBusLinks : public LinkTransport {
 public:
  explicit DBusLinks(std::string application);
  ~DBusLinks() override;
  DBusLinks(const DBusLinks&) = delete;
  DBusLinks& operator=(const DBusLinks&) = delete;

  [[nodiscard]] std::string Problem() const override { return problem_; }
  void Serve(const std::string& name, LinkTopic& topic) override;
  void Unserve(const std::string& name) override;
  void Publish(const std::string& topic, const std::string& item,
               const std::string& value) override;
  [[nodiscard]] std::unique_ptr<LinkConversation> Connect(const std::string& application,
                                                          const std::string& topic,
                                                          LinkListener& listener) override;

 private:
  void TakeName();
  static void OnBusClosed(GDBusConnection*, gboolean, GError*, gpointer links);
  static void OnCall(GDBusConnection*, const char*, const char*, const char*, const char* method,
                     GVariant* arguments, GDBusMethodInvocation* call, gpointer box);

  std::string application_;
  std::string problem_;
  GObjectPointer<GDBusConnection> connection_;
  gulong closed_handler_ = 0;
  bool has_name_ = false;
  std::map<std::string, guint> served_;
  std::vector<std::weak_ptr<DBusPeer>> peers_;
};

}  // namespace skyhop::platform
