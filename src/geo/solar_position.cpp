#include "geo/solar_position.h"

#include <cmath>
#include <numbers>

namespace skyhop {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::sys_days;

constexpr double Radians(double degrees) {
  return degrees * std::numbers::pi / 180.0;
}

double NorthLatitude(const Position& place) {
  const double degrees = LatLonModule::UnsignedDegrees(place.latitude);
  return place.latitude.sign == -1 ? degrees : -degrees;
}

double EastLongitude(const Position& place) {
  const double degrees = LatLonModule::UnsignedDegrees(place.longitude);
  return place.longitude.sign == -1 ? -degrees : degrees;
}

/// Days since noon of 1 January 2000.
double DaysSinceEpoch(UtcTime time) {
  using Days = std::chrono::duration<double, std::chrono::days::period>;
  return Days(time - sys_days{std::chrono::year{2000} / 1 / 1}).count() - 0.5;
}

/// Finds the crossing between two times on different sides of it.
UtcTime Bisect(const Position& place, UtcTime before, UtcTime after, bool rises) {
  while (after - before > milliseconds(1)) {
    const UtcTime middle = before + (after - before) / 2;
    const bool up = SolarElevation(place, middle) >= kSunriseElevation;
    (up == rises ? after : before) = middle;
  }
  return after;
}

}  // namespace

double SolarElevation(const Position& place, UtcTime time) {
  const double days = DaysSinceEpoch(time);
  const double mean_longitude = 280.460 + 0.9856474 * days;
  const double anomaly = Radians(357.528 + 0.9856003 * days);
  const double longitude =
      Radians(mean_longitude + 1.915 * std::sin(anomaly) + 0.020 * std::sin(2.0 * anomaly));
  const double obliquity = Radians(23.439 - 0.0000004 * days);
  const double right_ascension =
      std::atan2(std::cos(obliquity) * std::sin(longitude), std::cos(longitude));
  const double sin_declination = std::sin(obliquity) * std::sin(longitude);
  const double cos_declination = std::sqrt(1.0 - sin_declination * sin_declination);
  const double sidereal_time = 280.46061837 + 360.98564736629 * days;
  const double hour_angle = Radians(sidereal_time + EastLongitude(place)) - right_ascension;
  const double latitude = Radians(NorthLatitude(place));
  const double sine = std::sin(latitude) * sin_declination +
                      std::cos(latitude) * cos_declination * std::cos(hour_angle);
  return std::asin(std::fmin(std::fmax(sine, -1.0), 1.0)) * 180.0 / std::numbers::pi;
}

SunTimes SunTimesOn(const Position& place, std::chrono::year_month_day date) {
  // A crossing is the first moment on the new side. The search runs from just before midnight to
  // just before the next one, so each crossing belongs to one day only.
  const UtcTime begin = UtcTime(sys_days{date}) - milliseconds(1);
  const UtcTime end = begin + std::chrono::days(1);
  SunTimes times;
  bool up = SolarElevation(place, begin) >= kSunriseElevation;
  for (UtcTime at = begin; at < end; at += minutes(1)) {
    const UtcTime next = at + minutes(1);
    const bool up_next = SolarElevation(place, next) >= kSunriseElevation;
    if (up_next == up) continue;
    times.crossings.push_back({Bisect(place, at, next, up_next), up_next});
    up = up_next;
  }
  if (!times.crossings.empty()) {
    times.day = SunTimes::Day::kRisesOrSets;
  } else {
    times.day = up ? SunTimes::Day::kUpAllDay : SunTimes::Day::kDownAllDay;
  }
  return times;
}

}  // namespace skyhop
