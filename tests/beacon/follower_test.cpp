#include "beacon/follower.h"

#include <gtest/gtest.h>

#include <map>

#include "beacon/beacon_files.h"
#include "beacon/selection.h"
#include "support/diagnostics_fixture.h"
#include "support/fake_beacon_peers.h"

namespace skyhop::BeaconModule {
namespace {

using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::year;
using Texts = std::vector<std::string>;

const UtcTime kFollowedHour = sys_days(year(2026) / 11 / 15) + std::chrono::hours(16);

TEST(Octants, BeginHalfwayFromThePreviousDirection) {
  const std::map<double, std::string_view> cases = {
      {-22.6, "NW"}, {-22.5, "N"},  {0, "N"},     {22.4999, "N"}, {22.5, "NE"},  {67.5, "E"},
      {112.4, "E"},  {112.5, "SE"}, {157.5, "S"}, {180, "S"},     {202.5, "SW"}, {247.5, "W"},
      {292.5, "NW"}, {337.4, "NW"}, {337.5, "N"}, {360, "N"},     {382.5, "NE"}};
  for (const auto& [bearing, octant] : cases) {
    EXPECT_EQ(kOctantNames.at(static_cast<std::size_t>(OctantOf(bearing))), octant) << bearing;
  }
}

Position At(std::int16_t north, std::int16_t east) {
  const auto angle = [](int degrees, int sign) {
    return Angle{static_cast<std::int16_t>(degrees), 0, 0, static_cast<std::int16_t>(sign)};
  };
  return {angle(std::abs(north), north >= 0 ? -1 : 1), angle(std::abs(east), east < 0 ? -1 : 1)};
}

TEST(Ways, HaveBearingsAndDistancesOfBothPaths) {
  testing::LoggedDiagnostics log;
  struct Case {
    Position station;
    Position beacon;
    bool miles;
    std::optional<Way> way;
  };
  const Position nowhere{LatLonModule::UndefinedAngle(), LatLonModule::UndefinedAngle()};
  for (const Case& c : {Case{At(0, 0), At(0, 90), false, Way{90, 10007, 270, 30068}},
                        Case{At(0, 0), At(0, 90), true, Way{90, 6218, 270, 18684}},
                        Case{At(0, 0), At(-10, 0), false, Way{180, 1111, 360, 38964}},
                        Case{At(0, 0), At(0, -90), false, Way{270, 10007, 90, 30068}},
                        Case{At(50, 10), At(50, 10), false, Way{0, 0, 180, 40075}},
                        Case{nowhere, At(0, 90), false, std::nullopt}}) {
    const auto way = WayTo(c.station, c.beacon, c.miles, log.diagnostics);
    ASSERT_EQ(way.has_value(), c.way.has_value());
    if (!way) continue;
    EXPECT_EQ(way->short_bearing, c.way->short_bearing);
    EXPECT_EQ(way->short_distance, c.way->short_distance);
    EXPECT_EQ(way->long_bearing, c.way->long_bearing);
    EXPECT_EQ(way->long_distance, c.way->long_distance);
  }
}

class Following : public ::testing::Test {
 protected:
  Following() {
    facts_.octant = [this](const std::string& call) -> std::optional<Octant> {
      const auto found = octants_.find(call);
      return found == octants_.end() ? std::nullopt : std::optional(found->second);
    };
    facts_.on_air = [this](const std::string& call) { return call != silent_; };
    facts_.open_level = [this](const std::string& call, std::size_t frequency) {
      const auto found = levels_.find({call, frequency});
      return found == levels_.end() ? 0 : found->second;
    };
  }

  /// The transmission to listen for, as "call kHz".
  std::string TargetAfter(int after) {
    const auto target = TargetAt(schedule_, selection_, kFollowedHour + seconds(after), facts_);
    if (!target) return "";
    return target->call + " " +
           std::to_string(static_cast<int>(schedule_.Table().frequencies[target->frequency]));
  }

  Texts FollowAfter(int after, std::optional<std::int16_t> bearing = 33) {
    const auto target = TargetAt(schedule_, selection_, kFollowedHour + seconds(after), facts_);
    const Beacon* beacon = target ? files_.locations.Find(target->call) : nullptr;
    follower_.Follow(target, target ? schedule_.Table().frequencies[target->frequency] : 0, beacon,
                     bearing);
    return peers_.Take();
  }

  testing::LoggedDiagnostics log_;
  BeaconFiles files_ = ReadBeaconFiles(SKYHOP_SHIPPED, false, log_.diagnostics);
  Schedule schedule_{*files_.schedule};
  Selection selection_;
  BeaconFacts facts_;
  std::map<std::string, Octant> octants_;
  std::map<std::pair<std::string, std::size_t>, int> levels_;
  std::string silent_;
  testing::FakeBeaconPeers peers_;
  Follower follower_{peers_};
};

TEST_F(Following, SelectsAnotherBeaconOfTheBandInEachSlot) {
  selection_.frequency = 1;
  EXPECT_EQ(TargetAfter(0), "YV5B 18110");
  EXPECT_EQ(TargetAfter(10), "4U1UN 18110");
  EXPECT_EQ(TargetAfter(179), "OA4B 18110");
}

TEST_F(Following, FollowsABeaconThroughTheBandsUntilItIsSilent) {
  selection_.by = Selection::By::kCall;
  selection_.call = "W6WX";
  const Texts expected = {"",           "",           "W6WX 14100", "W6WX 18110",
                          "W6WX 21150", "W6WX 24930", "W6WX 28200", ""};
  for (std::size_t slot = 0; slot < expected.size(); ++slot) {
    EXPECT_EQ(TargetAfter(static_cast<int>(slot) * 10 + 5), expected[slot]) << slot;
  }
}

TEST_F(Following, SelectsTheMostOpenFrequencyOfAnOctant) {
  selection_.by = Selection::By::kOctant;
  selection_.octant = Octant::kW;
  EXPECT_EQ(TargetAfter(0), "") << "nobody's direction is known";
  // 4U1UN is on 14100 now, YV5B on 18110, OA4B on 21150.
  octants_ = {
      {"4U1UN", Octant::kW}, {"YV5B", Octant::kW}, {"OA4B", Octant::kW}, {"LU4AA", Octant::kSW}};
  EXPECT_EQ(TargetAfter(0), "4U1UN 14100");
  levels_[{"OA4B", 2}] = 2;
  levels_[{"YV5B", 1}] = 1;
  levels_[{"LU4AA", 3}] = 4;
  EXPECT_EQ(TargetAfter(0), "OA4B 21150");
  silent_ = "OA4B";
  EXPECT_EQ(TargetAfter(0), "YV5B 18110");
}

TEST_F(Following, TunesTheTransceiverOncePerTransmission) {
  follower_.SetOptions({.retune = true});
  EXPECT_EQ(FollowAfter(0), (Texts{"vfo a", "split off", "mode CW", "qsy 14100"}));
  EXPECT_EQ(FollowAfter(1), Texts{});
  EXPECT_EQ(FollowAfter(9), Texts{});
  EXPECT_EQ(FollowAfter(10), (Texts{"vfo a", "split off", "mode CW", "qsy 14100"}))
      << "the user may have tuned away";
  // The clock is set back.
  EXPECT_EQ(FollowAfter(5), (Texts{"vfo a", "split off", "mode CW", "qsy 14100"}));
  // The machine wakes up much later.
  EXPECT_EQ(FollowAfter(7200 + 31), (Texts{"vfo a", "split off", "mode CW", "qsy 14100"}));
}

TEST_F(Following, MovesAntennaAndMapWhenTheBeaconChanges) {
  selection_.by = Selection::By::kCall;
  selection_.call = "4U1UN";
  follower_.SetOptions({.retune = true, .rotate = true, .look_up = true, .select_bearing = true});
  EXPECT_EQ(FollowAfter(0), (Texts{"vfo a", "split off", "mode CW", "qsy 14100", "rotate 33",
                                   "lookup 4U1UN New York", "bearing 33"}));
  EXPECT_EQ(FollowAfter(10), (Texts{"vfo a", "split off", "mode CW", "qsy 18110"}));
  EXPECT_EQ(FollowAfter(50), Texts{}) << "a beacon that is silent";
  selection_.call = "VE8AT";
  EXPECT_EQ(FollowAfter(50), (Texts{"vfo a", "split off", "mode CW", "qsy 28200", "rotate 33",
                                    "lookup VE8AT Inuvik", "bearing 33"}));
}

TEST_F(Following, SendsCommandsWhenAPeerConnectsLater) {
  follower_.SetOptions({.retune = true, .rotate = true, .look_up = true, .select_bearing = true});
  const Texts tuned = {"vfo a", "split off", "mode CW", "qsy 14100"};
  const Texts shown = {"rotate 33", "lookup 4U1UN New York", "bearing 33"};
  peers_.transceiver = peers_.map = 0;
  EXPECT_EQ(FollowAfter(0), Texts{});
  peers_.map = 1;
  EXPECT_EQ(FollowAfter(1), shown);
  peers_.transceiver = 1;
  EXPECT_EQ(FollowAfter(2), tuned);
  EXPECT_EQ(FollowAfter(3), Texts{});
  // Both programs were restarted between two looks.
  peers_.transceiver = peers_.map = 2;
  Texts both = tuned;
  both.insert(both.end(), shown.begin(), shown.end());
  EXPECT_EQ(FollowAfter(4), both);
  EXPECT_EQ(FollowAfter(5, 34), (Texts{"rotate 34", "bearing 34"})) << "your station has moved";
}

TEST_F(Following, AppliesAnOptionWhenItIsSwitchedOn) {
  EXPECT_EQ(FollowAfter(0), Texts{});
  follower_.SetOptions({.rotate = true});
  EXPECT_EQ(FollowAfter(1, std::nullopt), Texts{}) << "your own place is not known";
  EXPECT_EQ(FollowAfter(2), Texts{"rotate 33"});
  follower_.SetOptions({.rotate = true, .look_up = true});
  EXPECT_EQ(FollowAfter(3), Texts{"lookup 4U1UN New York"});
  follower_.SetOptions({});
  follower_.SetOptions({.rotate = true});
  EXPECT_EQ(FollowAfter(4), Texts{"rotate 33"});
}

}  // namespace
}  // namespace skyhop::BeaconModule
