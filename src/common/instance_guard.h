#pragma once

namespace skyhop {

/// Keeps a second start of the program from running beside the first.
class InstanceGuard {
 public:
  virtual ~InstanceGuard() = default;
  /// Whether another instance is running already.
  [[nodiscard]] virtual bool AnotherIsRunning() = 0;
};

}  // namespace skyhop
