#pragma once

#include <string>
#include <string_view>

#include "common/errors.h"

namespace skyhop::platform {

/// UTF-8 text as the system's wide functions take it. What is no UTF-8 becomes U+FFFD.
[[nodiscard]] std::wstring Wide(std::string_view text);

/// A text of the system as UTF-8.
[[nodiscard]] std::string Utf8(std::wstring_view text);

/// The error for a failure that a system function reported with `code`: its number is one of
/// `errors`, its description `what` followed by the system's own words.
[[nodiscard]] Error SystemError(unsigned long code, const std::string& what);

/// The same for the code that the last system function of this thread left behind.
[[nodiscard]] Error LastSystemError(const std::string& what);

}  // namespace skyhop::platform
