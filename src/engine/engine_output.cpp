#include "engine/engine_output.h"

#include "common/text.h"

namespace skyhop {

std::vector<std::string> EngineOutputLines(std::string_view output) {
  std::vector<std::string> lines;
  for (std::string_view rest = Trim(output); !rest.empty();) {
    const std::size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    // The closing lines of every batch file mean nothing to this system's command processor.
    if (line == "off" || line.find(" cls: not found") != std::string_view::npos) continue;
    if (!Trim(line).empty() || !lines.empty()) lines.emplace_back(line);
  }
  while (!lines.empty() && Trim(lines.back()).empty()) lines.pop_back();
  return lines;
}

}  // namespace skyhop
