#pragma once

#include <chrono>
#include <string>

#include "common/errors.h"
#include "platform/linux/glib_pointers.h"

// The protocol of the links: every application owns the bus name "org.marlo.<Application>" and has
// an object "/<Topic>" for each topic, with the interface "org.marlo.Link".
namespace skyhop::platform {

inline constexpr const char* kLinkInterface = "org.marlo.Link";

/// The state of the peer after a failed call.
enum class CallFailure {
  kGone,      ///< it does not run, or the bus is gone
  kNoTopic,   ///< it runs but has no such object, interface or method
  kNoAnswer,  ///< it did not answer in time
  kRefused,   ///< it answered with an error of its own
};
[[nodiscard]] CallFailure FailureOf(const GError& error);

/// Whether a text can name an application or a topic.
[[nodiscard]] bool IsLinkName(const std::string& name);
[[nodiscard]] std::string BusName(const std::string& application);
[[nodiscard]] std::string ObjectPath(const std::string& topic);

/// `text` as a valid D-Bus string. Throws Error kInvalidCall when it is too long.
[[nodiscard]] GVariant* WireText(const std::string& text);
/// The first text of a message; empty if it has none.
[[nodiscard]] std::string FirstText(GVariant* message);

/// Calls a method of the bus itself. Returns null and sets `error` on failure.
[[nodiscard]] GVariantPointer CallBus(GDBusConnection* connection, const char* method,
                                      GVariant* arguments, std::chrono::milliseconds longest,
                                      GErrorPointer& error);

}  // namespace skyhop::platform
