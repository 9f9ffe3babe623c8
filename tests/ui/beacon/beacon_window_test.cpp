#include "ui/beacon/beacon_window.h"

#include <gtest/gtest.h>

#include "common/files.h"
#include "common/program.h"
#include "support/answering_launcher.h"
#include "support/fake_beacon_peers.h"
#include "support/fake_beacon_view.h"
#include "support/fake_engine_host.h"
#include "support/fake_timekeeping.h"
#include "support/prediction_fixture.h"
#include "support/recording_surface.h"

namespace skyhop::testing {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::year;
using Texts = std::vector<std::string>;

/// A full hour: the standard cycle begins.
const UtcTime kHour = sys_days(year(2026) / 11 / 15) + hours(16);

class BeaconWindowTest : public ::testing::Test {
 protected:
  BeaconWindowTest() {
    for (const char* name : {BeaconModule::kLocationFile, BeaconModule::kScheduleFile}) {
      std::filesystem::copy_file(std::filesystem::path(SKYHOP_SHIPPED) / name, Folder() / name);
    }
    InstallEngine(Folder() / "IonCap/ioncap.exe");
    fixture_.log.clock.now = kHour;
  }

  [[nodiscard]] const std::filesystem::path& Folder() const { return fixture_.log.folder.Path(); }
  [[nodiscard]] UtcTime& Now() { return fixture_.log.clock.now; }

  /// Lets time pass with all ticks of the window's timer.
  void Pass(milliseconds time) {
    const UtcTime until = Now() + time;
    while (view_.timer && Now() + *view_.timer <= until) {
      timekeeping_.Pass(fixture_.log.clock, *view_.timer);
      Tick();
    }
    timekeeping_.Pass(fixture_.log.clock, until - Now());
  }

  void Tick() { window_.Handle({.kind = BeaconEvent::kTimerTick}); }
  void Close() { window_.Handle({.kind = BeaconEvent::kFormQueryUnload}); }
  void SelectBy(int by) { window_.Handle({.kind = BeaconEvent::kSelectByClick, .index = by}); }
  void Check(BeaconCheck check, bool checked) {
    window_.Handle({.kind = BeaconEvent::kCheckClick, .check = check, .checked = checked});
  }
  void Press(BeaconButton button, std::optional<milliseconds> key_time = {}) {
    window_.Handle({.kind = BeaconEvent::kButtonClick, .button = button, .key_time = key_time});
  }
  void Select(int by, const std::string& choice) {
    SelectBy(by);
    const auto found = std::find(view_.choices.begin(), view_.choices.end(), choice);
    ASSERT_NE(found, view_.choices.end()) << choice;
    window_.Handle({.kind = BeaconEvent::kChoiceClick,
                    .index = static_cast<int>(found - view_.choices.begin())});
  }

  [[nodiscard]] std::string Setting(const std::string& key) {
    return fixture_.store.Read(kProductName, "Beacon", key, "none");
  }
  /// A column of the list.
  Texts Column(std::size_t column) {
    Texts texts;
    for (const BandRow& row : view_.rows) texts.push_back(row.texts.at(column));
    return texts;
  }

  PredictionFixture fixture_;
  FakePause pause_;
  AnsweringLauncher launcher_;
  FakeEngineHost host_;
  OneLocker locker_;
  FakeTimekeeping timekeeping_;
  FakeBeaconView view_;
  FakeBeaconPeers peers_;
  BeaconPredictions predictions_{
      {locker_, launcher_, host_, pause_, fixture_.log.diagnostics, fixture_.log.clock, Folder()}};
  BeaconWindow window_{{view_, predictions_, peers_, [this] { return fixture_.form; },
                        fixture_.messages, fixture_.settings, fixture_.log.diagnostics,
                        fixture_.log.clock, timekeeping_, Folder()}};
};

constexpr int kByBand = 0;
constexpr int kByCall = 1;
constexpr int kByOctant = 2;

TEST_F(BeaconWindowTest, ShowsTheTransmissionOnEachBand) {
  Now() = kHour + seconds(41) + milliseconds(500);
  window_.Show();
  EXPECT_TRUE(view_.visible);
  EXPECT_EQ(view_.clock, "16:00:41 UTC, slot 5 of 18, next in 9 s");
  EXPECT_EQ(Column(0), (Texts{"14100", "18110", "21150", "24930", "28200"}));
  EXPECT_EQ(Column(1), (Texts{"ZL6B", "KH6RS", "W6WX", "VE8AT", "4U1UN"}));
  EXPECT_EQ(Column(2), (Texts{"9 s", "9 s", "9 s", "9 s", "9 s"}));
  EXPECT_EQ(view_.rows[2].texts[3], "Mount Umunhum, California, United States");
  EXPECT_EQ(view_.rows[0].texts[4].substr(0, 4), "244\xC2");
  // Shortly after sunrise in California.
  EXPECT_EQ(view_.rows[2].texts[6], "08:00 day");
  EXPECT_EQ(view_.rows[0].texts[6], "04:00 night");
  EXPECT_EQ(view_.rows[4].texts[8], "VE8AT, W6WX");
  EXPECT_TRUE(view_.rows[0].followed);
  EXPECT_EQ(view_.target,
            "Listen for ZL6B on 14100 kHz: Masterton, New Zealand, OC, CQ 32, ITU 60");
  EXPECT_EQ(view_.warning, "");
}

TEST_F(BeaconWindowTest, TicksAtEachSlotWhenTheClockIsSet) {
  WriteFile(Folder() / BeaconModule::kCustomScheduleFile,
            "slot,7.5\nfrequencies,14100\nOH2B\nW6WX\n");
  window_.Show();
  // Predictions would make it tick faster.
  Pass(minutes(1));
  ASSERT_FALSE(predictions_.Working());
  Now() += milliseconds(137);
  Tick();
  EXPECT_EQ(view_.timer, milliseconds(863));
  Check(BeaconCheck::kCustomSchedule, true);
  Pass(minutes(1));
  const UtcTime slot = std::chrono::floor<minutes>(Now()) + minutes(1) + milliseconds(7500);
  Now() = slot - milliseconds(200);
  Tick();
  EXPECT_EQ(view_.timer, milliseconds(200)) << "a slot that begins between two seconds";
  // The timer runs again after a tick that is early.
  Now() = slot - milliseconds(1);
  Tick();
  EXPECT_EQ(view_.timer, milliseconds(1));
  EXPECT_EQ(Column(1), Texts{"OH2B"});
  Now() = slot;
  Tick();
  EXPECT_EQ(Column(1), Texts{"W6WX"});
}

TEST_F(BeaconWindowTest, TunesTheTransceiverInEachSlotWhileFollowing) {
  window_.Show();
  Select(kByCall, "YV5B");
  Pass(minutes(3));
  EXPECT_EQ(peers_.Take(), Texts{}) << "the user does not follow";
  Check(BeaconCheck::kFollow, true);
  EXPECT_EQ(peers_.Take(), (Texts{"vfo a", "split off", "mode CW", "qsy 18110"}))
      << "the beacon transmits already";
  Pass(seconds(10));
  EXPECT_EQ(peers_.Take(), (Texts{"vfo a", "split off", "mode CW", "qsy 21150"}));
  Pass(seconds(29));
  EXPECT_EQ(peers_.Take(), (Texts{"vfo a", "split off", "mode CW", "qsy 24930", "vfo a",
                                  "split off", "mode CW", "qsy 28200"}));
  EXPECT_EQ(view_.target.substr(0, 31), "Following YV5B on 28200 kHz: Ca");
  Pass(seconds(1));
  EXPECT_EQ(view_.target, "Nothing to listen for: YV5B is next on 14100 kHz in 2 min 10 s");
  Pass(seconds(129));
  EXPECT_EQ(peers_.Take(), Texts{});
  Pass(seconds(1));
  EXPECT_EQ(peers_.Take(), (Texts{"vfo a", "split off", "mode CW", "qsy 14100"}));

  // It ends when the window closes and does not begin again with it.
  Close();
  EXPECT_FALSE(view_.timer);
  Pass(minutes(3));
  window_.Show();
  Pass(minutes(3));
  EXPECT_EQ(peers_.Take(), Texts{});
  EXPECT_FALSE(view_.checked[BeaconCheck::kFollow]);
}

TEST_F(BeaconWindowTest, MovesAntennaAndMapWhenChecked) {
  Check(BeaconCheck::kRotate, true);
  window_.Show();
  Select(kByBand, "21150 kHz");
  Check(BeaconCheck::kFollow, true);
  EXPECT_EQ(peers_.Take(), (Texts{"vfo a", "split off", "mode CW", "qsy 21150", "rotate 183"}));
  Check(BeaconCheck::kLookUp, true);
  Check(BeaconCheck::kSelectBearing, true);
  EXPECT_EQ(peers_.Take(), (Texts{"lookup OA4B Lima", "bearing 183"}));
  peers_.transceiver = 0;
  fixture_.form.local_latitude = "";
  Pass(seconds(10));
  EXPECT_EQ(peers_.Take(), Texts{"lookup YV5B Caracas"})
      << "no bearing without the station's location";
  EXPECT_NE(view_.target.find("(no transceiver control is connected)"), std::string::npos);
}

TEST_F(BeaconWindowTest, SelectsByDirection) {
  window_.Show();
  Select(kByOctant, "S");
  // YV5B is on 18110, OA4B on 21150, LU4AA on 24930 kHz, all of them south of New York.
  EXPECT_EQ(view_.target.substr(0, 16), "Listen for YV5B ");
  const int refreshes = view_.refreshes;
  Select(kByOctant, "SE");
  EXPECT_GT(view_.refreshes, refreshes) << "the chart of the day has other beacons";
  EXPECT_EQ(view_.target, "Nothing to listen for: no beacon to the SE transmits in this slot");
  fixture_.form.local_longitude = "nowhere";
  Pass(seconds(3));
  EXPECT_EQ(view_.target, "Nothing to listen for: your station's location is missing");
}

TEST_F(BeaconWindowTest, CountsAnEdgeAsTheNextDirection) {
  WriteFile(Folder() / BeaconModule::kLocationFile, "OH2B,OH,20 N,8 43' E\n");
  WriteFile(Folder() / BeaconModule::kScheduleFile, "frequencies,14100\nOH2B\n");
  fixture_.form.local_latitude = "0 0' N";
  fixture_.form.local_longitude = "0 0' E";
  window_.Show();
  EXPECT_EQ(view_.rows[0].texts[4].substr(0, 3), "22\xC2") << "22.6 degrees";
  Select(kByOctant, "NE");
  EXPECT_EQ(view_.target.substr(0, 15), "Listen for OH2B");
}

TEST_F(BeaconWindowTest, IgnoresInputsWhileTheUserTypes) {
  window_.Show();
  Pass(seconds(12));
  ASSERT_FALSE(predictions_.Working());
  const std::string way = view_.rows[0].texts[4];
  for (const char* typed : {"40 30' 0\" ", "40 30", "40 3", "4", "5", "5x", "5", ""}) {
    fixture_.form.local_latitude = typed;
    Pass(seconds(1));
    EXPECT_NE(view_.rows[0].texts[4], "") << typed;
  }
  fixture_.form.local_latitude = "40 30' N";
  Pass(seconds(3));
  EXPECT_NE(view_.rows[0].texts[7], "") << "the same location in another form";
  EXPECT_EQ(launcher_.starts.size(), 18U);
  fixture_.form.flux = "1";
  Pass(seconds(1));
  fixture_.form.flux = "180";
  Pass(seconds(1));
  EXPECT_FALSE(predictions_.Working());
  Pass(seconds(2));
  EXPECT_TRUE(predictions_.Working());
  EXPECT_TRUE(fixture_.log.errors.empty()) << fixture_.log.errors.front();
}

TEST_F(BeaconWindowTest, StartsNoLongWorkBeforeASlotEnds) {
  Now() = kHour + milliseconds(9600);
  window_.Show();
  EXPECT_TRUE(launcher_.starts.empty());
  launcher_.slow = true;
  Pass(milliseconds(400));
  EXPECT_EQ(launcher_.starts.size(), 1U);
  // Ending an engine takes longer than starting one.
  Now() = kHour + seconds(18);
  fixture_.form.flux = "180";
  timekeeping_.Pass(fixture_.log.clock, milliseconds(1));
  Tick();
  timekeeping_.passed += KnownBeacons::kSettled;
  Tick();
  Tick();
  EXPECT_TRUE(launcher_.ended.empty());
  Now() = kHour + seconds(20);
  Tick();
  EXPECT_EQ(launcher_.ended.size(), 1U);
}

TEST_F(BeaconWindowTest, RestoresTheCallWhenItsScheduleReturns) {
  WriteFile(Folder() / BeaconModule::kCustomScheduleFile, "frequencies,10144\nW6WX\n");
  window_.Show();
  Select(kByBand, "24930 kHz");
  Select(kByCall, "OH2B");
  Check(BeaconCheck::kCustomSchedule, true);
  EXPECT_EQ(view_.choices, Texts{"W6WX"});
  SelectBy(kByBand);
  EXPECT_EQ(Setting("Call"), "OH2B");
  Check(BeaconCheck::kCustomSchedule, false);
  EXPECT_EQ(view_.choices.at(static_cast<std::size_t>(view_.choice)), "24930 kHz");
  SelectBy(kByCall);
  EXPECT_EQ(view_.choices.at(static_cast<std::size_t>(view_.choice)), "OH2B");
}

TEST_F(BeaconWindowTest, RestoresOptionsExceptFollowing) {
  window_.Show();
  Select(kByOctant, "SW");
  Select(kByBand, "24930 kHz");
  Select(kByCall, "OH2B");
  Check(BeaconCheck::kFollow, true);
  Check(BeaconCheck::kRotate, true);
  EXPECT_EQ(Setting("SelectBy"), "1");
  EXPECT_EQ(Setting("Rotate"), "True");
  window_.Form_Unload();

  BeaconWindow again({view_, predictions_, peers_, [this] { return fixture_.form; },
                      fixture_.messages, fixture_.settings, fixture_.log.diagnostics,
                      fixture_.log.clock, timekeeping_, Folder()});
  view_ = {};
  peers_.Take();
  again.Show();
  EXPECT_EQ(view_.select_by, kByCall);
  EXPECT_EQ(view_.choices.at(static_cast<std::size_t>(view_.choice)), "OH2B");
  EXPECT_TRUE(view_.checked[BeaconCheck::kRotate]);
  EXPECT_FALSE(view_.checked[BeaconCheck::kLookUp]);
  again.Handle({.kind = BeaconEvent::kSelectByClick, .index = kByBand});
  EXPECT_EQ(view_.choices.at(static_cast<std::size_t>(view_.choice)), "24930 kHz");
  again.Handle({.kind = BeaconEvent::kSelectByClick, .index = kByOctant});
  EXPECT_EQ(view_.choices.at(static_cast<std::size_t>(view_.choice)), "SW");
  EXPECT_EQ(peers_.Take(), Texts{});
}

TEST_F(BeaconWindowTest, UsesDefaultsForDamagedSettings) {
  for (const char* key : {"SelectBy", "Octant", "Frequency", "Rotate"}) {
    fixture_.store.SaveSetting(kProductName, "Beacon", key, "99");
  }
  fixture_.store.SaveSetting(kProductName, "Beacon", "Call", "nobody");
  window_.Show();
  EXPECT_EQ(view_.select_by, kByBand);
  EXPECT_EQ(view_.choice, 0);
  SelectBy(kByCall);
  EXPECT_EQ(view_.choice, 0);
  EXPECT_TRUE(fixture_.log.errors.empty());
}

TEST_F(BeaconWindowTest, MarksThePresentTransmission) {
  window_.Show();
  Pass(seconds(13));
  view_.note = " S5 ";
  Press(BeaconButton::kHeard);
  EXPECT_EQ(view_.status, "VE8AT on 14100 kHz is marked as heard");
  EXPECT_EQ(view_.note, "");
  Press(BeaconButton::kHeard);
  Pass(seconds(10));
  EXPECT_EQ(view_.status.find("marked"), std::string::npos) << view_.status;
  Press(BeaconButton::kNotHeard);
  EXPECT_EQ(ReadFile(Folder() / "BeaconHeard.csv", 1000),
            "utc,call,frequency_khz,heard,note\n"
            "2026-11-15 16:00:10,VE8AT,14100,yes,S5\n"
            "2026-11-15 16:00:20,W6WX,14100,no,\n");

  Select(kByCall, "ZL6B");
  Press(BeaconButton::kHeard);
  EXPECT_EQ(view_.status, "There is nothing to mark: ZL6B is next on 14100 kHz in 17 s");

  view_.file = PathText(Folder() / "export.csv");
  Press(BeaconButton::kExport);
  EXPECT_EQ(view_.proposal, "beacons-2026-11-15.csv");
  EXPECT_NE(ReadFile(Folder() / "export.csv", 1000).find("VE8AT,14100,yes,S5,Inuvik,Canada,NA\n"),
            std::string::npos);
  view_.file = PathText(Folder() / "no/such/folder.csv");
  Press(BeaconButton::kExport);
  EXPECT_EQ(fixture_.messages.shown.size(), 1U);
}

TEST_F(BeaconWindowTest, LogsEventsAndErrorsByHandlerName) {
  window_.Show();
  SelectBy(kByCall);
  Check(BeaconCheck::kFollow, true);
  fixture_.log.debug.clear();
  Tick();
  SelectBy(kByBand);
  window_.Handle({.kind = BeaconEvent::kChoiceClick, .index = 99});
  Press(BeaconButton::kEarlier);
  Close();
  Texts logged;
  for (const std::string& line : fixture_.log.debug) {
    if (line.starts_with("BeaconMonitor.")) logged.push_back(line);
  }
  EXPECT_EQ(logged, (Texts{"BeaconMonitor.SelectBy_Click 0", "BeaconMonitor.Choice_Click 99",
                           "BeaconMonitor.Button_Click E&arlier", "BeaconMonitor.Form_QueryUnload",
                           "BeaconMonitor.Check_Click &Follow False"}));
  ASSERT_EQ(fixture_.log.errors.size(), 1U);
  EXPECT_NE(fixture_.log.errors[0].find(" in module BeaconMonitor.Choice_Click: "),
            std::string::npos)
      << fixture_.log.errors[0];
}

TEST_F(BeaconWindowTest, PressesAButtonOnceWhileItsKeyIsHeld) {
  window_.Show();
  const auto presses = [this](BeaconButton button, int key_time) {
    view_.note = "note";
    Press(button, milliseconds(key_time));
    return view_.note.empty();
  };
  EXPECT_TRUE(presses(BeaconButton::kHeard, 10'000));
  EXPECT_FALSE(presses(BeaconButton::kHeard, 10'500));
  EXPECT_FALSE(presses(BeaconButton::kHeard, 11'000));
  EXPECT_TRUE(presses(BeaconButton::kNotHeard, 11'030)) << "another key";
  EXPECT_TRUE(presses(BeaconButton::kHeard, 11'060));
  EXPECT_TRUE(presses(BeaconButton::kHeard, 11'760)) << "the key was released";
  Press(BeaconButton::kNotHeard);
  EXPECT_EQ(view_.note, "") << "a click of the mouse";
}

TEST_F(BeaconWindowTest, ShowsAMessageWhenAMarkCannotBeSaved) {
  std::filesystem::create_directory(Folder() / "BeaconHeard.csv");
  window_.Show();
  view_.note = "S5";
  Press(BeaconButton::kHeard);
  ASSERT_EQ(fixture_.messages.shown.size(), 1U);
  EXPECT_EQ(fixture_.messages.shown[0].first.substr(0, 31), "The mark could not be saved: ca");
  EXPECT_EQ(view_.note, "S5");
  EXPECT_EQ(view_.status.find("marked"), std::string::npos);
}

TEST_F(BeaconWindowTest, PaintsMarksOverPredictions) {
  window_.Show();
  Pass(seconds(12));
  ASSERT_FALSE(predictions_.Working()) << predictions_.Problem();
  EXPECT_EQ(launcher_.starts.size(), 18U);
  Close();
  window_.Show();
  EXPECT_FALSE(predictions_.Working()) << "predictions are valid for the hour";
  EXPECT_NE(view_.rows[0].texts[7], "");
  Press(BeaconButton::kHeard);
  const auto painted = [this] {
    RecordingSurface surface;
    window_.Paint(surface, 800, 500, 12);
    return surface;
  };
  const auto labels = [](const RecordingSurface& surface) {
    Texts texts;
    for (const DrawingCall& call : surface.Texts()) texts.push_back(call.text);
    return texts;
  };
  const auto count = [](const RecordingSurface& surface, Color color) {
    const auto rectangles = surface.Only(DrawingCall::Kind::kRectangle);
    return std::count_if(rectangles.begin(), rectangles.end(),
                         [&](const DrawingCall& call) { return call.pen.color == color; });
  };
  constexpr Color heard{0, 110, 40};
  const RecordingSurface today = painted();
  EXPECT_EQ(labels(today)[0], "15-Nov-26 UTC, 14100 kHz");
  EXPECT_EQ(labels(today)[1].substr(0, 6), "4U1UN ");
  EXPECT_EQ(count(today, heard), 2) << "the mark and its key";
  EXPECT_GT(today.Only(DrawingCall::Kind::kRectangle).size(), 18U * 24U);

  Press(BeaconButton::kEarlier);
  EXPECT_TRUE(view_.enabled[BeaconButton::kLater]);
  const RecordingSurface yesterday = painted();
  EXPECT_EQ(labels(yesterday)[0], "14-Nov-26 UTC, 14100 kHz");
  EXPECT_EQ(count(yesterday, heard), 1);
  EXPECT_LT(yesterday.Only(DrawingCall::Kind::kRectangle).size(), 24U) << "predictions are today's";
  Press(BeaconButton::kLater);
  EXPECT_FALSE(view_.enabled[BeaconButton::kLater]);
  Press(BeaconButton::kLater);
  EXPECT_EQ(labels(painted())[0], "15-Nov-26 UTC, 14100 kHz") << "there is no tomorrow yet";

  // The shown day and its predictions stay when the next day begins.
  Press(BeaconButton::kEarlier);
  timekeeping_.Pass(fixture_.log.clock, days(1));
  Tick();
  EXPECT_EQ(labels(painted())[0], "14-Nov-26 UTC, 14100 kHz");
  Press(BeaconButton::kLater);
  EXPECT_EQ(labels(painted())[0], "15-Nov-26 UTC, 14100 kHz");
  EXPECT_GT(painted().Only(DrawingCall::Kind::kRectangle).size(), 18U * 24U);

  Select(kByCall, "VE8AT");
  EXPECT_EQ(count(painted(), heard), 2);
  EXPECT_EQ(labels(painted())[1], "VE8AT 14100");
}

TEST_F(BeaconWindowTest, KeepsTheMostOpenBandForAWholeSlot) {
  window_.Show();
  Select(kByOctant, "S");
  Check(BeaconCheck::kFollow, true);
  EXPECT_EQ(peers_.Take(), (Texts{"vfo a", "split off", "mode CW", "qsy 18110"}));
  // YV5B is the last one and gets no prediction.
  while (predictions_.Of("OA4B", 21150) == nullptr) Pass(milliseconds(100));
  launcher_.answer = "no table";
  ASSERT_LT(Now(), kHour + seconds(8));
  Pass(kHour + seconds(9) - Now());
  ASSERT_FALSE(predictions_.Working());
  ASSERT_GT(predictions_.Of("OA4B", 21150)->at(16), predictions_.Of("LU4AA", 24930)->at(16));
  EXPECT_EQ(peers_.Take(), Texts{});
  EXPECT_EQ(view_.target.substr(0, 15), "Following YV5B ");
  Pass(seconds(171));
  EXPECT_EQ(view_.target.substr(0, 15), "Following OA4B ");
}

TEST_F(BeaconWindowTest, ShowsProblemsWithClockAndFiles) {
  WriteFile(Folder() / BeaconModule::kLocationFile, "OH2B,OH,60 X,24 E\nW6WX,K,37 N\n");
  window_.Show();
  EXPECT_EQ(view_.problem.substr(0, 45), "BeaconLocation.txt, line 1, column 9: the lat");
  EXPECT_NE(view_.problem.find(" more; see the error log)"), std::string::npos);
  EXPECT_EQ(Column(1)[0], "4U1UN") << "the schedule does not depend on the locations";
  Now() += seconds(30);
  Tick();
  EXPECT_EQ(view_.warning, "The clock was set forward by 30.0 s at 16:00:30 UTC");
  EXPECT_EQ(Column(1)[0], "KH6RS");
  timekeeping_.Pass(fixture_.log.clock, BeaconModule::ClockWatch::kTold);
  Close();
  Now() += seconds(30);
  window_.Show();
  EXPECT_EQ(view_.warning, "") << "changes while the window is closed are not reported";

  std::filesystem::remove(Folder() / BeaconModule::kScheduleFile);
  Press(BeaconButton::kReload);
  EXPECT_EQ(view_.target, "There is no schedule");
  EXPECT_TRUE(view_.rows.empty());
  EXPECT_EQ(view_.choice, -1);
  EXPECT_EQ(view_.timer, milliseconds(1000));
  Press(BeaconButton::kHeard);
  EXPECT_EQ(view_.status, "There is nothing to mark: there is no schedule");
}

TEST_F(BeaconWindowTest, StaysOnScheduleAfterSleepAndMidnight) {
  Now() = sys_days(year(2026) / 11 / 16) - UtcTime::duration(milliseconds(1));
  window_.Show();
  Check(BeaconCheck::kFollow, true);
  peers_.Take();
  EXPECT_EQ(Column(1)[0], "YV5B");
  Pass(milliseconds(1));
  EXPECT_EQ(Column(1)[0], "4U1UN");
  EXPECT_EQ(view_.clock, "00:00:00 UTC, slot 1 of 18, next in 10 s");
  EXPECT_EQ(peers_.Take(), (Texts{"vfo a", "split off", "mode CW", "qsy 14100"}));
  // The machine sleeps for hours. The timer ticks when it wakes up.
  timekeeping_.Pass(fixture_.log.clock, hours(7) + seconds(25));
  Tick();
  EXPECT_EQ(Column(1)[0], "W6WX");
  EXPECT_EQ(peers_.Take(), (Texts{"vfo a", "split off", "mode CW", "qsy 14100"}));
  EXPECT_EQ(view_.warning, "");
}

}  // namespace
}  // namespace skyhop::testing
