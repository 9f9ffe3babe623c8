#pragma once

#include <vector>

#include "engine/engine_launcher.h"

namespace skyhop::platform {

/// Runs batch files with /bin/sh. Keeps only the end of a process's output. Forgets an ended
/// process after some more processes have started and ended.
class PosixEngineLauncher : public EngineLauncher {
 public:
  PosixEngineLauncher();
  /// Does not end running engines.
  ~PosixEngineLauncher() override;

  LaunchResult StartBatch(const std::filesystem::path& batch, const std::string& parameter,
                          const std::filesystem::path& working_folder) override;
  /// If the viewer does not exist, for example because it belongs to another system, uses the
  /// desktop's own.
  LaunchResult OpenInViewer(const std::string& viewer, const std::filesystem::path& file) override;
  [[nodiscard]] bool IsRunning(ProcessId process) override;
  bool WaitForEnd(ProcessId process, std::chrono::milliseconds longest) override;
  void End(ProcessId process) override;
  void EndWithThisProgram(ProcessId process) override;
  [[nodiscard]] std::string Output(ProcessId process) override;
  [[nodiscard]] std::filesystem::path ShortPath(const std::filesystem::path& path) override;
  [[nodiscard]] std::string BatchText(const std::filesystem::path& path) const override;
  [[nodiscard]] std::string DriverText(const std::filesystem::path& path) const override;
  [[nodiscard]] std::string LineEnd() const override { return "\n"; }

 private:
  struct Child;

  enum class Printing { kKept, kThrownAway };

  [[nodiscard]] Child* Find(ProcessId process);
  void ForgetLongEnded();
  LaunchResult Spawn(const char* const* arguments, const std::filesystem::path& working_folder,
                     Printing printing);

  std::vector<Child> children_;  // in the order of their starts
};

}  // namespace skyhop::platform
