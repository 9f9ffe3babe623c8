#pragma once

#include <string>

#include "common/errors.h"

namespace skyhop::platform {

/// The error for a failure that a system function reported with `code`: its number is one of
/// `errors`, its description `what` followed by the system's own words.
[[nodiscard]] Error SystemError(unsigned long code, const std::string& what);

/// The same for the code that the last system function of this thread left behind.
[[nodiscard]] Error LastSystemError(const std::string& what);

}  // namespace skyhop::platform
