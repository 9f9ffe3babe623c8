#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "common/clock.h"
#include "common/timekeeping.h"

namespace skyhop::BeaconModule {

/// Reports when the system's clock may be wrong: when it was set between two looks, and when the
/// system reports that it is not synchronised. Does not correct the clock.
class ClockWatch {
 public:
  /// A larger difference between two looks is not inexact timing.
  static constexpr std::chrono::milliseconds kJump{250};
  /// How long a jump is reported.
  static constexpr std::chrono::minutes kTold{10};

  /// Both must outlive this object.
  ClockWatch(const Clock& clock, const Timekeeping& timekeeping)
      : clock_(&clock), timekeeping_(&timekeeping) {}

  /// Looks at the clock; the caller repeats this. Returns the fault as a sentence, empty if none is
  /// known.
  [[nodiscard]] std::string Look();

  /// Restarts after a pause. Changes of the clock during the pause are not reported.
  void Restart() { last_.reset(); }

 private:
  struct Moment {
    UtcTime clock;
    std::chrono::milliseconds passed{};
  };
  struct Jump {
    Moment at;
    std::chrono::milliseconds by{};
  };

  const Clock* clock_;
  const Timekeeping* timekeeping_;
  std::optional<Moment> last_;
  std::optional<Jump> jump_;
};

}  // namespace skyhop::BeaconModule
