#include "ui/prediction/chart/solar_bars.h"

#include <algorithm>

#include "common/dates.h"
#include "common/numbers.h"
#include "geo/solar_position.h"

namespace skyhop {
namespace {

/// Elevation, in degrees, at which civil twilight ends.
constexpr double kTwilightElevation = -6.0;

bool IsOnEarth(const Angle& angle, int most) {
  return angle.degrees >= 0 && angle.minutes >= 0 && angle.seconds >= 0 &&
         LatLonModule::UnsignedDegrees(angle) <= most;
}

/// "11:42", rounded to the minute; the last half minute of a day stays on that day.
std::string ClockText(UtcTime time, std::chrono::sys_days midnight) {
  using std::chrono::minutes;
  const auto last = midnight + std::chrono::hours(24) - minutes(1);
  const HourMinute clock = UtcHourMinute(std::min(std::chrono::round<minutes>(time), last));
  return PaddedNumber(clock.hour, 2) + ":" + PaddedNumber(clock.minute, 2);
}

std::string ToolTip(const SunTimes& times, std::chrono::sys_days midnight) {
  switch (times.day) {
    case SunTimes::Day::kUpAllDay:
      return "the sun is up all day";
    case SunTimes::Day::kDownAllDay:
      return "the sun is down all day";
    case SunTimes::Day::kRisesOrSets:
      break;
  }
  std::string text;
  for (const SunCrossing& crossing : times.crossings) {
    if (!text.empty()) text += ", ";
    text += (crossing.rises ? "sunrise " : "sunset ") + ClockText(crossing.time, midnight);
  }
  return text + " UTC";
}

}  // namespace

SunState SunStateAt(const Position& station, UtcTime time) {
  const double elevation = SolarElevation(station, time);
  if (elevation >= kSunriseElevation) return SunState::kDay;
  return elevation >= kTwilightElevation ? SunState::kTwilight : SunState::kNight;
}

SunRow ComputeSunRow(const Position& station, std::chrono::year_month_day date) {
  SunRow row;
  row.known = date.ok() && IsOnEarth(station.latitude, 90) && IsOnEarth(station.longitude, 180);
  if (!row.known) return row;
  const std::chrono::sys_days midnight{date};
  UtcTime middle = midnight + std::chrono::minutes(30);
  for (SunState& state : row.states) {
    state = SunStateAt(station, middle);
    middle += std::chrono::hours(1);
  }
  row.tool_tip = ToolTip(SunTimesOn(station, date), midnight);
  return row;
}

}  // namespace skyhop
