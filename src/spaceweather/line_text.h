#pragma once

#include <string>

namespace skyhop {

/// The first line of a file's content if only a carriage return ends a line. Without carriage
/// returns it is the whole content, including line feeds.
[[nodiscard]] inline std::string LineText(const std::string& content) {
  return content.substr(0, content.find('\r'));
}

}  // namespace skyhop
