#include "beacon/clock_watch.h"

#include "common/dates.h"
#include "common/numbers.h"

namespace skyhop::BeaconModule {
namespace {

/// Whether a clock that is right may jump so at that time: where a leap second is counted, the
/// second before midnight comes twice.
bool IsLeapSecond(UtcTime time, std::chrono::milliseconds by) {
  using std::chrono::days;
  using std::chrono::month;
  constexpr std::chrono::minutes near{1};
  constexpr std::chrono::milliseconds second{1000};
  constexpr std::chrono::milliseconds inexact{250};
  const UtcTime midnight = std::chrono::floor<days>(time + near);
  const std::chrono::year_month_day date = UtcDate(midnight);
  const bool half_year = date.month() == month(1) || date.month() == month(7);
  return half_year && date.day() == std::chrono::day(1) &&
         std::chrono::abs(time - midnight) <= near &&
         std::chrono::abs(std::chrono::abs(by) - second) <= inexact;
}

}  // namespace

std::string ClockWatch::Look() {
  const Moment now{clock_->UtcNow(), timekeeping_->Passed()};
  if (last_) {
    // From look to look: a clock that is slewed slowly is being kept right.
    const auto by = (now.clock - last_->clock) - (now.passed - last_->passed);
    if (std::chrono::abs(by) > kJump && !IsLeapSecond(now.clock, by)) jump_ = {now, by};
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
