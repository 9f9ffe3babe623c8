#include "platform/linux/dbus_links.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

#include "platform/links.h"

namespace skyhop::platform {
namespace {

using TopicBox = GBox<LinkTopic*>;

constexpr const char* kIntrospection =
    "<node><interface name='org.marlo.Link'>"
    "<method name='Execute'><arg name='command' type='s' direction='in'/></method>"
    "<method name='Request'><arg name='item' type='s' direction='in'/>"
    "<arg name='value' type='s' direction='out'/></method>"
    "<signal name='Changed'><arg name='item' type='s'/><arg name='value' type='s'/></signal>"
    "</interface></node>";

constexpr const char* kTooLong = "org.marlo.Link.Error.TooLong";
constexpr const char* kNoSuchItem = "org.marlo.Link.Error.NoSuchItem";

/// The running session bus; empty if there is none. GLib would start one.
std::string BusAddress() {
  if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
      address != nullptr && *address != '\0') {
    return address;
  }
  const char* const folder = std::getenv("XDG_RUNTIME_DIR");
  if (folder == nullptr || *folder == '\0') return {};
  const std::filesystem::path socket = std::filesystem::path(folder) / "bus";
  std::error_code error;
  if (!std::filesystem::is_socket(socket, error)) return {};
  const std::unique_ptr<char, void (*)(gpointer)> escaped(
      g_dbus_address_escape_value(socket.c_str()), g_free);
  return std::string("unix:path=") + escaped.get();
}

GDBusInterfaceInfo* LinkInterfaceInfo() {
  static GDBusNodeInfo* const kNode = g_dbus_node_info_new_for_xml(kIntrospection, nullptr);
  return g_dbus_node_info_lookup_interface(kNode, kLinkInterface);
}

class DBusConversation : public LinkConversation {
 public:
  explicit DBusConversation(std::shared_ptr<DBusPeer> peer) : peer_(std::move(peer)) {}

  void Execute(const std::string& command) override { peer_->Execute(command); }
  [[nodiscard]] std::string Request(const std::string& item) override {
    return peer_->Request(item);
  }
  void Advise(const std::string& item) override { peer_->Advise(item); }
  [[nodiscard]] bool Open() const override { return peer_->IsOpen(); }

 private:
  std::shared_ptr<DBusPeer> peer_;
};

}  // namespace

DBusLinks::DBusLinks(std::string application) : application_(std::move(application)) {
  const std::string address = BusAddress();
  if (address.empty()) {
    problem_ = "there is no session bus";
    return;
  }
  constexpr auto flags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  GError* failure = nullptr;
  connection_.reset(
      g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, &failure));
  if (failure != nullptr) {
    const GErrorPointer error(failure);
    problem_ = std::string("the session bus cannot be reached: ") + error->message;
    return;
  }
  closed_handler_ = g_signal_connect(connection_.get(), "closed", G_CALLBACK(OnBusClosed), this);
}

DBusLinks::~DBusLinks() {
  if (!connection_) return;
  g_signal_handler_disconnect(connection_.get(), closed_handler_);
  for (const auto& [name, registration] : served_) {
    g_dbus_connection_unregister_object(connection_.get(), registration);
  }
  // The last messages, such as this program's farewell, must still go out.
  g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
  g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

void DBusLinks::OnBusClosed(GDBusConnection*, gboolean, GError*, gpointer links) {
  auto* const self = static_cast<DBusLinks*>(links);
  self->problem_ = "the session bus has ended";
  for (const std::weak_ptr<DBusPeer>& weak : std::exchange(self->peers_, {})) {
    if (const std::shared_ptr<DBusPeer> peer = weak.lock()) peer->NotifyClosed();
  }
}

void DBusLinks::Serve(const std::string& name, LinkTopic& topic) {
  if (!problem_.empty()) throw Error(errors::kDiskNotReady, problem_);
  if (!IsLinkName(name) || !IsLinkName(application_)) {
    throw Error(errors::kInvalidCall, "not a name for a topic: " + application_ + "|" + name);
  }
  if (served_.contains(name)) throw Error(errors::kInvalidCall, name + " is served already");
  static constexpr GDBusInterfaceVTable kMethods = {OnCall, nullptr, nullptr, {}};
  GError* failure = nullptr;
  const guint registration = g_dbus_connection_register_object(
      connection_.get(), ObjectPath(name).c_str(), LinkInterfaceInfo(), &kMethods,
      TopicBox::Make(&topic), TopicBox::Free, &failure);
  const GErrorPointer error(failure);
  if (error) throw Error(errors::kInvalidCall, error->message);
  served_.emplace(name, registration);
  try {
    TakeName();
  } catch (...) {
    Unserve(name);
    throw;
  }
}

void DBusLinks::TakeName() {
  if (has_name_) return;
  constexpr guint do_not_queue = 4;
  constexpr guint has_it_now = 1;
  GErrorPointer error;
  const GVariantPointer reply =
      CallBus(connection_.get(), "RequestName",
              g_variant_new("(su)", BusName(application_).c_str(), do_not_queue),
              std::chrono::seconds(1), error);
  if (!reply) throw Error(errors::kDiskNotReady, error->message);
  guint answer = 0;
  g_variant_get(reply.get(), "(u)", &answer);
  if (answer != has_it_now) {
    throw Error(errors::kPermissionDenied, "another program has the name " + BusName(application_));
  }
  has_name_ = true;
}

void DBusLinks::Unserve(const std::string& name) {
  const auto found = served_.find(name);
  if (found == served_.end()) return;
  g_dbus_connection_unregister_object(connection_.get(), found->second);
  served_.erase(found);
}

void DBusLinks::Publish(const std::string& topic, const std::string& item,
                        const std::string& value) {
  if (!served_.contains(topic)) return;
  GVariant* const item_text = WireText(item);
  GVariant* const texts[] = {item_text, WireText(value)};
  g_dbus_connection_emit_signal(connection_.get(), nullptr, ObjectPath(topic).c_str(),
                                kLinkInterface, "Changed", g_variant_new_tuple(texts, 2), nullptr);
}

std::unique_ptr<LinkConversation> DBusLinks::Connect(const std::string& application,
                                                     const std::string& topic,
                                                     LinkListener& listener) {
  if (!problem_.empty()) throw Error(errors::kNoLinkPartner, problem_);
  if (!IsLinkName(application) || !IsLinkName(topic)) {
    throw Error(errors::kNoLinkPartner, "there is no " + application + "|" + topic);
  }
  std::shared_ptr<DBusPeer> peer = DBusPeer::Open(connection_.get(), application, topic, listener);
  std::erase_if(peers_, [](const std::weak_ptr<DBusPeer>& other) { return other.expired(); });
  peers_.push_back(peer);
  return std::make_unique<DBusConversation>(std::move(peer));
}

void DBusLinks::OnCall(GDBusConnection*, const char*, const char*, const char*, const char* method,
                       GVariant* arguments, GDBusMethodInvocation* call, gpointer box) {
  LinkTopic* const topic = TopicBox::Of(box);
  const std::string text = FirstText(arguments);
  if (text.size() > LinkTopic::kLongestCommand) {
    g_dbus_method_invocation_return_dbus_error(call, kTooLong, "the text is too long");
    return;
  }
  if (std::string_view(method) == "Execute") {
    // Answer before executing: a command may show a message and wait for the user, and the peer
    // must not wait for that.
    g_dbus_method_invocation_return_value(call, nullptr);
    topic->Execute(text);
    return;
  }
  const std::optional<std::string> value = topic->Request(text);
  if (!value || value->size() > LinkTopic::kLongestCommand) {
    g_dbus_method_invocation_return_dbus_error(call, kNoSuchItem, "there is no such item");
    return;
  }
  GVariant* const reply = WireText(*value);
  g_dbus_method_invocation_return_value(call, g_variant_new_tuple(&reply, 1));
}

std::unique_ptr<LinkTransport> MakeLinkTransport(const std::string& application) {
  return std::make_unique<DBusLinks>(application);
}

}  // namespace skyhop::platform
