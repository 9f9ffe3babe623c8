#pragma once

#include <string_view>

#include "common/text.h"

namespace skyhop {

/// Whether a text is the address of a page that a browser may be given: nothing that would open a
/// file or start a program instead.
[[nodiscard]] inline bool IsWebAddress(std::string_view text) {
  const std::string lower = LowerCase(text);
  return lower.starts_with("http://") || lower.starts_with("https://");
}

}  // namespace skyhop
