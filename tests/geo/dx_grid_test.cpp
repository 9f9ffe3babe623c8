#include "geo/dx_grid.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/diagnostics_fixture.h"

namespace skyhop::DXGridModule {
namespace {

using ::skyhop::testing::LoggedDiagnostics;

std::string CenterText(const std::string& locator) {
  const Position position = GetGridCenterLocation(locator);
  return LatLonModule::LatitudeString(position) + ", " + LatLonModule::LongitudeString(position);
}

Angle Seconds(int seconds, int sign) {
  return {static_cast<std::int16_t>(seconds / 3600), static_cast<std::int16_t>(seconds / 60 % 60),
          static_cast<std::int16_t>(seconds % 60), static_cast<std::int16_t>(sign)};
}

TEST(Locator, IsShownInItsUsualCase) {
  const struct {
    const char* text;
    const char* shown;
  } cases[] = {{" \tfn42AB ", "FN42ab"},
               {"fn42", "FN42"},
               {"fn", "FN"},
               {"", ""},
               {"   ", ""},
               {"fn42x", "FN42x"},
               {"\xC3\xA9Q42XX",
                "\xC3\xA9Q4"
                "2xx"}};
  for (const auto& c : cases) EXPECT_EQ(formatgrid(c.text), c.shown);
}

TEST(Locator, IsDistinguishedFromOtherText) {
  for (const char* text : {"FN42", "fn42", "AA00", "RR99XX", "rr99xx", "jO62qM"}) {
    EXPECT_TRUE(IsGridSquare(text)) << text;
  }
  for (const char* text :
       {"",       "F",      "FN4",    "FN42a",  "FN42abc",     "SA00",        "AS00", "A0A0",
        "FNab42", "FN42AY", "FN42YA", "FN42a1", "@A00",        "A[00",        "FN4:", "FN/2",
        " FN42",  "FN42 ",  "FN42  ", "FN 42",  "F\xC3\xA9_2", "FN42\xC3\xA9"}) {
    EXPECT_FALSE(IsGridSquare(text)) << text;
  }
  EXPECT_FALSE(IsGridSquare(std::string(65536, 'A')));
  EXPECT_FALSE(IsGridSquare(std::string("FN4\0", 4)));
}

TEST(LocatorCharacters, AreSingleCharactersOfTheirRange) {
  const struct {
    const char* text;
    bool digit;
    bool primary;
    bool secondary;
  } cases[] = {{"0", true, false, false},  {"9", true, false, false}, {"a", false, true, true},
               {"R", false, true, true},   {"s", false, false, true}, {"X", false, false, true},
               {"y", false, false, false}, {"", false, false, false}, {"00", false, false, false},
               {"AA", false, false, false}};
  for (const auto& c : cases) {
    EXPECT_EQ(IsDigit(c.text), c.digit) << c.text;
    EXPECT_EQ(IsPrimaryGridChar(c.text), c.primary) << c.text;
    EXPECT_EQ(IsSecondaryGridChar(c.text), c.secondary) << c.text;
  }
}

TEST(LocatorCenter, LiesInTheMiddleOfTheArea) {
  const struct {
    const char* locator;
    const char* center;
  } cases[] = {
      {"FN42", "42 30' 0\" N, 71 0' 0\" W"},       {"fn42", "42 30' 0\" N, 71 0' 0\" W"},
      {"AA00", "89 30' 0\" S, 179 0' 0\" W"},      {"RR99", "89 30' 0\" N, 179 0' 0\" E"},
      {"FN42aa", "42 1' 15\" N, 71 57' 30\" W"},   {"fn42LX", "42 58' 45\" N, 71 2' 30\" W"},
      {"FN42ml", "42 28' 45\" N, 70 57' 30\" W"},  {"FN42xx", "42 58' 45\" N, 70 2' 30\" W"},
      {"IO91wm", "51 31' 15\" N, 0 7' 30\" W"},    {"JJ00aa", "0 1' 15\" N, 0 2' 30\" E"},
      {"II99xx", "0 1' 15\" S, 0 2' 30\" W"},      {"AA00aa", "89 58' 45\" S, 179 57' 30\" W"},
      {"RR99xx", "89 58' 45\" N, 179 57' 30\" E"}, {"QF56od", "33 51' 15\" S, 151 12' 30\" E"},
  };
  for (const auto& c : cases) EXPECT_EQ(CenterText(c.locator), c.center) << c.locator;
  // Squares on the equator and the prime meridian have no sign there.
  EXPECT_EQ(GetGridCenterLocation("JJ00"), (Position{{0, 30, 0, 0}, {1, 0, 0, 0}}));
  EXPECT_EQ(GetGridCenterLocation("II99"), (Position{{0, 30, 0, 0}, {1, 0, 0, -1}}));
  EXPECT_TRUE(LatLonModule::IsUndefined(GetGridCenterLocation("FN4").latitude));
  EXPECT_TRUE(LatLonModule::IsUndefined(GetGridCenterLocation("").longitude));
}

TEST(LocatorCenter, RoundTripsForEverySquareAndSomeSubsquares) {
  LoggedDiagnostics log;
  for (char x = 'A'; x <= 'R'; ++x) {
    for (char y = 'A'; y <= 'R'; ++y) {
      for (char i = '0'; i <= '9'; ++i) {
        for (char j = '0'; j <= '9'; ++j) {
          const std::string square{x, y, i, j};
          // A sign of 0 counts as south, so the row north of the equator becomes the one south of
          // it.
          const bool north_of_equator = y == 'J' && j == '0';
          const std::string expected = north_of_equator ? std::string{x, 'I', i, '9'} : square;
          ASSERT_EQ(GetGridSquare(GetGridCenterLocation(square), log.diagnostics), expected + "mm")
              << square;
          const char a = static_cast<char>('a' + (x + j) % 24);
          const char b = static_cast<char>('a' + (y * 7 + i) % 24);
          const std::string subsquare = square + a + b;
          ASSERT_EQ(GetGridSquare(GetGridCenterLocation(subsquare), log.diagnostics), subsquare);
        }
      }
    }
  }
  EXPECT_TRUE(log.errors.empty());
}

TEST(GridSquare, HandlesTheEdgesOfTheEarthAndOfFields) {
  const struct {
    Position position;
    const char* locator;
  } cases[] = {
      {{{42, 30, 0, -1}, {71, 0, 0, -1}}, "FN42mm"},
      {{{0, 0, 0, 1}, {0, 0, 0, -1}}, "JJ00aa"},  // zero has no side
      {{{0, 0, 0, 0}, {0, 0, 0, 0}}, "JJ00aa"},
      {{{0, 0, 0, -1}, {180, 0, 0, 1}}, "SJ00aa"},
      {{{0, 0, 0, -1}, {180, 0, 0, -1}}, "AJ00aa"},
      {{{90, 0, 0, -1}, {0, 0, 0, 1}}, "JS00aa"},
      {{{90, 0, 0, 1}, {0, 0, 0, 1}}, "JA00aa"},
      {{{10, 0, 0, -1}, {20, 0, 0, 1}}, "KK00aa"},
      {{{10, 0, 0, 1}, {20, 0, 0, -1}}, "II00aa"},
      {{{9, 59, 59, -1}, {19, 59, 59, 1}}, "JJ99xx"},
      {{{0, 0, 1, 1}, {0, 0, 1, -1}}, "II99xx"},
      {{{89, 59, 59, -1}, {179, 59, 59, 1}}, "RR99xx"},
      {{{89, 59, 59, 1}, {179, 59, 59, -1}}, "AA00aa"},
      // One second below an edge, the margin lifts a position over the edge of a square, not of a
      // subsquare.
      {{{0, 59, 58, -1}, {1, 59, 58, 1}}, "JJ11aa"},
      {{{0, 59, 56, -1}, {1, 59, 56, 1}}, "JJ00xx"},
      {{{0, 2, 29, -1}, {0, 4, 59, 1}}, "JJ00aa"},
      {{{0, 2, 30, -1}, {0, 5, 0, 1}}, "JJ00bb"},
      {{{90, 0, 1, -1}, {0, 0, 0, 1}}, "undefined"},
      {{{0, 0, 0, -1}, {180, 0, 1, -1}}, "undefined"},
      {{{360, 0, 0, 1}, {0, 0, 0, 1}}, "undefined"},
      {{{0, 0, 0, 1}, {360, 0, 0, 1}}, "undefined"},
      {{{-1, 0, 0, 0}, {10, 0, 0, 1}}, "undefined"},
      {{{10, 0, 0, 1}, {-32768, -32768, -32768, 1}}, "undefined"},
  };
  for (const auto& c : cases) {
    LoggedDiagnostics log;
    EXPECT_EQ(GetGridSquare(c.position, log.diagnostics), c.locator);
    EXPECT_EQ(log.debug, std::vector<std::string>{"DXGridModule.GetGridSquare"});
  }
}

/// A position can be outside the locator's area by at most the margin of 3.6 seconds.
TEST(GridSquare, ContainsThePosition) {
  LoggedDiagnostics log;
  for (const int sign : {-1, 1}) {
    for (int second = 0; second < 180 * 3600; second += 7) {
      const Position position{Seconds(second / 2, sign), Seconds(second, -sign)};
      const std::string locator = GetGridSquare(position, log.diagnostics);
      ASSERT_TRUE(IsGridSquare(locator)) << locator;
      const Position center = GetGridCenterLocation(locator);
      const auto signed_degrees = [](const Angle& angle) {
        return LatLonModule::UnsignedDegrees(angle) * angle.sign;
      };
      ASSERT_NEAR(signed_degrees(center.longitude), signed_degrees(position.longitude),
                  2.5 / 60 + 0.00101);
      ASSERT_NEAR(signed_degrees(center.latitude), signed_degrees(position.latitude),
                  1.25 / 60 + 0.00101);
    }
  }
}

}  // namespace
}  // namespace skyhop::DXGridModule
