#pragma once

#include <map>
#include <memory>

#include "engine/engine_launcher.h"

namespace skyhop::platform {

/// Runs batch files through the shell, hidden. Their output is lost.
class WindowsEngineLauncher : public EngineLauncher {
 public:
  WindowsEngineLauncher();
  /// Does not end running engines.
  ~WindowsEngineLauncher() override;

  LaunchResult StartBatch(const std::filesystem::path& batch, const std::string& parameter,
                          const std::filesystem::path& working_folder) override;
  /// If the viewer does not exist, uses the program with which the user's files of this kind open.
  LaunchResult OpenInViewer(const std::string& viewer, const std::filesystem::path& file) override;
  [[nodiscard]] bool IsRunning(ProcessId process) override;
  bool WaitForEnd(ProcessId process, std::chrono::milliseconds longest) override;
  void End(ProcessId process) override;
  void EndWithThisProgram(ProcessId process) override;
  [[nodiscard]] std::string Output(ProcessId process) override;
  [[nodiscard]] std::filesystem::path ShortPath(const std::filesystem::path& path) override;
  /// Throws Error 5 also for a path with letters that the command processor's code page lacks.
  [[nodiscard]] std::string BatchText(const std::filesystem::path& path) const override;
  [[nodiscard]] std::string DriverText(const std::filesystem::path& path) const override;
  [[nodiscard]] std::string LineEnd() const override { return "\r\n"; }

 private:
  struct Child;

  [[nodiscard]] Child* Find(ProcessId process);
  void ForgetEnded();

  std::map<ProcessId, Child> children_;
};

}  // namespace skyhop::platform
