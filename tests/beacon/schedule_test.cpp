#include "beacon/schedule.h"

#include <gtest/gtest.h>

#include <array>

#include "beacon/beacon_files.h"
#include "beacon/clock_watch.h"
#include "support/diagnostics_fixture.h"
#include "support/fake_timekeeping.h"

namespace skyhop::BeaconModule {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::year;
using testing::LoggedDiagnostics;

/// 16:00 UTC on a Sunday in November.
const UtcTime kHour = sys_days(year(2026) / 11 / 15) + hours(16);

Schedule Standard() {
  LoggedDiagnostics log;
  return Schedule(*ReadBeaconFiles(SKYHOP_SHIPPED, false, log.diagnostics).schedule);
}

Schedule Simple(milliseconds slot, std::vector<std::string> calls) {
  SlotTable table;
  table.slot = slot;
  table.frequencies = {14100};
  for (std::string& call : calls) table.slots.push_back({std::move(call)});
  return Schedule(table);
}

/// The table that the network publishes: the minute and second after the full hour at which each
/// beacon begins on each band.
struct Published {
  const char* call;
  std::array<const char*, 5> begins;
};
constexpr std::array<Published, 18> kPublished = {{
    {"4U1UN", {"00:00", "00:10", "00:20", "00:30", "00:40"}},
    {"VE8AT", {"00:10", "00:20", "00:30", "00:40", "00:50"}},
    {"W6WX", {"00:20", "00:30", "00:40", "00:50", "01:00"}},
    {"KH6RS", {"00:30", "00:40", "00:50", "01:00", "01:10"}},
    {"ZL6B", {"00:40", "00:50", "01:00", "01:10", "01:20"}},
    {"VK6RBP", {"00:50", "01:00", "01:10", "01:20", "01:30"}},
    {"JA2IGY", {"01:00", "01:10", "01:20", "01:30", "01:40"}},
    {"RR9O", {"01:10", "01:20", "01:30", "01:40", "01:50"}},
    {"VR2B", {"01:20", "01:30", "01:40", "01:50", "02:00"}},
    {"4S7B", {"01:30", "01:40", "01:50", "02:00", "02:10"}},
    {"ZS6DN", {"01:40", "01:50", "02:00", "02:10", "02:20"}},
    {"5Z4B", {"01:50", "02:00", "02:10", "02:20", "02:30"}},
    {"4X6TU", {"02:00", "02:10", "02:20", "02:30", "02:40"}},
    {"OH2B", {"02:10", "02:20", "02:30", "02:40", "02:50"}},
    {"CS3B", {"02:20", "02:30", "02:40", "02:50", "00:00"}},
    {"LU4AA", {"02:30", "02:40", "02:50", "00:00", "00:10"}},
    {"OA4B", {"02:40", "02:50", "00:00", "00:10", "00:20"}},
    {"YV5B", {"02:50", "00:00", "00:10", "00:20", "00:30"}},
}};

milliseconds AfterHour(const std::string& text) {
  return minutes(std::stoi(text.substr(0, 2))) + seconds(std::stoi(text.substr(3)));
}

TEST(StandardSchedule, IsThePublishedOneInEveryCycle) {
  const Schedule schedule = Standard();
  // Within the hour, around midnight, at the change to summer time and around a leap second.
  for (const UtcTime cycle :
       {kHour, kHour + minutes(57),
        UtcTime(sys_days(year(2026) / 12 / 31)) + hours(24) - minutes(3),
        UtcTime(sys_days(year(2027) / 1 / 1)), UtcTime(sys_days(year(2026) / 3 / 29)) + hours(1),
        UtcTime(sys_days(year(2017) / 1 / 1))}) {
    for (const Published& row : kPublished) {
      for (std::size_t band = 0; band < row.begins.size(); ++band) {
        const UtcTime begin = cycle + AfterHour(row.begins[band]);
        EXPECT_EQ(schedule.CallOn(band, begin), row.call) << row.begins[band] << " band " << band;
        EXPECT_EQ(schedule.CallOn(band, begin + milliseconds(9999)), row.call);
        EXPECT_NE(schedule.CallOn(band, begin - milliseconds(1)), row.call);
        EXPECT_EQ(schedule.At(begin + seconds(4)).begin, begin);
        EXPECT_EQ(schedule.At(begin + seconds(4)).end, begin + seconds(10));
      }
    }
  }
}

TEST(StandardSchedule, FindsTheNextTransmissions) {
  const Schedule schedule = Standard();
  const auto after = schedule.Following(0, kHour + seconds(165), 3);
  ASSERT_EQ(after.size(), 3U);
  EXPECT_EQ(after[0], (Transmission{"YV5B", 0, kHour + seconds(170), kHour + seconds(180)}));
  EXPECT_EQ(after[1].call, "4U1UN");
  EXPECT_EQ(after[2].call, "VE8AT");

  EXPECT_EQ(schedule.NextOf("YV5B", kHour + seconds(9)),
            (Transmission{"YV5B", 1, kHour, kHour + seconds(10)}));
  EXPECT_EQ(schedule.NextOf("YV5B", kHour + seconds(40)),
            (Transmission{"YV5B", 0, kHour + seconds(170), kHour + seconds(180)}));
  EXPECT_FALSE(schedule.NextOf("KH6WO", kHour));
}

TEST(CustomSchedule, AcceptsAnySlotLengthAndStartsAtMidnight) {
  const UtcTime midnight = sys_days(year(2026) / 11 / 16);
  const Schedule short_slots = Simple(milliseconds(7500), {"A1A", "B1B"});
  EXPECT_EQ(short_slots.CallOn(0, midnight + milliseconds(7499)), "A1A");
  EXPECT_EQ(short_slots.At(midnight + milliseconds(7500)),
            (Slot{1, midnight + milliseconds(7500), midnight + milliseconds(15000)}));

  // 7 hours do not divide a day, so the fourth slot lasts three hours.
  const Schedule long_slots = Simple(hours(7), {"A1A", "B1B", "C1C"});
  EXPECT_EQ(long_slots.At(midnight - milliseconds(1)), (Slot{0, midnight - hours(3), midnight}));
  EXPECT_EQ(long_slots.CallOn(0, midnight), "A1A");
  EXPECT_EQ(long_slots.NextOf("C1C", midnight - hours(1))->begin, midnight + hours(14));
}

TEST(CustomSchedule, SkipsSilentSlots) {
  const Schedule schedule = Simple(seconds(10), {"A1A", "", ""});
  EXPECT_EQ(schedule.CallOn(0, kHour + seconds(15)), "");
  const auto after = schedule.Following(0, kHour, 2);
  ASSERT_EQ(after.size(), 2U);
  EXPECT_EQ(after[0].begin, kHour + seconds(30));
  EXPECT_TRUE(Simple(seconds(10), {""}).Following(0, kHour, 2).empty());
  // One beacon in a long cycle transmits twice in two cycles.
  EXPECT_EQ(Simple(hours(8), {"A1A", "", ""}).Following(0, kHour, 2).size(), 2U);
}

class ClockWatchTest : public ::testing::Test {
 protected:
  testing::FakeClock clock_;
  testing::FakeTimekeeping timekeeping_;
  ClockWatch watch_{clock_, timekeeping_};
};

TEST_F(ClockWatchTest, ReportsNothingWhenTheClockRuns) {
  EXPECT_EQ(watch_.Look(), "");
  for (const milliseconds pass : {milliseconds(1), milliseconds(days(400))}) {
    timekeeping_.Pass(clock_, pass);
    EXPECT_EQ(watch_.Look(), "") << "a machine that slept has a clock that is right";
  }
  // A clock that is slewed, and a leap second that is smeared over a day.
  for (int second = 0; second < 3000; ++second) {
    timekeeping_.Pass(clock_, seconds(1));
    clock_.now += milliseconds(1);
    ASSERT_EQ(watch_.Look(), "");
  }
}

TEST_F(ClockWatchTest, DoesNotCompareAcrossAPause) {
  (void)watch_.Look();
  clock_.now += minutes(5);
  watch_.Restart();
  EXPECT_EQ(watch_.Look(), "");
  clock_.now += minutes(5);
  EXPECT_NE(watch_.Look(), "");
}

TEST_F(ClockWatchTest, ReportsForTenMinutesThatTheClockWasSet) {
  (void)watch_.Look();
  clock_.now += milliseconds(3250);
  EXPECT_EQ(watch_.Look(), "The clock was set forward by 3.2 s at 13:05:12 UTC");
  clock_.now -= minutes(1);
  EXPECT_EQ(watch_.Look(), "The clock was set back by 60.0 s at 13:04:12 UTC");
  timekeeping_.Pass(clock_, ClockWatch::kTold - milliseconds(1));
  EXPECT_NE(watch_.Look(), "");
  timekeeping_.Pass(clock_, milliseconds(1));
  EXPECT_EQ(watch_.Look(), "");
}

TEST_F(ClockWatchTest, AcceptsALeapSecondWhenJanuaryOrJulyBegins) {
  struct Case {
    UtcTime midnight;
    milliseconds by;
    bool told;
    milliseconds sleep{1100};
  };
  for (const Case& c : {Case{sys_days(year(2027) / 1 / 1), seconds(-1), false},
                        Case{sys_days(year(2027) / 7 / 1), seconds(-1), false},
                        Case{sys_days(year(2027) / 7 / 1), seconds(-3), true},
                        Case{sys_days(year(2027) / 7 / 2), seconds(-1), true},
                        Case{UtcTime(sys_days(year(2027) / 1 / 1)) + hours(1), seconds(-1), true},
                        // The machine slept while the leap second was counted.
                        Case{sys_days(year(2026) / 12 / 30), seconds(-1), false, days(20)},
                        Case{sys_days(year(2027) / 1 / 2), seconds(-1), true, days(20)}}) {
    clock_.now = c.midnight - seconds(1);
    ClockWatch watch(clock_, timekeeping_);
    (void)watch.Look();
    timekeeping_.Pass(clock_, c.sleep);
    clock_.now += c.by;
    EXPECT_EQ(!watch.Look().empty(), c.told) << c.midnight.time_since_epoch().count();
  }
}

TEST_F(ClockWatchTest, ReportsAnUnsynchronisedClock) {
  timekeeping_.state = Timekeeping::State::kUnsynchronised;
  EXPECT_EQ(watch_.Look(), "The system's clock is not synchronised, so the slots may be off");
  timekeeping_.state = Timekeeping::State::kUnknown;
  EXPECT_EQ(watch_.Look(), "");
}

}  // namespace
}  // namespace skyhop::BeaconModule
