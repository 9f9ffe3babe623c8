#pragma once

#include "common/timekeeping.h"
#include "support/fakes.h"

namespace skyhop::testing {

/// Time that passes as the test says.
class FakeTimekeeping : public Timekeeping {
 public:
  [[nodiscard]] std::chrono::milliseconds Passed() const override { return passed; }
  [[nodiscard]] State ClockState() const override { return state; }

  /// Lets time pass, on the clock too.
  void Pass(FakeClock& clock, std::chrono::milliseconds time) {
    clock.now += time;
    passed += time;
  }

  std::chrono::milliseconds passed{5000};
  State state = State::kSynchronised;
};

}  // namespace skyhop::testing
