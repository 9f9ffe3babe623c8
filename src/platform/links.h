#pragma once

#include <memory>
#include <string>

#include "interop/link_transport.h"

/// Links between programs. They are a separate library because programs without windows do not need
/// them.
namespace skyhop::platform {

/// The links of an application, over the mechanism that programs use for links on this system.
/// Always returns an object, even if links cannot be used.
[[nodiscard]] std::unique_ptr<LinkTransport> MakeLinkTransport(const std::string& application);

}  // namespace skyhop::platform
