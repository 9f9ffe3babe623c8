#include "platform/placed_files.h"
#include "platform/platform.h"

namespace skyhop::platform {
namespace {

class WindowsEngineHost : public EngineHost {
 public:
  [[nodiscard]] bool RunsWindowsPrograms() const override { return true; }
  [[nodiscard]] std::optional<std::filesystem::path> Wine() const override { return std::nullopt; }
  [[nodiscard]] std::optional<std::filesystem::path> NativeVoacap() const override {
    return std::nullopt;
  }
  [[nodiscard]] std::filesystem::path NativeData() const override { return {}; }
  [[nodiscard]] std::filesystem::path EstimateEngine() const override {
    return EstimateEngineFile();
  }
};

}  // namespace

std::unique_ptr<EngineHost> MakeEngineHost() {
  return std::make_unique<WindowsEngineHost>();
}

}  // namespace skyhop::platform
