#pragma once

#include <chrono>
#include <filesystem>
#include <string>

namespace skyhop {

/// A process that a launcher started; 0 if the system does not identify it.
using ProcessId = long;

/// The result of a start: a code above 32 means success, another one is the reason of the failure
/// (see LaunchErrorText).
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

  /// Ends a process that this launcher started, with all processes that it started itself, even if
  /// only these still run. Returns when all of them have ended, or after about four seconds at the
  /// latest.
  virtual void End(ProcessId process) = 0;

  /// Makes a process, with all processes that it started, end when the user interrupts this
  /// program. 0 cancels that.
  virtual void EndWithThisProgram(ProcessId process) = 0;

  /// The last lines that the process and its children printed, if the system provides them.
  [[nodiscard]] virtual std::string Output(ProcessId process) = 0;

  /// The short form of an existing path, the path itself if it has none.
  [[nodiscard]] virtual std::filesystem::path ShortPath(const std::filesystem::path& path) = 0;

  /// The text of a path on a line of a batch file, quoted if the command processor would otherwise
  /// misread it. Throws Error 5 for a path that no line can hold.
  [[nodiscard]] virtual std::string BatchText(const std::filesystem::path& path) const = 0;

  /// The text of a path on a line of a driver file, which the engine itself reads. It is not
  /// quoted. Throws Error 5 for a path that no line can hold.
  [[nodiscard]] virtual std::string DriverText(const std::filesystem::path& path) const = 0;

  /// The line end of a batch or driver file.
  [[nodiscard]] virtual std::string LineEnd() const = 0;
};

/// The reason of a failed start with `code` (32 or less), as text.
[[nodiscard]] std::string LaunchErrorText(int code);

}  // namespace skyhop
