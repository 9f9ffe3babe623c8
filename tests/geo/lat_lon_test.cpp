#include "geo/lat_lon.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include "support/diagnostics_fixture.h"

namespace skyhop {

void PrintTo(const Angle& angle, std::ostream* out) {
  *out << angle.degrees << ' ' << angle.minutes << ' ' << angle.seconds << " sign " << angle.sign;
}

namespace LatLonModule {
namespace {

using ::skyhop::testing::LoggedDiagnostics;

constexpr Angle kUndefined{360, 0, 0, 1};

TEST(LatLonText, ShowsPlainNumbersAndTheHemisphere) {
  const Position north_west{{42, 5, 0, -1}, {71, 30, 59, -1}};
  EXPECT_EQ(LatitudeString(north_west), "42 5' 0\" N");
  EXPECT_EQ(LongitudeString(north_west), "71 30' 59\" W");
  // Any sign but -1 is south or east.
  const Position south_east{{0, 0, 0, 0}, {180, 0, 0, 1}};
  EXPECT_EQ(LatitudeString(south_east), "0 0' 0\" S");
  EXPECT_EQ(LongitudeString(south_east), "180 0' 0\" E");
}

TEST(LatLonText, IsReadBackAsTheSameAngle) {
  LoggedDiagnostics log;
  for (int second = 0; second <= 180 * 3600; second += 41) {
    for (const int sign : {-1, 1}) {
      const Angle angle{static_cast<std::int16_t>(second / 3600),
                        static_cast<std::int16_t>(second / 60 % 60),
                        static_cast<std::int16_t>(second % 60), static_cast<std::int16_t>(sign)};
      const Position position{angle, angle};
      ASSERT_EQ(ParseAngle(LatitudeString(position), log.diagnostics), angle);
      ASSERT_EQ(ParseAngle(LongitudeString(position), log.diagnostics), angle);
    }
  }
  EXPECT_TRUE(log.errors.empty());
}

TEST(ParseAngle, ReadsEveryAcceptedForm) {
  const struct {
    const char* text;
    Angle angle;
  } cases[] = {
      {"42 5' 0\" N", {42, 5, 0, -1}},
      {"  33 52' 4\"s\t", {33, 52, 4, 1}},
      {"71 30'W", {71, 30, 0, -1}},
      {"71W", {71, 0, 0, -1}},
      {"71\t30'15\"e", {71, 30, 15, 1}},
      {"30'N", {0, 30, 0, -1}},
      {"30'15\"N", {0, 30, 0, -1}},  // without a blank the seconds are ignored
      {"71 30.0 W", {71, 0, 0, -1}},
      {"W071 30.0", {71, 0, 0, -1}},  // read as free form; the next ones have fixed columns
      {"E071 30.0", {71, 30, 0, 1}},
      {"n042 30.500", {42, 30, 30, -1}},
      {" S033 52.4 ", {33, 52, 24, 1}},
      {"71 dull W", {71, 0, 0, -1}},  // text after the pieces is ignored
      {"71 30'dull W", {71, 30, 0, -1}},
      {"42 5' 3\" south", {42, 5, 3, 1}},
      {"42 5' 3\" N N", {42, 5, 3, -1}},
      {"42.5N", {42, 0, 0, -1}},
      {"43.5N", {44, 0, 0, -1}},
      {"-5 -6'S", {-5, -6, 0, 1}},
      {"1e3", {1, 0, 0, 1}},  // the letter is the hemisphere, not an exponent
      {"32767 W", {32767, 0, 0, -1}},
  };
  LoggedDiagnostics log;
  for (const auto& c : cases) EXPECT_EQ(ParseAngle(c.text, log.diagnostics), c.angle) << c.text;
  EXPECT_TRUE(log.errors.empty());
}

TEST(ParseAngle, ReturnsTheUndefinedAngleForOtherText) {
  const struct {
    std::string text;
    int error;  // number in the error log, 0 for no line
  } cases[] = {
      {"", 0},
      {" \t ", 0},
      {"42 5'", 0},        // no hemisphere
      {"42 5' N W", 0},    // two different ones
      {"42 30\"N", 0},     // seconds without minutes
      {"42 30\" 5'N", 0},  // marks in the wrong order
      {"5' 30\"N", 0},     // the blank comes after the minutes
      {"W'", 13},
      {"W W", 13},
      {"x 30'W", 13},
      {"71 x'W", 13},
      {"71 'W", 13},
      {"71 30' x\"W", 13},
      {"71,5 W", 13},
      {"42\xC2\xB0 30'W", 13},
      {"0x10 W", 13},
      {"inf W", 0},
      {"W\xFF\xFE\x80", 13},
      {std::string("7\0W", 3), 13},
      {"40000 W", 6},
      {"-32769 W", 6},
      {std::string(400, '9') + "W", 6},
      {std::string(65536, '7') + " W", 6},
      {std::string(65536, 'x'), 0},
      {std::string(65536, 'W'), 13},
      {"N", 0},
      {"N042", 0},
      {"N042 abc", 0},
      {"N 42 -1.0", 0},
      {"N042 99999", 0},
      {"E1E9 30.0", 0},
      {"S" + std::string(65536, '1'), 0},
  };
  for (const auto& c : cases) {
    LoggedDiagnostics log;
    EXPECT_EQ(ParseAngle(c.text, log.diagnostics), kUndefined) << c.text.substr(0, 40);
    ASSERT_EQ(log.errors.size(), c.error == 0 ? 0U : 1U) << c.text.substr(0, 40);
    if (c.error != 0) {
      EXPECT_TRUE(log.errors[0].starts_with("program error " + std::to_string(c.error) +
                                            " in module LatLonModule.ParseAngle: "))
          << log.errors[0];
    }
  }
}

TEST(ParsePrefixedAngle, ReadsFixedColumns) {
  const struct {
    const char* text;
    Angle angle;
  } cases[] = {
      {"N042 30.500", {42, 30, 30, -1}},
      {"N042 30.000", {42, 30, 0, -1}},
      {"N042 31.000", {42, 30, 60, -1}},  // halves go to the even minute
      {" w071 59.999 ", {71, 59, 60, -1}},
      {"S000 00.000", {0, 0, 0, 1}},
      {"E180_00.000", {180, 0, 0, 1}},
      {"E071 30.123456", {71, 30, 7, 1}},  // six columns, 30.123
      {"E071 30.12 4", {71, 30, 7, 1}},
      {"N2.5 10.0", {2, 10, 0, -1}},
      {"N3.5 10.0", {4, 10, 0, -1}},
      {"N-10 10.0", {-10, 10, 0, -1}},
      {"", kUndefined},
      {"  ", kUndefined},
      {"N", kUndefined},
      {"N042", kUndefined},
      {"N04x 30.0", kUndefined},
      {"N042 -0.5", kUndefined},
      {"N042 1e9", kUndefined},
      {"N9e9 30.0", kUndefined},
      {"X042 30.0", {-1, 0, 0, 0}},
      {"042 30.0N", {-1, 0, 0, 0}},
      {"\xC3\xA9", {-1, 0, 0, 0}},
  };
  for (const auto& c : cases) EXPECT_EQ(ParsePrefixedAngle(c.text), c.angle) << c.text;
}

TEST(CoordinateValidity, LimitsSizeAndMinutesAndSeconds) {
  const struct {
    const char* text;
    bool latitude;
    bool longitude;
  } cases[] = {
      {"", false, false},
      {"   ", false, false},
      {"nonsense", false, false},
      {"4x 30' 0\" N", false, false},
      {"42", false, false},
      {"89 59' 59\" N", true, true},
      {"90 0' 0\" N", true, true},
      {"90 0' 1\" N", false, true},
      {"90 1' 0\" N", false, true},
      {"91 0' 0\" S", false, true},
      {"180 0' 0\" W", false, true},
      {"180 0' 1\" W", false, false},
      {"180 1' 0\" E", false, false},
      {"181 0' 0\" E", false, false},
      {"360 W", false, false},
      {"10 60' 0\" N", false, false},
      {"10 5' 60\" N", false, false},
      {"N042 30.000", true, true},
      {"N042 31.000", false, false},  // reads as 60 seconds
      {"10 E", true, true},           // the letter does not have to suit the axis
      {"-100 -70' -80\" N", true, true},
  };
  LoggedDiagnostics log;
  for (const auto& c : cases) {
    EXPECT_EQ(ValidLatitude(c.text, log.diagnostics), c.latitude) << c.text;
    EXPECT_EQ(ValidLongitude(c.text, log.diagnostics), c.longitude) << c.text;
    EXPECT_EQ(LatitudeIn(c.text).has_value(), c.latitude) << c.text;
    EXPECT_EQ(LongitudeIn(c.text).has_value(), c.longitude) << c.text;
  }
  EXPECT_EQ(LongitudeIn("71 30' 5\" w"), (Angle{71, 30, 5, -1}));
}

TEST(AngleFromDecimalDegrees, RoundsToSecondsAndCarries) {
  const double infinity = std::numeric_limits<double>::infinity();
  const struct {
    double degrees;
    Axis axis;
    Angle angle;
  } cases[] = {
      {42.5, Axis::kLatitude, {42, 30, 0, -1}},
      {-42.5, Axis::kLatitude, {42, 30, 0, 1}},
      {71.0833333, Axis::kLongitude, {71, 5, 0, 1}},
      {-71.0602778, Axis::kLongitude, {71, 3, 37, -1}},
      {9.99999, Axis::kLatitude, {10, 0, 0, -1}},
      {-59.9999, Axis::kLongitude, {60, 0, 0, -1}},
      {0, Axis::kLatitude, {0, 0, 0, -1}},
      {-0.0001, Axis::kLatitude, {0, 0, 0, -1}},
      {-0.0001, Axis::kLongitude, {0, 0, 0, 1}},
      {-90, Axis::kLatitude, {90, 0, 0, 1}},
      {-180, Axis::kLongitude, {180, 0, 0, -1}},
      {90.00001, Axis::kLatitude, kUndefined},
      {180.00001, Axis::kLongitude, kUndefined},
      {-1e300, Axis::kLongitude, kUndefined},
      {-infinity, Axis::kLatitude, kUndefined},
      {std::nan(""), Axis::kLatitude, kUndefined},
  };
  for (const auto& c : cases) EXPECT_EQ(AngleFromDecimalDegrees(c.degrees, c.axis), c.angle);
}

}  // namespace
}  // namespace LatLonModule
}  // namespace skyhop
