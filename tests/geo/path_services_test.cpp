#include "geo/path_services.h"

#include <gtest/gtest.h>

#include <string>

#include "support/diagnostics_fixture.h"

namespace skyhop::IONCAPModule {
namespace {

using ::skyhop::testing::LoggedDiagnostics;

/// Boston and Tokyo.
StationFields BostonAndTokyo() {
  return {"42 21' 30\" N", "71 3' 37\" W", "35 41' 22\" N", "139 41' 30\" E", true, false};
}

TEST(Bearing, IsRoundedInBothDirections) {
  LoggedDiagnostics log;
  StationFields fields = BostonAndTokyo();
  fields.short_path = false;  // bearings are those of the short path in any case
  EXPECT_EQ(ComputeBearingFromQTH(fields, log.diagnostics), 335);
  EXPECT_EQ(ComputeBearingFromDX(fields, log.diagnostics), 22);
  fields = BostonAndTokyo();
  fields.dx_lat = fields.local_lat;
  fields.dx_lon = fields.local_lon;
  EXPECT_EQ(ComputeBearingFromQTH(fields, log.diagnostics), 0);
}

TEST(Distance, FollowsPathAndUnit) {
  const struct {
    bool short_path;
    bool miles;
    float distance;
  } cases[] = {{true, false, 10791},
               {true, true, 6705},
               {false, false, 29284.16F},
               {false, true, 18196.55F}};
  for (const auto& c : cases) {
    LoggedDiagnostics log;
    StationFields fields = BostonAndTokyo();
    fields.short_path = c.short_path;
    fields.distance_miles = c.miles;
    EXPECT_EQ(ComputeDistance(fields, log.diagnostics), c.distance);
    EXPECT_EQ(log.debug,
              (std::vector<std::string>{"IONCAPModule.ComputeDistance", "   computing vector"}));
  }
}

TEST(PathServices, ReturnFallbacksWhenACoordinateIsMissingOrUnreadable) {
  std::string StationFields::*const all[] = {&StationFields::local_lat, &StationFields::local_lon,
                                             &StationFields::dx_lat, &StationFields::dx_lon};
  for (const auto field : all) {
    for (const char* text : {"", "  ", "unreadable", "12"}) {
      LoggedDiagnostics log;
      StationFields fields = BostonAndTokyo();
      fields.short_path = false;
      fields.*field = text;
      EXPECT_EQ(ComputeDistance(fields, log.diagnostics), 0.0F) << text;
      EXPECT_EQ(ComputeBearingFromQTH(fields, log.diagnostics), -1) << text;
      EXPECT_EQ(ComputeBearingFromDX(fields, log.diagnostics), -1) << text;
      EXPECT_EQ(log.debug[0], "IONCAPModule.ComputeDistance");
      const bool blank = std::string(text).find_first_not_of(' ') == std::string::npos;
      EXPECT_EQ(log.debug[1] == "   computing vector", !blank) << text;
    }
  }
}

TEST(Qindex, MapsWholeKToSixAndCapsTheRest) {
  const float expected[] = {0, 2, 3.5F, 4.5F, 5.5F, 6.5F, 7, 8, 8, 8};
  for (int k = 0; k < 10; ++k) EXPECT_EQ(ComputeQindex(static_cast<float>(k)), expected[k]) << k;
  for (const float k : {-1.0F, 0.33F, 5.67F, 1e30F}) EXPECT_EQ(ComputeQindex(k), 8) << k;
}

}  // namespace
}  // namespace skyhop::IONCAPModule
