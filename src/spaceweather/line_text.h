#pragma once

#include <string>

namespace skyhop {

/// What reading one line of a file's content yields where only a carriage return ends a line: all
/// of it, line feeds included, in files without carriage returns.
[[nodiscard]] inline std::string LineText(const std::string& content) {
  return content.substr(0, content.find('\r'));
}

}  // namespace skyhop
