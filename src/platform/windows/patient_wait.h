#pragma once

#include <windows.h>

#include <chrono>

namespace skyhop::platform {

/// Waits for a system object, at most until a time. Other programs' questions to this thread's
/// windows are answered meanwhile, since the one waited for may have to ask them; nothing else
/// happens. Returns whether the object was set.
[[nodiscard]] bool WaitPatiently(HANDLE object, std::chrono::steady_clock::time_point until);

}  // namespace skyhop::platform
