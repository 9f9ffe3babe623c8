#include "geo/solar_position.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "common/dates.h"
#include "places.h"

namespace skyhop {
namespace {

using ::skyhop::testing::At;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

year_month_day Date(const std::string& text) {
  return ParseDate(text).value();
}

UtcTime Time(const std::string& date, int hour, int minute, int second = 0) {
  return sys_days{Date(date)} + std::chrono::hours(hour) + minutes(minute) + seconds(second);
}

// The expected values of the first two tables come from a separate computation with the planetary
// theory's series for the earth, nutation, aberration and dynamical time.

TEST(SolarElevation, IsGoodToATwentiethOfADegreeFrom1950To2050) {
  const struct {
    double latitude;
    double longitude;
    UtcTime time;
    double elevation;
  } cases[] = {
      {40 + 43 / 60.0, -74, Time("2026-11-15", 15, 0), 26.255},
      {-33 - 52 / 60.0, 151 + 13 / 60.0, Time("1950-01-01", 3, 0), 72.720},
      {51.5, -7 / 60.0, Time("2050-12-31", 12, 0), 15.441},
      {78 + 13 / 60.0, 15 + 38 / 60.0, Time("2026-06-21", 23, 0), 11.653},
      {0, 0, Time("2026-03-20", 14, 46), 50.351},
      {-18 - 8 / 60.0, 178 + 26 / 60.0, Time("1987-09-09", 20, 30), 32.378},
      {35 + 41 / 60.0, 139 + 46 / 60.0, Time("2000-02-29", 0, 0), 30.285},
  };
  for (const auto& c : cases) {
    EXPECT_NEAR(SolarElevation(At(c.latitude, c.longitude), c.time), c.elevation, 0.05)
        << TimeStamp(c.time);
  }
}

TEST(SolarElevation, EqualsTheDeclinationAtThePoles) {
  EXPECT_NEAR(SolarElevation(At(90, 0), Time("2026-06-21", 8, 25)), 23.44, 0.02);
  EXPECT_NEAR(SolarElevation(At(-90, 77), Time("2026-12-21", 20, 50)), 23.44, 0.02);
  EXPECT_NEAR(SolarElevation(At(90, 0), Time("2026-12-21", 20, 50)), -23.44, 0.02);
  // The equinoxes of 2026: 20 March 14:46 and 23 September 00:05.
  EXPECT_NEAR(SolarElevation(At(90, 123), Time("2026-03-20", 14, 46)), 0.0, 0.02);
  EXPECT_NEAR(SolarElevation(At(90, 123), Time("2026-09-23", 0, 5)), 0.0, 0.02);
}

TEST(SolarElevation, IsHighestAtTrueNoon) {
  const struct {
    const char* date;
    int equation;  // seconds by which the true noon comes before the mean one
  } cases[] = {{"2026-11-03", 985}, {"2026-02-11", -853}, {"2026-04-15", 0},
               {"2026-09-01", 0},   {"2026-05-14", 219},  {"2026-07-26", -393}};
  for (const auto& c : cases) {
    const UtcTime noon = Time(c.date, 12, 0, 0) - seconds(c.equation);
    // The heights an hour before and after differ only by the change of the declination.
    EXPECT_NEAR(SolarElevation(At(0, 0), noon - minutes(60)),
                SolarElevation(At(0, 0), noon + minutes(60)), 0.15)
        << c.date;
  }
}

std::string Crossings(const SunTimes& times) {
  if (times.day == SunTimes::Day::kUpAllDay) return "up";
  if (times.day == SunTimes::Day::kDownAllDay) return "down";
  std::string text;
  for (const SunCrossing& crossing : times.crossings) text += crossing.rises ? '+' : '-';
  return text;
}

TEST(SunTimes, AreGoodToTwoMinutes) {
  struct Site {
    const char* name;
    double latitude;
    double longitude;
  };
  const Site new_york{"New York", 40 + 43 / 60.0, -74};
  const Site london{"London", 51.5, -7 / 60.0};
  const Site tokyo{"Tokyo", 35 + 41 / 60.0, 139 + 46 / 60.0};
  const Site sydney{"Sydney", -33 - 52 / 60.0, 151 + 13 / 60.0};
  const Site quito{"Quito", -13 / 60.0, -78 - 31 / 60.0};
  const Site suva{"Suva", -18 - 8 / 60.0, 178 + 26 / 60.0};
  const Site tromso{"Tromso", 69 + 39 / 60.0, 18 + 57 / 60.0};
  const Site longyearbyen{"Longyearbyen", 78 + 13 / 60.0, 15 + 38 / 60.0};
  const Site circle{"below the arctic circle", 66 + 34 / 60.0, -21};
  const Site mcmurdo{"McMurdo", -77 - 51 / 60.0, 166 + 40 / 60.0};
  const struct {
    Site site;
    const char* date;
    const char* kinds;  // + up, - down
    std::vector<HourMinute> times;
  } cases[] = {
      {new_york, "2026-11-15", "+-", {{11, 43}, {21, 38}}},
      {new_york, "2026-06-21", "-+", {{0, 31}, {9, 25}}},
      {new_york, "1955-08-01", "-+", {{0, 13}, {9, 52}}},
      {london, "2026-12-21", "+-", {{8, 4}, {15, 53}}},
      {london, "2049-02-10", "+-", {{7, 23}, {17, 7}}},
      {tokyo, "2026-03-20", "-+", {{8, 52}, {20, 44}}},
      {sydney, "2026-12-21", "-+", {{9, 5}, {18, 41}}},
      {quito, "2026-11-15", "+-", {{10, 55}, {23, 3}}},
      {suva, "2026-06-21", "-+", {{5, 39}, {18, 37}}},
      {tromso, "2026-11-15", "+-", {{8, 26}, {12, 31}}},
      {tromso, "2026-05-18", "up", {}},
      {tromso, "2026-07-29", "-", {{21, 38}}},
      {tromso, "2026-12-21", "down", {}},
      {longyearbyen, "2026-04-17", "+-+", {{0, 8}, {22, 12}, {23, 40}}},
      {longyearbyen, "2026-08-25", "-", {{21, 56}}},
      {circle, "2026-07-18", "-+-", {{0, 2}, {2, 59}, {23, 57}}},
      {mcmurdo, "2026-06-21", "down", {}},
      {mcmurdo, "2026-11-15", "up", {}},
  };
  for (const auto& c : cases) {
    const UtcTime midnight = sys_days{Date(c.date)};
    const SunTimes found = SunTimesOn(At(c.site.latitude, c.site.longitude), Date(c.date));
    ASSERT_EQ(Crossings(found), c.kinds) << c.site.name << ' ' << c.date;
    for (std::size_t i = 0; i < c.times.size(); ++i) {
      const UtcTime expected = midnight + minutes(c.times[i].hour * 60 + c.times[i].minute);
      EXPECT_LE(std::chrono::abs(found.crossings[i].time - expected), minutes(2))
          << c.site.name << ' ' << TimeStamp(found.crossings[i].time);
    }
  }
}

TEST(SunTimes, NeitherOverlapNorLeaveGapsBetweenDays) {
  // Here the sunrise moves past midnight UTC in the course of the year.
  const Position place = At(10, 90);
  int rises = 0;
  UtcTime last{};
  for (int count = 0; count < 365; ++count) {
    const year_month_day date = sys_days{year{2026} / 1 / 1} + std::chrono::days(count);
    for (const SunCrossing& crossing : SunTimesOn(place, date).crossings) {
      EXPECT_EQ(UtcDate(crossing.time), date);
      if (!crossing.rises) continue;
      ++rises;
      if (last != UtcTime{}) {
        EXPECT_LT(std::chrono::abs(crossing.time - last - std::chrono::days(1)), minutes(1));
      }
      last = crossing.time;
    }
  }
  EXPECT_NEAR(rises, 365, 1);
}

}  // namespace
}  // namespace skyhop
