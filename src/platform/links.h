#pragma once

#include <memory>
#include <string>

#include "interop/link_transport.h"

/// Links between programs. A library of its own, since programs without windows do without it.
namespace skyhop::platform {

/// The links of an application, over what programs of this system use for it. Always yields an
/// object, even where links cannot be used.
[[nodiscard]] std::unique_ptr<LinkTransport> MakeLinkTransport(const std::string& application);

}  // namespace skyhop::platform
