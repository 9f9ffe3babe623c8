#include "platform/linux/dbus_conversation.h"

#include <array>
#include <utility>

namespace skyhop::platform {
namespace {

using WeakPeer = std::weak_ptr<DBusPeer>;
using PeerBox = GBox<WeakPeer>;

/// A pending request for an item's first value.
struct AskedItem {
  WeakPeer peer;
  std::string item;
};
using AskedBox = GBox<AskedItem>;

constexpr int kWait = static_cast<int>(LinkTransport::kLongestWait.count());
constexpr int kSlow = static_cast<int>(LinkTransport::kSlowAnswer.count());

}  // namespace

DBusPeer::DBusPeer(GDBusConnection* connection, std::string application, std::string path,
                   LinkListener& listener)
    : connection_(static_cast<GDBusConnection*>(g_object_ref(connection))),
      application_(std::move(application)),
      path_(std::move(path)),
      listener_(&listener) {}

std::shared_ptr<DBusPeer> DBusPeer::Open(GDBusConnection* connection,
                                         const std::string& application, const std::string& topic,
                                         LinkListener& listener) {
  std::shared_ptr<DBusPeer> peer(
      new DBusPeer(connection, application, ObjectPath(topic), listener));
  // Watch the name before asking for its owner, so that no end is missed.
  peer->WatchName();
  peer->FindOwner();
  peer->CheckTopic();
  peer->open_ = true;
  return peer;
}

DBusPeer::~DBusPeer() {
  Unsubscribe();
}

void DBusPeer::Unsubscribe() {
  for (const guint subscription : std::exchange(subscriptions_, {})) {
    g_dbus_connection_signal_unsubscribe(connection_.get(), subscription);
  }
}

void DBusPeer::WatchName() {
  subscriptions_.insert(g_dbus_connection_signal_subscribe(
      connection_.get(), "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
      "/org/freedesktop/DBus", BusName(application_).c_str(), G_DBUS_SIGNAL_FLAGS_NONE,
      OnOwnerChanged, PeerBox::Make(weak_from_this()), PeerBox::Free));
}

void DBusPeer::FindOwner() {
  GErrorPointer error;
  const GVariantPointer reply = CallBus(connection_.get(), "GetNameOwner",
                                        g_variant_new("(s)", BusName(application_).c_str()),
                                        LinkTransport::kLongestWait, error);
  if (!reply) Fail(*error);
  owner_ = FirstText(reply.get());
}

/// D-Bus has no direct test for a topic. This requests the item without a name; an existing topic
/// answers with a value or an error of its own.
void DBusPeer::CheckTopic() {
  GErrorPointer error;
  if (CallRequest("", error) || FailureOf(*error) == CallFailure::kRefused) return;
  Fail(*error);
}

GVariantPointer DBusPeer::CallRequest(const std::string& item, GErrorPointer& error) {
  GVariant* const text = WireText(item);
  GError* failure = nullptr;
  GVariantPointer reply(
      g_dbus_connection_call_sync(connection_.get(), owner_.c_str(), path_.c_str(), kLinkInterface,
                                  "Request", g_variant_new_tuple(&text, 1), G_VARIANT_TYPE("(s)"),
                                  G_DBUS_CALL_FLAGS_NO_AUTO_START, kWait, nullptr, &failure));
  error.reset(failure);
  return reply;
}

std::string DBusPeer::Request(const std::string& item) {
  if (!open_) throw Error(errors::kNoLinkPartner, "the link to " + application_ + " is closed");
  GErrorPointer error;
  const GVariantPointer reply = CallRequest(item, error);
  if (!reply) Fail(*error);
  return FirstText(reply.get());
}

void DBusPeer::Fail(const GError& error) const {
  switch (FailureOf(error)) {
    case CallFailure::kNoTopic:
      throw Error(errors::kNoLinkPartner, application_ + " has no topic " + path_.substr(1));
    case CallFailure::kNoAnswer:
      throw Error(errors::kLinkTimedOut, application_ + " does not answer");
    case CallFailure::kRefused:
      throw Error(errors::kNoLinkPartner, application_ + " refuses: " + error.message);
    case CallFailure::kGone:
      break;
  }
  throw Error(errors::kNoLinkPartner, application_ + " is not running");
}

void DBusPeer::Call(const char* method, const std::string& text, GAsyncReadyCallback callback,
                    gpointer box) {
  GVariant* const argument = WireText(text);
  g_dbus_connection_call(connection_.get(), owner_.c_str(), path_.c_str(), kLinkInterface, method,
                         g_variant_new_tuple(&argument, 1), nullptr,
                         G_DBUS_CALL_FLAGS_NO_AUTO_START, kSlow, nullptr, callback, box);
}

void DBusPeer::Execute(const std::string& command) {
  if (!open_) return;
  // The callback owns the box only once the call has started, so free it after an exception.
  gpointer box = PeerBox::Make(weak_from_this());
  try {
    Call("Execute", command, OnExecuted, box);
  } catch (...) {
    PeerBox::Free(box);
    throw;
  }
}

void DBusPeer::Advise(const std::string& item) {
  if (!open_) return;
  subscriptions_.insert(g_dbus_connection_signal_subscribe(
      connection_.get(), owner_.c_str(), kLinkInterface, "Changed", path_.c_str(), item.c_str(),
      G_DBUS_SIGNAL_FLAGS_NONE, OnChanged, PeerBox::Make(weak_from_this()), PeerBox::Free));
  gpointer box = AskedBox::Make({weak_from_this(), item});
  try {
    Call("Request", item, OnFirstValue, box);
  } catch (...) {
    AskedBox::Free(box);
    throw;
  }
}

void DBusPeer::NotifyClosed() {
  if (!std::exchange(open_, false)) return;
  Unsubscribe();
  listener_->Closed();
}

void DBusPeer::OnOwnerChanged(GDBusConnection*, const char*, const char*, const char*, const char*,
                              GVariant* message, gpointer box) {
  const std::shared_ptr<DBusPeer> peer = PeerBox::Of(box).lock();
  if (!peer || !g_variant_is_of_type(message, G_VARIANT_TYPE("(sss)"))) return;
  const char* old_owner = nullptr;
  g_variant_get(message, "(&s&s&s)", nullptr, &old_owner, nullptr);
  if (peer->owner_ == old_owner) peer->NotifyClosed();
}

void DBusPeer::OnChanged(GDBusConnection*, const char*, const char*, const char*, const char*,
                         GVariant* message, gpointer box) {
  const std::shared_ptr<DBusPeer> peer = PeerBox::Of(box).lock();
  if (!peer || !peer->open_ || !g_variant_is_of_type(message, G_VARIANT_TYPE("(ss)"))) return;
  const char* item = nullptr;
  const char* value = nullptr;
  g_variant_get(message, "(&s&s)", &item, &value);
  peer->listener_->Changed(item, value);
}

void DBusPeer::OnExecuted(GObject* connection, GAsyncResult* result, gpointer box) {
  const std::shared_ptr<DBusPeer> peer = PeerBox::Of(box).lock();
  PeerBox::Free(box);
  GError* failure = nullptr;
  const GVariantPointer reply(
      g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &failure));
  const GErrorPointer error(failure);
  if (peer && error && FailureOf(*error) == CallFailure::kNoAnswer) peer->NotifyClosed();
}

void DBusPeer::OnFirstValue(GObject* connection, GAsyncResult* result, gpointer box) {
  const AskedItem asked = std::move(AskedBox::Of(box));
  AskedBox::Free(box);
  GError* failure = nullptr;
  const GVariantPointer reply(
      g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &failure));
  const GErrorPointer error(failure);
  const std::shared_ptr<DBusPeer> peer = asked.peer.lock();
  if (!peer || !peer->open_) return;
  if (reply) {
    if (g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(s)"))) {
      peer->listener_->Changed(asked.item, FirstText(reply.get()));
    }
  } else if (FailureOf(*error) == CallFailure::kNoAnswer) {
    peer->NotifyClosed();
  }
}

}  // namespace skyhop::platform
