#include "ui/prediction/chart/solar_bars.h"

#include <gtest/gtest.h>

#include "common/dates.h"

namespace skyhop {
namespace {

/// North and east positive.
Position At(double latitude, double longitude) {
  return {LatLonModule::AngleFromDecimalDegrees(latitude, LatLonModule::Axis::kLatitude),
          LatLonModule::AngleFromDecimalDegrees(longitude, LatLonModule::Axis::kLongitude)};
}

SunRow RowOf(const Position& station, const char* date) {
  return ComputeSunRow(station, ParseDate(date).value());
}

/// One letter for each hour: Day, twilight as "-", Night.
std::string Bars(const SunRow& row) {
  std::string text;
  for (const SunState state : row.states) {
    text += state == SunState::kDay ? 'D' : state == SunState::kTwilight ? '-' : 'N';
  }
  return text;
}

TEST(SolarBars, ShowTheSunInTheMiddleOfEachUtcHour) {
  const struct {
    const char* what;
    Position station;
    const char* date;
    const char* bars;
    const char* tool_tip;
  } cases[] = {
      {"New York", At(40.7167, -74), "2026-11-15", "NNNNNNNNNNN-DDDDDDDDDDNN",
       "sunrise 11:43, sunset 21:38 UTC"},
      {"Tokyo, where the day ends first", At(35.6833, 139.7667), "2026-03-20",
       "DDDDDDDDDNNNNNNNNNNN-DDD", "sunset 08:52, sunrise 20:44 UTC"},
      {"one crossing", At(69.65, 18.95), "2026-07-29", "DDDDDDDDDDDDDDDDDDDDDD--",
       "sunset 21:38 UTC"},
      {"polar day", At(69.65, 18.95), "2026-06-21", "DDDDDDDDDDDDDDDDDDDDDDDD",
       "the sun is up all day"},
      {"polar night with twilight at noon", At(69.65, 18.95), "2026-12-21",
       "NNNNNNNNN----NNNNNNNNNNN", "the sun is down all day"},
  };
  for (const auto& c : cases) {
    const SunRow row = RowOf(c.station, c.date);
    EXPECT_TRUE(row.known) << c.what;
    EXPECT_EQ(Bars(row), c.bars) << c.what;
    EXPECT_EQ(row.tool_tip, c.tool_tip) << c.what;
  }
}

TEST(SolarBars, AreUnknownWithoutCoordinates) {
  const Position good = At(40, -74);
  const struct {
    const char* what;
    Position station;
  } cases[] = {
      {"undefined latitude", {LatLonModule::UndefinedAngle(), good.longitude}},
      {"undefined longitude", {good.latitude, LatLonModule::UndefinedAngle()}},
      {"beyond the pole", {{90, 0, 1, -1}, good.longitude}},
      {"no hemisphere letter", {{-1, 0, 0, 0}, good.longitude}},
  };
  for (const auto& c : cases) EXPECT_EQ(RowOf(c.station, "2026-06-21"), SunRow{}) << c.what;
  EXPECT_FALSE(ComputeSunRow(good, std::chrono::year{2026} / 2 / 30).known);
  EXPECT_TRUE(RowOf(At(-90, 180), "2026-06-21").known);
}

}  // namespace
}  // namespace skyhop
