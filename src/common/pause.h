#pragma once

#include <chrono>

namespace skyhop {

/// The short wait between two attempts at a file that somebody else may hold open. Implementations
/// with a window let its pending messages run meanwhile.
class Pause {
 public:
  virtual ~Pause() = default;

  virtual void Wait(std::chrono::milliseconds duration) = 0;
};

}  // namespace skyhop
