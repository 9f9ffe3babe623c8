#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "platform/placed_files.h"
#include "platform/platform.h"

namespace skyhop::platform {
namespace {

/// A program on the search path, found as the shell finds it.
std::optional<std::filesystem::path> OnSearchPath(const char* name) {
  const char* const variable = std::getenv("PATH");
  for (std::string_view rest = variable == nullptr ? "" : variable; !rest.empty();) {
    const std::size_t end = rest.find(':');
    const std::filesystem::path folder = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    // A relative folder would mean another one in the engine's working folder.
    if (!folder.is_absolute()) continue;
    const std::filesystem::path program = folder / name;
    std::error_code ignored;
    if (std::filesystem::is_regular_file(program, ignored) &&
        ::access(program.c_str(), X_OK) == 0) {
      return program;
    }
  }
  return std::nullopt;
}

class LinuxEngineHost : public EngineHost {
 public:
  [[nodiscard]] bool RunsWindowsPrograms() const override { return false; }
  [[nodiscard]] std::optional<std::filesystem::path> Wine() const override {
    return OnSearchPath("wine");
  }
  [[nodiscard]] std::optional<std::filesystem::path> NativeVoacap() const override {
    return OnSearchPath("voacapl");
  }
  [[nodiscard]] std::filesystem::path NativeData() const override {
    const char* const home = std::getenv("HOME");
    return std::filesystem::path(home == nullptr ? "/" : home) / "itshfbc";
  }
  [[nodiscard]] std::filesystem::path EstimateEngine() const override {
    return EstimateEngineFile();
  }
};

}  // namespace

std::unique_ptr<EngineHost> MakeEngineHost() {
  return std::make_unique<LinuxEngineHost>();
}

}  // namespace skyhop::platform
