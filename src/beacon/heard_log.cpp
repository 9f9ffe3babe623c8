#include "beacon/heard_log.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <optional>

#include "beacon/separated_values.h"
#include "common/dates.h"
#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::BeaconModule {
namespace {

/// Some hundred thousand marks.
constexpr std::size_t kLogLimit = std::size_t{32} << 20U;

constexpr const char* kHeader = "utc,call,frequency_khz,heard,note";

/// "2026-11-15 13:05:10", with milliseconds where there are any.
std::string MomentText(UtcTime time) {
  const bool whole = std::chrono::floor<std::chrono::seconds>(time) == time;
  return whole ? TimeStamp(time) : TimeStampWithMilliseconds(time);
}

/// A number of a fixed count of digits at `at`.
std::optional<int> Digits(std::string_view text, std::size_t at, std::size_t count) {
  if (text.size() < at + count) return std::nullopt;
  int number = 0;
  for (const char c : text.substr(at, count)) {
    if (c < '0' || c > '9') return std::nullopt;
    number = number * 10 + (c - '0');
  }
  return number;
}

std::optional<UtcTime> ReadMoment(std::string_view text) {
  constexpr std::string_view pattern = "yyyy-mm-dd hh:mm:ss";
  if (text.size() != pattern.size() && text.size() != pattern.size() + 4) return std::nullopt;
  const auto date = ParseDate(text.substr(0, 10));
  const auto hour = Digits(text, 11, 2);
  const auto minute = Digits(text, 14, 2);
  const auto second = Digits(text, 17, 2);
  const auto fraction = text.size() > pattern.size() ? Digits(text, 20, 3) : 0;
  if (!date || !hour || !minute || !second || !fraction) return std::nullopt;
  if (*hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
  return UtcTime(std::chrono::sys_days(*date)) + std::chrono::hours(*hour) +
         std::chrono::minutes(*minute) + std::chrono::seconds(*second) +
         std::chrono::milliseconds(*fraction);
}

std::string MarkText(const HeardMark& mark) {
  return MomentText(mark.begin) + "," + CsvField(mark.call) + "," + NumberText(mark.frequency) +
         "," + (mark.heard ? "yes" : "no") + "," + CsvField(mark.note);
}

std::optional<HeardMark> ReadMark(const Record& record) {
  if (record.fields.size() < 4) return std::nullopt;
  const auto begin = ReadMoment(record.fields[0].text);
  const auto frequency = WholeNumberText(record.fields[2].text);
  const std::string& heard = record.fields[3].text;
  const bool yes = EqualsIgnoringCase(heard, "yes");
  if (!begin || !frequency || !(yes || EqualsIgnoringCase(heard, "no"))) return std::nullopt;
  HeardMark mark{*begin, UpperCase(record.fields[1].text), *frequency, yes, {}};
  if (!IsCall(mark.call)) return std::nullopt;
  if (record.fields.size() > 4) mark.note = record.fields[4].text;
  return mark;
}

bool IsHeader(const Record& record) {
  return EqualsIgnoringCase(record.fields.front().text, "utc");
}

bool SameTransmission(const HeardMark& a, const HeardMark& b) {
  return a.begin == b.begin && a.call == b.call && a.frequency == b.frequency;
}

}  // namespace

void HeardLog::Load() {
  marks_.clear();
  line_is_open_ = false;
  std::error_code ignored;
  if (!std::filesystem::exists(path_, ignored)) return;
  const std::string content = ReadFile(path_, kLogLimit);
  line_is_open_ = !content.empty() && content.back() != '\n';
  std::vector<FileProblem> problems;
  for (const Record& record : SplitRecords(content, kFileName, problems)) {
    if (IsHeader(record)) continue;
    if (const auto mark = ReadMark(record)) {
      Put(*mark);
    } else {
      problems.push_back({kFileName, record.line, 1, "this is no mark of a beacon"});
    }
  }
  for (const FileProblem& problem : problems) diagnostics_->ErrorLog(problem.Message());
}

void HeardLog::Put(const HeardMark& mark) {
  const auto earlier = [](const HeardMark& a, const HeardMark& b) { return a.begin < b.begin; };
  const auto [first, last] = std::equal_range(marks_.begin(), marks_.end(), mark, earlier);
  const auto known = std::find_if(
      first, last, [&](const HeardMark& other) { return SameTransmission(other, mark); });
  if (known != last) {
    *known = mark;
  } else {
    marks_.insert(last, mark);
  }
}

void HeardLog::Mark(const HeardMark& mark) {
  Put(mark);
  std::error_code ignored;
  const std::uintmax_t size = std::filesystem::file_size(path_, ignored);
  std::string text = ignored || size == 0 ? std::string(kHeader) + "\n" : std::string();
  if (line_is_open_) text += "\n";
  text += MarkText(mark) + "\n";
  errno = 0;
  std::ofstream file(path_, std::ios::binary | std::ios::app);
  file << text;
  file.close();
  if (!file) {
    const int number = errno != 0 ? errno : EIO;
    throw FileError(std::error_code(number, std::generic_category()),
                    "cannot write " + PathText(path_));
  }
  line_is_open_ = false;
}

std::vector<HeardMark> HeardLog::On(std::chrono::year_month_day day) const {
  const UtcTime begin = std::chrono::sys_days(day);
  const UtcTime end = begin + std::chrono::days(1);
  std::vector<HeardMark> found;
  std::copy_if(marks_.begin(), marks_.end(), std::back_inserter(found),
               [&](const HeardMark& mark) { return begin <= mark.begin && mark.begin < end; });
  return found;
}

std::string HeardCsv(const std::vector<HeardMark>& marks, const BeaconLocations& locations) {
  std::string text = std::string(kHeader) + ",place,country,continent\n";
  for (const HeardMark& mark : marks) {
    text += MarkText(mark);
    const Beacon* const beacon = locations.Find(mark.call);
    for (const std::string Beacon::*field :
         {&Beacon::place, &Beacon::country, &Beacon::continent}) {
      text += "," + (beacon == nullptr ? std::string() : CsvField(beacon->*field));
    }
    text += "\n";
  }
  return text;
}

}  // namespace skyhop::BeaconModule
