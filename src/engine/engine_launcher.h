#pragma once

#include <chrono>
#include <filesystem>
#include <string>

namespace skyhop {

/// A process that a launcher started; 0 when the system does not tell which one it is.
using ProcessId = long;

/// The result of a start: codes above 32 are success, the others say why it failed (see
/// LaunchErrorText).
struct LaunchResult {
  int code = 0;
  ProcessId process = 0;

  [[nodiscard]] bool Succeeded() const { return code > 32; }
};

/// Starts engines as separate processes.
class EngineLauncher {
 public:
  virtual ~EngineLauncher() = default;

  /// Starts a batch file hidden, in `working_folder`, with `parameter` as its argument.
  virtual LaunchResult StartBatch(const std::filesystem::path& batch, const std::string& parameter,
                                  const std::filesystem::path& working_folder) = 0;

  /// Starts a program in a normal window to show a file.
  virtual LaunchResult OpenInViewer(const std::string& viewer,
                                    const std::filesystem::path& file) = 0;

  /// True while a started process runs. An unknown process does not run.
  [[nodiscard]] virtual bool IsRunning(ProcessId process) = 0;

  /// Waits until the process ended, at most `longest`. Returns whether it has ended.
  virtual bool WaitForEnd(ProcessId process, std::chrono::milliseconds longest) = 0;

  /// Ends a process that this launcher started, with everything that it started itself, also when
  /// only the latter still runs. Returns when all of it has ended, or after some two seconds.
  virtual void End(ProcessId process) = 0;

  /// Sees to it that a process, with everything that it started, ends when the user interrupts this
  /// program. 0 takes that back.
  virtual void EndWithThisProgram(ProcessId process) = 0;

  /// The last lines that the process and its children printed, as far as the system can tell.
  [[nodiscard]] virtual std::string Output(ProcessId process) = 0;

  /// The short form of an existing path, the path itself where there is none.
  [[nodiscard]] virtual std::filesystem::path ShortPath(const std::filesystem::path& path) = 0;

  /// How a path stands on a line of a batch file: as it is, or quoted where the command processor
  /// would take a part of it for something else.
  /// Throws Error 5 for a path that no line can hold.
  [[nodiscard]] virtual std::string BatchText(const std::filesystem::path& path) const = 0;

  /// How a path stands on a line of a driver file, which the engine itself reads: as it is.
  /// Throws Error 5 for a path that no line can hold.
  [[nodiscard]] virtual std::string DriverText(const std::filesystem::path& path) const = 0;

  /// What ends a line of a batch or driver file.
  [[nodiscard]] virtual std::string LineEnd() const = 0;
};

/// The words for a start that failed with `code` (32 or less).
[[nodiscard]] std::string LaunchErrorText(int code);

}  // namespace skyhop
