#pragma once

#include <chrono>
#include <thread>

namespace skyhop {

/// The short wait between two attempts at a file that somebody else may hold open. Implementations
/// with a window let its pending messages run meanwhile.
class Pause {
 public:
  virtual ~Pause() = default;

  virtual void Wait(std::chrono::milliseconds duration) = 0;
};

/// Just sleeps, for programs without a window.
class SleepingPause : public Pause {
 public:
  void Wait(std::chrono::milliseconds duration) override { std::this_thread::sleep_for(duration); }
};

}  // namespace skyhop
