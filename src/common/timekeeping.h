#pragma once

#include <chrono>

namespace skyhop {

/// How the system keeps its time.
class Timekeeping {
 public:
  enum class State {
    kUnknown,         ///< the system does not tell
    kSynchronised,    ///< a time server, a receiver or the like keeps the clock right
    kUnsynchronised,  ///< nothing does
  };

  virtual ~Timekeeping() = default;

  /// Time that has passed since some moment in the past, also while the machine slept. Nobody can
  /// set it.
  [[nodiscard]] virtual std::chrono::milliseconds Passed() const = 0;

  [[nodiscard]] virtual State ClockState() const = 0;
};

}  // namespace skyhop
