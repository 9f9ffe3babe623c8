#pragma once

#include <chrono>

namespace skyhop {

/// A moment in UTC, to the millisecond.
using UtcTime = std::chrono::sys_time<std::chrono::milliseconds>;

/// The system's clock.
class Clock {
 public:
  virtual ~Clock() = default;

  /// The current time in UTC.
  [[nodiscard]] virtual UtcTime UtcNow() const = 0;

  /// The time of a clock that cannot be set, for measuring how long something takes.
  [[nodiscard]] virtual std::chrono::steady_clock::time_point SteadyNow() const {
    return std::chrono::steady_clock::now();
  }

  /// The offset from UTC to the user's local time at `time`; negative west of Greenwich.
  [[nodiscard]] virtual std::chrono::seconds LocalOffset(UtcTime time) const = 0;
};

}  // namespace skyhop
