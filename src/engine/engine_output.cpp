#include "engine/engine_output.h"

#include "common/text.h"

namespace skyhop {

std::vector<std::string> EngineOutputLines(std::string_view output) {
  std::vector<std::string> lines;
  for (std::string_view rest = Trim(output); !rest.empty();) {
    const std::string_view line = TakeLine(rest);
    // The closing lines of every batch file mean nothing to this system's command processor.
    if (line == "off" || line.find(" cls: not found") != std::string_view::npos) continue;
    if (!Trim(line).empty() || !lines.empty()) lines.emplace_back(line);
  }
  while (!lines.empty() && Trim(lines.back()).empty()) lines.pop_back();
  return lines;
}

namespace {

/// Whether a Fortran or C run-time system printed the line as part of a backtrace.
bool IsBacktrace(std::string_view line) {
  const bool frame = line.size() > 1 && line[0] == '#' && line[1] >= '0' && line[1] <= '9';
  return line.empty() || frame || line.find("Backtrace for this error") != std::string_view::npos ||
         line.starts_with("Error termination") || line.starts_with("Could not print backtrace");
}

/// Whether the line names a place in the engine's source; the error is on the next line.
bool IsSourcePlace(std::string_view line) {
  return line.starts_with("At line ") && line.find(" of file ") != std::string_view::npos;
}

}  // namespace

std::string FirstMeaningfulLine(std::string_view output) {
  std::string place;
  for (const std::string& line : EngineOutputLines(output)) {
    const std::string_view text = Trim(line);
    if (IsBacktrace(text)) continue;
    if (!IsSourcePlace(text)) return std::string(text);
    if (place.empty()) place = text;
  }
  return place;
}

std::string EngineFailureText(EngineChoice engine, const EngineFinding& finding,
                              std::string_view output) {
  const std::string missing = MissingParts(engine, finding);
  const std::string line = FirstMeaningfulLine(output);
  std::string text = missing.empty() ? "" : " " + missing;
  if (!line.empty()) text += " It printed: " + line + (line.ends_with('.') ? "" : ".");
  return text;
}

}  // namespace skyhop
