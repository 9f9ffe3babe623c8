#pragma once

#include <string>

#include "common/errors.h"

namespace skyhop::platform {

/// The error for a failure of a system function with `code`: its number is one of `errors`, its
/// description `what` followed by the system's own text.
[[nodiscard]] Error SystemError(unsigned long code, const std::string& what);

/// The same for the code of the last system function of this thread.
[[nodiscard]] Error LastSystemError(const std::string& what);

}  // namespace skyhop::platform
