#pragma once

#include <memory>
#include <set>
#include <string>

#include "interop/link_transport.h"
#include "platform/linux/dbus_calls.h"

namespace skyhop::platform {

/// One end of a conversation on the bus. Pending bus callbacks hold it weakly, so it can be
/// destroyed at any time.
class DBusPeer : public std::enable_shared_from_this<DBusPeer> {
 public:
  /// Throws as LinkTransport::Connect does.
  [[nodiscard]] static std::shared_ptr<DBusPeer> Open(GDBusConnection* connection,
                                                      const std::string& application,
                                                      const std::string& topic,
                                                      LinkListener& listener);
  ~DBusPeer();
  DBusPeer(const DBusPeer&) = delete;
  DBusPeer& operator=(const DBusPeer&) = delete;

  void Execute(const std::string& command);
  [[nodiscard]] std::string Request(const std::string& item);
  void Advise(const std::string& item);
  [[nodiscard]] bool IsOpen() const { return open_; }
  /// Tells the listener once that the peer is gone.
  void NotifyClosed();

 private:
  DBusPeer(GDBusConnection* connection, std::string application, std::string path,
           LinkListener& listener);

  void WatchName();
  void FindOwner();
  void CheckTopic();
  void Unsubscribe();
  [[nodiscard]] GVariantPointer CallRequest(const std::string& item, GErrorPointer& error);
  void Call(const char* method, const std::string& text, GAsyncReadyCallback callback,
            gpointer box);
  [[noreturn]] void Fail(const GError& error) const;

  static void OnOwnerChanged(GDBusConnection*, const char*, const char*, const char*, const char*,
                             GVariant* message, gpointer box);
  static void OnChanged(GDBusConnection*, const char*, const char*, const char*, const char*,
                        GVariant* message, gpointer box);
  static void OnExecuted(GObject* connection, GAsyncResult* result, gpointer box);
  static void OnFirstValue(GObject* connection, GAsyncResult* result, gpointer box);

  GObjectPointer<GDBusConnection> connection_;
  std::string application_;
  std::string path_;
  std::string owner_;  ///< unique name of the peer's connection
  LinkListener* listener_;
  std::set<guint> subscriptions_;
  bool open_ = false;
};

}  // namespace skyhop::platform
