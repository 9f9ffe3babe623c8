#include "common/dates.h"

#include <array>
#include <charconv>

#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {
namespace {

using std::chrono::year_month_day;

constexpr std::array<std::string_view, 12> kMonthNames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::optional<int> Digits(std::string_view text, std::size_t least, std::size_t most) {
  if (text.size() < least || text.size() > most) return std::nullopt;
  int value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc{} || result.ptr != text.data() + text.size() || text[0] == '-') {
    return std::nullopt;
  }
  return value;
}

std::optional<unsigned> MonthNumber(std::string_view name) {
  for (std::size_t i = 0; i < kMonthNames.size(); ++i) {
    if (EqualsIgnoringCase(name, kMonthNames[i])) return static_cast<unsigned>(i + 1);
  }
  return std::nullopt;
}

std::optional<int> FullYear(std::string_view text) {
  const std::optional<int> year = Digits(text, 2, 4);
  if (!year || text.size() == 3) return std::nullopt;
  if (text.size() == 4) return year;
  return *year <= 29 ? 2000 + *year : 1900 + *year;
}

}  // namespace

std::optional<year_month_day> ParseDate(std::string_view text) {
  const std::string_view trimmed = Trim(text);
  const std::size_t first = trimmed.find('-');
  if (first == std::string_view::npos) return std::nullopt;
  const std::size_t second = trimmed.find('-', first + 1);
  if (second == std::string_view::npos) return std::nullopt;
  const std::string_view a = trimmed.substr(0, first);
  const std::string_view b = trimmed.substr(first + 1, second - first - 1);
  const std::string_view c = trimmed.substr(second + 1);

  std::optional<int> year;
  std::optional<int> day;
  std::optional<unsigned> month = MonthNumber(b);
  if (month) {
    day = Digits(a, 1, 2);
    year = FullYear(c);
  } else {
    year = Digits(a, 4, 4);
    const std::optional<int> number = Digits(b, 2, 2);
    if (number) month = static_cast<unsigned>(*number);
    day = Digits(c, 2, 2);
  }
  if (!year || !month || !day) return std::nullopt;
  const year_month_day date{std::chrono::year{*year}, std::chrono::month{*month},
                            std::chrono::day{static_cast<unsigned>(*day)}};
  if (!date.ok()) return std::nullopt;
  return date;
}

std::string MonthName(std::chrono::month month) {
  return std::string(kMonthNames.at(static_cast<unsigned>(month) - 1));
}

std::string DateText(year_month_day date) {
  const int year = static_cast<int>(date.year());
  const bool short_year = year >= 1930 && year <= 2029;
  return PaddedNumber(static_cast<int>(static_cast<unsigned>(date.day())), 2) + "-" +
         MonthName(date.month()) + "-" + PaddedNumber(short_year ? year % 100 : year, 2);
}

year_month_day UtcDate(UtcTime time) {
  return std::chrono::floor<std::chrono::days>(time);
}

HourMinute UtcHourMinute(UtcTime time) {
  const std::chrono::hh_mm_ss clock{time - std::chrono::floor<std::chrono::days>(time)};
  return {static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count())};
}

std::string TimeStamp(UtcTime time, std::chrono::seconds offset) {
  const UtcTime shifted = time + offset;
  const auto day = std::chrono::floor<std::chrono::days>(shifted);
  const year_month_day date{day};
  const std::chrono::hh_mm_ss clock{std::chrono::floor<std::chrono::seconds>(shifted - day)};
  return PaddedNumber(static_cast<int>(date.year()), 4) + "-" +
         PaddedNumber(static_cast<int>(static_cast<unsigned>(date.month())), 2) + "-" +
         PaddedNumber(static_cast<int>(static_cast<unsigned>(date.day())), 2) + " " +
         PaddedNumber(static_cast<int>(clock.hours().count()), 2) + ":" +
         PaddedNumber(static_cast<int>(clock.minutes().count()), 2) + ":" +
         PaddedNumber(static_cast<int>(clock.seconds().count()), 2);
}

std::string TimeStampWithMilliseconds(UtcTime time) {
  const auto milliseconds = (time - std::chrono::floor<std::chrono::seconds>(time)).count();
  return TimeStamp(time) + "." + PaddedNumber(static_cast<int>(milliseconds), 3);
}

}  // namespace skyhop
