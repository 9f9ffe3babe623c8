#include "geo/path_services.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "support/diagnostics_fixture.h"

namespace skyhop::IONCAPModule {
namespace {

using ::skyhop::testing::LoggedDiagnostics;

class FakeStationFields : public StationFields {
 public:
  [[nodiscard]] std::string LocalLat() const override { return local_lat; }
  [[nodiscard]] std::string LocalLon() const override { return local_lon; }
  [[nodiscard]] std::string DXLat() const override { return dx_lat; }
  [[nodiscard]] std::string DXLon() const override { return dx_lon; }
  [[nodiscard]] bool ShortPath() const override { return short_path; }
  [[nodiscard]] bool DistanceMiles() const override { return miles; }

  // Boston and Tokyo.
  std::string local_lat = "42 21' 30\" N";
  std::string local_lon = "71 3' 37\" W";
  std::string dx_lat = "35 41' 22\" N";
  std::string dx_lon = "139 41' 30\" E";
  bool short_path = true;
  bool miles = false;
};

TEST(Bearing, IsRoundedInBothDirections) {
  LoggedDiagnostics log;
  FakeStationFields fields;
  fields.short_path = false;  // bearings are those of the short path in any case
  EXPECT_EQ(ComputeBearingFromQTH(fields, log.diagnostics), 335);
  EXPECT_EQ(ComputeBearingFromDX(fields, log.diagnostics), 22);
  fields = {};
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
    FakeStationFields fields;
    fields.short_path = c.short_path;
    fields.miles = c.miles;
    EXPECT_EQ(ComputeDistance(fields, log.diagnostics), c.distance);
    EXPECT_EQ(log.debug,
              (std::vector<std::string>{"IONCAPModule.ComputeDistance", "   computing vector"}));
  }
}

TEST(PathServices, ReturnFallbacksWhenACoordinateIsMissingOrUnreadable) {
  std::string FakeStationFields::*const all[] = {
      &FakeStationFields::local_lat, &FakeStationFields::local_lon, &FakeStationFields::dx_lat,
      &FakeStationFields::dx_lon};
  for (const auto field : all) {
    for (const char* text : {"", "  ", "unreadable", "12"}) {
      LoggedDiagnostics log;
      FakeStationFields fields;
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

TEST(PathServices, ReturnFallbacksWhenAFieldThrows) {
  struct Failing : FakeStationFields {
    [[nodiscard]] std::string DXLon() const override { throw std::runtime_error("no window"); }
  };
  LoggedDiagnostics log;
  EXPECT_EQ(ComputeDistance(Failing(), log.diagnostics), 0.0F);
  EXPECT_EQ(ComputeBearingFromQTH(Failing(), log.diagnostics), -1);
  EXPECT_EQ(ComputeBearingFromDX(Failing(), log.diagnostics), -1);
  EXPECT_EQ(log.errors,
            (std::vector<std::string>{
                "program error 5 in module IONCAPModule.ComputeDistance: no window",
                "program error 5 in module IONCAPModule.ComputeBearingFromQTH: no window",
                "program error 5 in module IONCAPModule.ComputeBearingFromDX: no window"}));
}

TEST(Qindex, MapsWholeKToSixAndCapsTheRest) {
  const float expected[] = {0, 2, 3.5F, 4.5F, 5.5F, 6.5F, 7, 8, 8, 8};
  for (int k = 0; k < 10; ++k) EXPECT_EQ(ComputeQindex(static_cast<float>(k)), expected[k]) << k;
  for (const float k : {-1.0F, 0.33F, 5.67F, 1e30F}) EXPECT_EQ(ComputeQindex(k), 8) << k;
}

}  // namespace
}  // namespace skyhop::IONCAPModule
