#pragma once

#include <chrono>
#include <thread>

namespace skyhop {

/// The short wait between two attempts at a file that another program may hold open.
/// Implementations with a window handle its pending messages meanwhile.
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
