#pragma once

#include <cstdint>

#include "platform/windows/handle.h"

namespace skyhop::platform {

/// A process with all processes that it starts. They can be ended together.
class ProcessGroup {
 public:
  /// Adds a process that was just started, and the processes that it has already started.
  explicit ProcessGroup(HANDLE process);

  void End();
  /// With `yes`, makes the group end with this program, even after a crash; without, cancels that.
  void EndWithThisProgram(bool yes);
  /// Whether a process of the group is still running.
  [[nodiscard]] bool IsRunning() const;

 private:
  Handle job_;
};

}  // namespace skyhop::platform
