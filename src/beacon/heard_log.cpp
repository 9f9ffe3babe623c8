#include "beacon/heard_log.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <optional>
#include <tuple>
#include <utility>

#include "beacon/separated_values.h"
#include "common/dates.h"
#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::BeaconModule {
namespace {

/// Enough for some hundred thousand marks.
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

/// The mark of a line. If the line is not a mark, `wrong` is the index of its first invalid field.
std::optional<HeardMark> ReadMark(const Record& record, std::size_t& wrong) {
  const auto begin = ReadMoment(record.Text(0));
  const std::string call = UpperCase(record.Text(1));
  const auto frequency = WholeNumberText(record.Text(2));
  const bool yes = EqualsIgnoringCase(record.Text(3), "yes");
  const bool good[] = {begin.has_value(), IsCall(call), frequency.has_value(),
                       yes || EqualsIgnoringCase(record.Text(3), "no")};
  wrong = static_cast<std::size_t>(std::find(std::begin(good), std::end(good), false) - good);
  if (wrong < std::size(good)) return std::nullopt;
  return HeardMark{*begin, call, *frequency, yes, record.Text(4)};
}

bool IsHeader(const Record& record) {
  return EqualsIgnoringCase(record.Text(0), "utc");
}

/// Whether the file's last line lacks its line end, so that appended text would continue it.
bool LastLineIsOpen(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  file.seekg(-1, std::ios::end);
  const int last = file.get();
  return file && last != '\n';
}

/// Marks by time; of several marks of one transmission the last one.
std::vector<HeardMark> InOrder(std::vector<HeardMark> marks) {
  const auto key = [](const HeardMark& mark) {
    return std::tie(mark.begin, mark.call, mark.frequency);
  };
  std::stable_sort(marks.begin(), marks.end(),
                   [&](const HeardMark& a, const HeardMark& b) { return key(a) < key(b); });
  // unique() keeps the first of equal elements. In reverse order that is the last mark of a
  // transmission.
  const auto first =
      std::unique(marks.rbegin(), marks.rend(),
                  [&](const HeardMark& a, const HeardMark& b) { return key(a) == key(b); });
  marks.erase(marks.begin(), first.base());
  return marks;
}

bool SameTransmission(const HeardMark& a, const HeardMark& b) {
  return a.begin == b.begin && a.call == b.call && a.frequency == b.frequency;
}

}  // namespace

void HeardLog::Load() {
  std::vector<HeardMark> marks;
  std::error_code ignored;
  std::string content;
  if (std::filesystem::exists(path_, ignored)) content = ReadFile(path_, kLogLimit);
  std::vector<FileProblem> problems;
  for (const Record& record : SplitRecords(content, kFileName, problems)) {
    if (record.broken || IsHeader(record)) continue;
    std::size_t wrong = 0;
    if (auto mark = ReadMark(record, wrong)) {
      marks.push_back(std::move(*mark));
    } else {
      problems.push_back(
          {kFileName, record.line, record.ColumnOf(wrong), "this is no mark of a beacon"});
    }
  }
  marks.insert(marks.end(), unsaved_.begin(), unsaved_.end());
  marks_ = InOrder(std::move(marks));
  LogProblems(std::move(problems), *diagnostics_);
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

bool HeardLog::Has(const HeardMark& mark) const {
  return std::any_of(marks_.begin(), marks_.end(), [&](const HeardMark& other) {
    return SameTransmission(other, mark) && other.heard == mark.heard &&
           (mark.note.empty() || other.note == mark.note);
  });
}

void HeardLog::Mark(const HeardMark& mark) {
  if (!Has(mark)) {
    Put(mark);
    unsaved_.push_back(mark);
  }
  if (!unsaved_.empty()) Save();
}

void HeardLog::Save() {
  std::error_code ignored;
  const std::uintmax_t size = std::filesystem::file_size(path_, ignored);
  std::string text = ignored || size == 0 ? std::string(kHeader) + "\n" : std::string();
  // An editor, or a disk that was full, may have left a line without its end.
  if (LastLineIsOpen(path_)) text += "\n";
  for (const HeardMark& mark : unsaved_) text += MarkText(mark) + "\n";
  errno = 0;
  std::ofstream file(path_, std::ios::binary | std::ios::app);
  file << text;
  file.close();
  if (!file) {
    const int number = errno != 0 ? errno : EIO;
    throw FileError(std::error_code(number, std::generic_category()),
                    "cannot write " + PathText(path_));
  }
  unsaved_.clear();
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
