#pragma once

namespace skyhop {

/// The timer that polls for the engine's results, once every 1000 ms while it runs.
class ExecuteTimer {
 public:
  virtual ~ExecuteTimer() = default;

  virtual void Start() = 0;
  virtual void Stop() = 0;
  [[nodiscard]] virtual bool Running() const = 0;
};

}  // namespace skyhop
