#include "beacon/clock_watch.h"

#include <algorithm>

#include "common/dates.h"
#include "common/numbers.h"

namespace skyhop::BeaconModule {
namespace {

/// The first midnight at or after a time that begins January or July.
UtcTime HalfYear(UtcTime time) {
  using std::chrono::sys_days;
  const std::chrono::year year = UtcDate(time).year();
  for (const UtcTime begin : {UtcTime(sys_days(year / std::chrono::January / 1)),
                              UtcTime(sys_days(year / std::chrono::July / 1))}) {
    if (time <= begin) return begin;
  }
  return sys_days((year + std::chrono::years(1)) / std::chrono::January / 1);
}

/// Whether a leap second explains such a jump between two times: a clock that counts it repeats the
/// second before midnight.
bool IsLeapSecond(UtcTime from, UtcTime to, std::chrono::milliseconds by) {
  constexpr std::chrono::minutes near{1};
  constexpr std::chrono::milliseconds second{1000};
  constexpr std::chrono::milliseconds inexact{250};
  return std::chrono::abs(std::chrono::abs(by) - second) <= inexact &&
         HalfYear(std::min(from, to) - near) <= std::max(from, to) + near;
}

}  // namespace

std::string ClockWatch::Look() {
  const Moment now{clock_->UtcNow(), timekeeping_->Passed()};
  if (last_) {
    // Compare with the previous look only: a system that slews its clock slowly keeps it right.
    const auto by = (now.clock - last_->clock) - (now.passed - last_->passed);
    if (std::chrono::abs(by) > kJump && !IsLeapSecond(last_->clock, now.clock, by))
      jump_ = {now, by};
  }
  last_ = now;
  if (jump_ && now.passed - jump_->at.passed >= kTold) jump_.reset();
  if (jump_) {
    const double seconds = static_cast<double>(std::chrono::abs(jump_->by).count()) / 1000;
    return std::string("The clock was set ") + (jump_->by.count() > 0 ? "forward" : "back") +
           " by " + FixedText(seconds, 1) + " s at " + TimeStamp(jump_->at.clock).substr(11) +
           " UTC";
  }
  if (timekeeping_->ClockState() == Timekeeping::State::kUnsynchronised) {
    return "The system's clock is not synchronised, so the slots may be off";
  }
  return {};
}

}  // namespace skyhop::BeaconModule
