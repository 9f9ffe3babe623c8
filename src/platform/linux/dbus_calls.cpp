#include "platform/linux/dbus_calls.h"

#include <algorithm>

#include "common/text.h"
#include "interop/link_transport.h"

namespace skyhop::platform {
namespace {

constexpr const char* kBus = "org.freedesktop.DBus";

CallFailure BusFailure(int code) {
  switch (code) {
    case G_DBUS_ERROR_UNKNOWN_METHOD:
    case G_DBUS_ERROR_UNKNOWN_OBJECT:
    case G_DBUS_ERROR_UNKNOWN_INTERFACE:
      return CallFailure::kNoTopic;
    case G_DBUS_ERROR_NO_REPLY:
    case G_DBUS_ERROR_TIMEOUT:
    case G_DBUS_ERROR_TIMED_OUT:
      return CallFailure::kNoAnswer;
    case G_DBUS_ERROR_SERVICE_UNKNOWN:
    case G_DBUS_ERROR_NAME_HAS_NO_OWNER:
    case G_DBUS_ERROR_NO_SERVER:
    case G_DBUS_ERROR_DISCONNECTED:
      return CallFailure::kGone;
    default:
      return CallFailure::kRefused;
  }
}

bool IsNameCharacter(char c) {
  return IsLetter(c) || IsDigit(c) || c == '_';
}

}  // namespace

CallFailure FailureOf(const GError& error) {
  if (error.domain == G_DBUS_ERROR) return BusFailure(error.code);
  if (g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT)) return CallFailure::kNoAnswer;
  if (g_dbus_error_is_remote_error(&error)) return CallFailure::kRefused;
  return CallFailure::kGone;
}

bool IsLinkName(const std::string& name) {
  constexpr std::size_t longest = 200;
  return !name.empty() && name.size() <= longest && !IsDigit(name.front()) &&
         std::all_of(name.begin(), name.end(), IsNameCharacter);
}

std::string BusName(const std::string& application) {
  return "org.marlo." + application;
}

std::string ObjectPath(const std::string& topic) {
  return "/" + topic;
}

GVariant* WireText(const std::string& text) {
  if (text.size() > LinkTopic::kLongestCommand) {
    throw Error(errors::kInvalidCall,
                "a text of " + std::to_string(text.size()) + " bytes is too long for a link");
  }
  return g_variant_new_take_string(
      g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
}

std::string FirstText(GVariant* message) {
  if (g_variant_n_children(message) == 0) return {};
  const GVariantPointer text(g_variant_get_child_value(message, 0));
  if (!g_variant_is_of_type(text.get(), G_VARIANT_TYPE_STRING)) return {};
  gsize size = 0;
  const char* const data = g_variant_get_string(text.get(), &size);
  return {data, size};
}

GVariantPointer CallBus(GDBusConnection* connection, const char* method, GVariant* arguments,
                        std::chrono::milliseconds longest, GErrorPointer& error) {
  GError* failure = nullptr;
  GVariantPointer reply(g_dbus_connection_call_sync(
      connection, kBus, "/org/freedesktop/DBus", kBus, method, arguments, nullptr,
      G_DBUS_CALL_FLAGS_NONE, static_cast<int>(longest.count()), nullptr, &failure));
  error.reset(failure);
  return reply;
}

}  // namespace skyhop::platform
