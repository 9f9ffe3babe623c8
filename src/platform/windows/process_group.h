#pragma once

#include <cstdint>

#include "platform/windows/handle.h"

namespace skyhop::platform {

/// A process with all that it starts: they can be ended together.
class ProcessGroup {
 public:
  /// Takes in a process that was just started, with what it has started by now.
  explicit ProcessGroup(HANDLE process);

  void End();
  /// Whether the group ends when this program does, however that happens.
  void EndWithThisProgram(bool yes);
  /// Whether a process of the group is still running.
  [[nodiscard]] bool IsRunning() const;

 private:
  Handle job_;
};

}  // namespace skyhop::platform
