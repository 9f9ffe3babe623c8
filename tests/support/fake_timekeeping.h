#pragma once

#include "common/timekeeping.h"
#include "support/fakes.h"

namespace skyhop::testing {

/// Time that only the test moves.
class FakeTimekeeping : public Timekeeping {
 public:
  [[nodiscard]] std::chrono::milliseconds Passed() const override { return passed; }
  [[nodiscard]] State ClockState() const override { return state; }

  /// Moves the time, and the clock too.
  void Pass(FakeClock& clock, std::chrono::milliseconds time) {
    clock.now += time;
    passed += time;
  }

  std::chrono::milliseconds passed{5000};
  State state = State::kSynchronised;
};

}  // namespace skyhop::testing
