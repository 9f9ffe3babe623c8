#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "common/clock.h"
#include "common/timekeeping.h"

namespace skyhop::BeaconModule {

/// Tells when the system's clock seems off: when it has been set while the program looked, and when
/// the system says that nothing keeps it right. Corrects nothing.
class ClockWatch {
 public:
  /// A difference between two looks that is more than inexact timing.
  static constexpr std::chrono::milliseconds kJump{250};
  /// How long a jump is told.
  static constexpr std::chrono::minutes kTold{10};

  /// Both must outlive this object.
  ClockWatch(const Clock& clock, const Timekeeping& timekeeping)
      : clock_(&clock), timekeeping_(&timekeeping) {}

  /// Looks at the clock, again and again. Returns what is wrong in a sentence; empty when nothing
  /// is known to be.
  [[nodiscard]] std::string Look();

  /// Begins anew after a pause: what the clock did meanwhile is not told.
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
