#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "common/clock.h"

namespace skyhop {

/// Reads a date: "dd-mmm-yy" (one or two digits for the day, English month names of three letters
/// in any case, two- or four-digit years) or "yyyy-mm-dd"; blanks around it are ignored. Two-digit
/// years 00 to 29 are 20xx, 30 to 99 are 19xx. Nothing for any other text and for a day that the
/// calendar does not have.
[[nodiscard]] std::optional<std::chrono::year_month_day> ParseDate(std::string_view text);

/// "dd-mmm-yy" with the English month name: "05-Nov-26". Writes four digits for a year that
/// ParseDate would not read back from two: "05-Nov-2030".
[[nodiscard]] std::string DateText(std::chrono::year_month_day date);

/// The three-letter English name of a month, "Jan" to "Dec".
[[nodiscard]] std::string MonthName(std::chrono::month month);

/// The UTC calendar day of `time`.
[[nodiscard]] std::chrono::year_month_day UtcDate(UtcTime time);

/// Hour (0-23) and minute (0-59) of `time` in UTC.
struct HourMinute {
  int hour = 0;
  int minute = 0;
};
[[nodiscard]] HourMinute UtcHourMinute(UtcTime time);

/// "yyyy-mm-dd hh:nn:ss" of `time` shifted by `offset`.
[[nodiscard]] std::string TimeStamp(UtcTime time, std::chrono::seconds offset = {});

/// "yyyy-mm-dd hh:nn:ss.mmm" in UTC.
[[nodiscard]] std::string TimeStampWithMilliseconds(UtcTime time);

}  // namespace skyhop
