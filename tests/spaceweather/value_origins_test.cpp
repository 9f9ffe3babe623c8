#include "spaceweather/value_origins.h"

#include <gtest/gtest.h>

#include "support/fake_downloads.h"

namespace skyhop::testing {
namespace {

TEST(ValueOrigins, DescribesAgeAndSourceAfterARestart) {
  DownloadFixture with;
  EXPECT_EQ(with.origins.Describe(SolarValue::kFlux, "100"), "not downloaded so far");
  with.origins.Downloaded(SolarValue::kFlux, "152", "https://host/wwv ");
  with.log.clock.now += std::chrono::minutes(150);
  ValueOrigins later(with.settings, with.log.clock);
  later.Load();
  const std::string when = "2 hours ago (15-Nov-26 13:05 UTC) from https://host/wwv";
  EXPECT_EQ(later.Describe(SolarValue::kFlux, " 152"), "downloaded " + when);
  EXPECT_EQ(later.Describe(SolarValue::kFlux, "160"),
            "not the downloaded value, which was 152, " + when);
  EXPECT_EQ(later.Describe(SolarValue::kKindex, "152"), "not downloaded so far");
}

TEST(ValueOrigins, ReportsAFailedAttemptUntilOneSucceeds) {
  DownloadFixture with;
  with.origins.Downloaded(SolarValue::kSunspotNumber, "96.4", "u");
  with.log.clock.now += std::chrono::days(3);
  with.origins.Failed(SolarValue::kSunspotNumber, "from\n\nu\n\ncannot connect");
  EXPECT_EQ(with.origins.Describe(SolarValue::kSunspotNumber, "96.4"),
            "downloaded 3 days ago (15-Nov-26 13:05 UTC) from u\n"
            "last attempt just now: from u cannot connect");
  with.origins.Downloaded(SolarValue::kSunspotNumber, "97", "u");
  EXPECT_EQ(with.origins.Describe(SolarValue::kSunspotNumber, "97"),
            "downloaded just now (18-Nov-26 13:05 UTC) from u");
}

TEST(ValueOrigins, IgnoresInvalidStoredTimes) {
  for (const char* time : {"", "x", "12x", "-5", "99999999999999999999", "253402300800"}) {
    DownloadFixture with;
    with.store.SaveSetting("Skyhop", "SpaceWeather", "SFITime", time);
    with.origins.Load();
    EXPECT_EQ(with.origins.Describe(SolarValue::kFlux, ""), "not downloaded so far") << time;
  }
}

TEST(Age, IsInTheLargestFittingUnit) {
  using namespace std::chrono_literals;
  const UtcTime now = FakeClock().now;
  const std::vector<std::pair<std::chrono::seconds, const char*>> cases = {
      {-5h, "just now"},         {59s, "just now"},     {60s, "1 minute ago"},
      {59min, "59 minutes ago"}, {60min, "1 hour ago"}, {47h, "47 hours ago"},
      {48h, "2 days ago"},
  };
  for (const auto& [age, text] : cases) EXPECT_EQ(AgeText(now - age, now), text);
}

}  // namespace
}  // namespace skyhop::testing
