#include "spaceweather/forecast_parser.h"

#include <optional>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::SolarForecastModule {
namespace {

constexpr std::string_view kIssued = ":Issued: ";
constexpr std::string_view kApHeading = "45-DAY AP FORECAST\n";
constexpr std::string_view kFluxHeading = "45-DAY F10.7 CM FLUX FORECAST\n";
constexpr std::string_view kForecaster = "FORECASTER:";
constexpr double kApPerK = 8;
constexpr std::int16_t kNoValue = -1;

/// A date of the forecast with its value.
struct Pair {
  std::string_view date;
  int day = 0;
  std::int16_t value = kNoValue;
};

std::int16_t ValueOf(std::string_view token) {
  try {
    return ToInteger(token);
  } catch (const Error&) {
    return kNoValue;
  }
}

std::optional<int> DayOf(std::string_view date) {
  if (date.size() < 2 || !IsDigit(date[0]) || !IsDigit(date[1])) return std::nullopt;
  return (date[0] - '0') * 10 + (date[1] - '0');
}

/// Reads date, value, date, value, ... from a list.
class PairReader {
 public:
  /// `format_error` is the start of the error texts, their number follows.
  PairReader(std::string_view list, const char* format_error)
      : list_(list), format_error_(format_error) {}

  /// The next pair; nothing when Problem() says why there is none.
  std::optional<Pair> Next() {
    // A date has at least one character, even if that is a comma.
    const std::size_t date_end = list_.find(',', position_ + 1);
    if (date_end == std::string_view::npos) return Fail("2");
    const std::size_t value_end = list_.find(',', date_end + 1);
    if (value_end == std::string_view::npos) return Fail("3");
    Pair pair;
    pair.date = list_.substr(position_, date_end - position_);
    pair.value = ValueOf(list_.substr(date_end + 1, value_end - date_end - 1));
    position_ = value_end + 1;
    const std::optional<int> day = DayOf(pair.date);
    if (!day) return Fail("4");
    pair.day = *day;
    return pair;
  }

  /// The next pair whose day is `today` or a later one of the month.
  std::optional<Pair> NextFrom(int today) {
    std::optional<Pair> pair = Next();
    while (pair && pair->day < today) pair = Next();
    return pair;
  }

  [[nodiscard]] const std::string& Problem() const { return problem_; }

 private:
  std::optional<Pair> Fail(const char* number) {
    problem_ = std::string(format_error_) + number;
    return std::nullopt;
  }

  std::string_view list_;
  const char* format_error_;
  std::size_t position_ = 0;
  std::string problem_;
};

/// Hands the pairs from `today` on to `store`, one for each slot. Returns what is wrong.
template <class Store>
std::string ReadBlock(std::string_view text, const char* format_error, int today, Store store) {
  std::string list(text);
  FormatForecast(list);
  PairReader pairs(list, format_error);
  for (std::size_t slot = kFirstDaySlot; slot >= 1; --slot) {
    const std::optional<Pair> pair = slot == kFirstDaySlot ? pairs.NextFrom(today) : pairs.Next();
    if (!pair) return pairs.Problem();
    store(slot, *pair);
  }
  return {};
}

void StoreAp(ForecastSlot& slot, const Pair& pair) {
  slot.valid = true;
  slot.day = pair.day;
  slot.date = pair.date;
  const std::int16_t k = RoundToInteger(pair.value / kApPerK);
  for (const std::size_t column : kAColumns) slot.columns[column] = pair.value;
  for (const std::size_t column : kKColumns) slot.columns[column] = k;
}

}  // namespace

void FormatForecast(std::string& block) {
  for (char& c : block) {
    if (c == ' ' || c == '\r' || c == '\n') c = ',';
  }
}

std::optional<std::string> IssuedText(std::string_view text) {
  const std::size_t found = text.find(kIssued);
  if (found == std::string_view::npos) return std::nullopt;
  const std::string_view rest = text.substr(found + kIssued.size());
  return std::string(rest.substr(0, rest.find('\n')));
}

std::string ParseForecast(std::string_view text, int today, ForecastTable& table) {
  const std::size_t ap = text.find(kApHeading);
  if (ap == std::string_view::npos) return "contains unrecognizable AP format 1";
  const std::size_t ap_start = ap + kApHeading.size();
  const std::size_t flux = text.find(kFluxHeading, ap_start);
  if (flux == std::string_view::npos) return "contains unrecognizable SFI format 1";
  const std::size_t flux_start = flux + kFluxHeading.size();
  const std::size_t end = text.find(kForecaster, flux_start);
  if (end == std::string_view::npos) return "contains unrecognizable forecaster format";

  std::string problem =
      ReadBlock(text.substr(ap_start, flux - ap_start), "contains unrecognizable AP format ", today,
                [&](std::size_t slot, const Pair& pair) { StoreAp(table.at(slot), pair); });
  if (!problem.empty()) return problem;
  return ReadBlock(text.substr(flux_start, end - flux_start), "contains unrecognizable SFI format ",
                   today, [&](std::size_t slot, const Pair& pair) {
                     for (const std::size_t column : kFluxColumns) {
                       table.at(slot).columns[column] = pair.value;
                     }
                   });
}

}  // namespace skyhop::SolarForecastModule
