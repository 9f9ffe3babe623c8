#pragma once

#include "engine/engine_search.h"

namespace skyhop::testing {

/// A machine with only the programs that the test sets.
class FakeEngineHost : public EngineHost {
 public:
  [[nodiscard]] bool RunsWindowsPrograms() const override { return runs_windows_programs; }
  [[nodiscard]] std::optional<std::filesystem::path> Wine() const override { return wine; }
  [[nodiscard]] std::optional<std::filesystem::path> NativeVoacap() const override {
    return voacap;
  }
  [[nodiscard]] std::filesystem::path NativeData() const override { return data; }
  [[nodiscard]] std::filesystem::path EstimateEngine() const override { return estimate; }

  bool runs_windows_programs = false;
  std::optional<std::filesystem::path> wine;
  std::optional<std::filesystem::path> voacap;
  std::filesystem::path data;
  std::filesystem::path estimate;
};

}  // namespace skyhop::testing
