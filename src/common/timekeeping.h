#pragma once

#include <chrono>

namespace skyhop {

/// How the system keeps its time.
class Timekeeping {
 public:
  enum class State {
    kUnknown,         ///< the system does not report it
    kSynchronised,    ///< a time server, a receiver or the like keeps the clock right
    kUnsynchronised,  ///< no source keeps it right
  };

  virtual ~Timekeeping() = default;

  /// Time since a fixed moment in the past, including sleep of the machine. Users cannot set it.
  [[nodiscard]] virtual std::chrono::milliseconds Passed() const = 0;

  [[nodiscard]] virtual State ClockState() const = 0;
};

}  // namespace skyhop
