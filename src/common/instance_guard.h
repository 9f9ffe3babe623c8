#pragma once

#include <functional>

namespace skyhop {

/// Keeps a second start of the program from running beside the first.
class InstanceGuard {
 public:
  virtual ~InstanceGuard() = default;
  /// Whether another instance is running already.
  [[nodiscard]] virtual bool AnotherIsRunning() = 0;
  /// Asks the other instance to bring its window up and waits until it has, two seconds at most.
  virtual void ShowOther() = 0;
  /// For the running instance: calls `show` if another start has asked since the last call. The
  /// request is answered when `show` returns.
  virtual void AnswerShow(const std::function<void()>& show) = 0;
};

}  // namespace skyhop
