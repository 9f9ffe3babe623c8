#include "beacon/heard_log.h"

#include <gtest/gtest.h>

#include "common/dates.h"
#include "common/errors.h"
#include "common/files.h"
#include "support/diagnostics_fixture.h"

namespace skyhop::BeaconModule {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::year;

const UtcTime kMidnight = sys_days(year(2026) / 11 / 16);

class HeardLogTest : public ::testing::Test {
 protected:
  HeardLog Loaded() {
    HeardLog log(log_.folder.Path(), log_.diagnostics);
    log.Load();
    return log;
  }
  [[nodiscard]] std::filesystem::path File() const { return log_.folder / HeardLog::kFileName; }

  testing::LoggedDiagnostics log_;
};

TEST_F(HeardLogTest, RestoresMarksAfterARestart) {
  HeardLog log = Loaded();
  const std::vector<HeardMark> marks = {
      {kMidnight - milliseconds(500), "OH2B", 10144.5, true, "S9, \"loud\""},
      {kMidnight, "4U1UN", 14100, false, ""},
      {kMidnight + seconds(10), "VE8AT", 14100, true, " S3\nfading"},
  };
  // Not in the order of time: the clock was set back in between.
  log.Mark(marks[2]);
  log.Mark(marks[0]);
  log.Mark(marks[1]);
  EXPECT_EQ(log.Marks(), marks);
  std::vector<HeardMark> read = marks;
  read[2].note = " S3 fading";
  EXPECT_EQ(Loaded().Marks(), read);
  EXPECT_EQ(ReadFile(File(), 1000).substr(0, 72),
            "utc,call,frequency_khz,heard,note\n2026-11-16 00:00:10,VE8AT,14100,yes,\" ");
  EXPECT_TRUE(log_.errors.empty());
}

TEST_F(HeardLogTest, UsesTheLastMarkOfATransmission) {
  HeardLog log = Loaded();
  log.Mark({kMidnight, "4U1UN", 14100, true, "S3"});
  log.Mark({kMidnight, "YV5B", 18110, true, ""});
  log.Mark({kMidnight, "4U1UN", 14100, false, ""});
  const auto size = std::filesystem::file_size(File());
  log.Mark({kMidnight, "4U1UN", 14100, false, ""});
  EXPECT_EQ(std::filesystem::file_size(File()), size) << "a key that is held";
  const std::vector<HeardMark> expected = {{kMidnight, "4U1UN", 14100, false, ""},
                                           {kMidnight, "YV5B", 18110, true, ""}};
  EXPECT_EQ(log.Marks(), expected);
  EXPECT_EQ(Loaded().Marks(), expected);
}

TEST_F(HeardLogTest, KeepsTheNoteWhenAMarkIsRepeatedWithoutOne) {
  HeardLog log = Loaded();
  log.Mark({kMidnight, "4U1UN", 14100, true, "S3"});
  log.Mark({kMidnight, "4U1UN", 14100, true, ""});
  EXPECT_EQ(log.Marks()[0].note, "S3");
  log.Mark({kMidnight, "4U1UN", 14100, true, "S5"});
  EXPECT_EQ(Loaded().Marks()[0].note, "S5");
}

TEST_F(HeardLogTest, ADayBeginsAtMidnight) {
  HeardLog log = Loaded();
  for (const milliseconds after :
       {milliseconds(-1), milliseconds(0), milliseconds(hours(24)) - milliseconds(1),
        milliseconds(hours(24))}) {
    log.Mark({kMidnight + after, "OH2B", 14100, true, ""});
  }
  const std::vector<HeardMark> day = log.On(year(2026) / 11 / 16);
  ASSERT_EQ(day.size(), 2U);
  EXPECT_EQ(day[0].begin, kMidnight);
}

TEST_F(HeardLogTest, ReportsDamagedLinesAndKeepsThemInTheFile) {
  const std::string content =
      "utc,call,frequency_khz,heard,note\n"
      "2026-11-16 00:00:00,OH2B,14100,yes\n"
      "2026-02-30 00:00:00,OH2B,14100,yes,\n"
      "2026-11-16 24:00:00,OH2B,14100,yes,\n"
      "2026-11-16 00:00:10,nobody,14100,yes,\n"
      "2026-11-16 00:00:20,OH2B,14100,maybe,\n"
      "2026-11-16 00:00:30,OH2B,x,no,\n"
      "my remark, without an end";
  WriteFile(File(), content);
  HeardLog log = Loaded();
  ASSERT_EQ(log.Marks().size(), 1U);
  EXPECT_EQ(log_.errors.size(), 6U);
  EXPECT_EQ(log_.errors[0], "BeaconHeard.csv, line 3, column 1: this is no mark of a beacon");
  EXPECT_EQ(log_.errors[3], "BeaconHeard.csv, line 6, column 32: this is no mark of a beacon");

  // An editor that leaves no line end, after the file was read.
  log.Mark({kMidnight, "OH2B", 18110, true, ""});
  WriteFile(File(), content);
  log.Mark({kMidnight + hours(1), "W6WX", 14100, true, ""});
  EXPECT_EQ(ReadFile(File(), 1000), content + "\n2026-11-16 01:00:00,W6WX,14100,yes,\n");
  EXPECT_EQ(Loaded().Marks().size(), 2U);
}

TEST_F(HeardLogTest, SavesAnUnsavedMarkWithTheNextOne) {
  HeardLog log = Loaded();
  std::filesystem::create_directory(File());
  EXPECT_THROW(log.Mark({kMidnight, "OH2B", 14100, true, ""}), Error);
  EXPECT_EQ(log.Marks().size(), 1U);
  std::filesystem::remove(File());
  log.Load();
  log.Mark({kMidnight, "W6WX", 14100, true, ""});
  EXPECT_EQ(Loaded().Marks().size(), 2U);
}

TEST_F(HeardLogTest, IsExportedWithThePlacesOfTheBeacons) {
  const BeaconLocations locations =
      ReadBeaconLocations("OH2B,OH,60 N,24 E,\"Lohja, south\",Finland,EU,15,18,2,yes", "L");
  EXPECT_EQ(HeardCsv({{kMidnight, "OH2B", 14100, true, "S5"}, {kMidnight, "X1X", 18110, false, ""}},
                     locations),
            "utc,call,frequency_khz,heard,note,place,country,continent\n"
            "2026-11-16 00:00:00,OH2B,14100,yes,S5,\"Lohja, south\",Finland,EU\n"
            "2026-11-16 00:00:00,X1X,18110,no,,,,\n");
}

}  // namespace
}  // namespace skyhop::BeaconModule
