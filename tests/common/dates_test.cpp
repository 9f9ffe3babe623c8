#include "common/dates.h"

#include <gtest/gtest.h>

#include <string>

namespace skyhop {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

TEST(Dates, AreReadInBothForms) {
  const struct {
    const char* text;
    year_month_day date;
  } cases[] = {
      {"05-Nov-26", year{2026} / 11 / 5},  {" 5-nov-2026\t", year{2026} / 11 / 5},
      {"31-DEC-29", year{2029} / 12 / 31}, {"01-Jan-30", year{1930} / 1 / 1},
      {"29-Feb-00", year{2000} / 2 / 29},  {"2026-11-05", year{2026} / 11 / 5},
  };
  for (const auto& c : cases) EXPECT_EQ(ParseDate(c.text), c.date) << c.text;
}

TEST(Dates, RejectOtherFormsAndImpossibleDays) {
  for (const char* text : {"",
                           "-",
                           "--",
                           "05 Nov 26",
                           "05-Nov",
                           "05-November-26",
                           "05-Nov-6",
                           "05-Nov-026",
                           "005-Nov-26",
                           "-5-Nov-26",
                           "05-Nov--26",
                           "05-Nov-26-1",
                           "5x-Nov-26",
                           "05-Nov-2x",
                           "05-\xC3\xA9-26",
                           "31-Nov-26",
                           "29-Feb-27",
                           "00-Nov-26",
                           "2026-11-31",
                           "2026-13-01",
                           "2026-00-01",
                           "2026-1-5",
                           "26-11-05",
                           "2026-11-5",
                           "2026-11-05T00:00"}) {
    EXPECT_FALSE(ParseDate(text)) << text;
  }
  EXPECT_FALSE(ParseDate(std::string(65536, '1')));
}

TEST(Dates, RoundTripForEveryDay) {
  for (sys_days day = year{1930} / 1 / 1; day < sys_days{year{2030} / 1 / 1}; day += days{1}) {
    ASSERT_EQ(ParseDate(DateText(day)), year_month_day{day}) << DateText(day);
  }
}

TEST(Times, AreWrittenWithTheirOffset) {
  const UtcTime time = sys_days{year{2026} / 12 / 31} + hours{23} + minutes{59} + milliseconds{7};
  EXPECT_EQ(TimeStamp(time), "2026-12-31 23:59:00");
  EXPECT_EQ(TimeStamp(time, hours{1}), "2027-01-01 00:59:00");
  EXPECT_EQ(TimeStamp(time, minutes{-210}), "2026-12-31 20:29:00");
  EXPECT_EQ(TimeStampWithMilliseconds(time), "2026-12-31 23:59:00.007");
  EXPECT_EQ(TimeStampWithMilliseconds(UtcTime{milliseconds{-1}}), "1969-12-31 23:59:59.999");
  EXPECT_EQ(UtcDate(UtcTime{milliseconds{-1}}), year{1969} / 12 / 31);
  EXPECT_EQ(UtcHourMinute(time).hour, 23);
  EXPECT_EQ(UtcHourMinute(time).minute, 59);
}

}  // namespace
}  // namespace skyhop
