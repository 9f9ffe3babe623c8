#include "beacon/separated_values.h"

#include <algorithm>
#include <map>
#include <utility>

#include "common/text.h"

namespace skyhop::BeaconModule {
namespace {

/// Splits one line.
class LineReader {
 public:
  explicit LineReader(std::string_view line) : line_(line) {}

  /// The line without its number. If its quotes are wrong, the record is broken; see Problem().
  Record Read() {
    Record record;
    record.end_column = Column(line_.size());
    do {
      SkipBlanks();
      Field field{{}, Column(at_)};
      if (at_ < line_.size() && line_[at_] == '"') {
        record.broken = !ReadQuoted(field.text);
        if (record.broken) return record;
      } else {
        const std::size_t end = std::min(line_.find(',', at_), line_.size());
        field.text = Trim(line_.substr(at_, end - at_));
        at_ = end;
      }
      record.fields.push_back(std::move(field));
    } while (at_ < line_.size() && line_[at_++] == ',');
    return record;
  }

  /// The problem, without the number of its line.
  [[nodiscard]] const FileProblem& Problem() const { return problem_; }

 private:
  void SkipBlanks() {
    while (at_ < line_.size() && IsBlank(line_[at_])) ++at_;
  }

  /// Users count characters, not bytes. Counting continues from the previous call, for speed.
  [[nodiscard]] int Column(std::size_t at) {
    if (at < counted_) counted_ = characters_ = 0;
    for (; counted_ < at; ++characters_) counted_ += CharacterSize(line_.substr(counted_));
    return static_cast<int>(characters_) + 1;
  }

  bool ReadQuoted(std::string& text) {
    const std::size_t begin = at_++;
    for (;; ++at_) {
      if (at_ == line_.size()) {
        problem_ = {{}, 0, Column(begin), "the quotes are not closed"};
        return false;
      }
      if (line_[at_] == '"') {
        if (at_ + 1 == line_.size() || line_[at_ + 1] != '"') break;
        ++at_;
      }
      text += line_[at_];
    }
    ++at_;
    SkipBlanks();
    if (at_ == line_.size() || line_[at_] == ',') return true;
    problem_ = {{}, 0, Column(at_), "a comma is missing after closing quotes"};
    return false;
  }

  std::string_view line_;
  std::size_t at_ = 0;
  std::size_t counted_ = 0;     ///< bytes
  std::size_t characters_ = 0;  ///< in those
  FileProblem problem_;
};

}  // namespace

std::string FileProblem::Message() const {
  std::string message = file;
  if (line > 0) message += ", line " + std::to_string(line);
  if (column > 0) message += ", column " + std::to_string(column);
  return message + ": " + text;
}

void LogProblems(std::vector<FileProblem> problems, Diagnostics& diagnostics) {
  std::stable_partition(problems.begin(), problems.end(),
                        [](const FileProblem& problem) { return problem.line == 0; });
  std::map<std::string, int> counts;
  for (const FileProblem& problem : problems) {
    if (++counts[problem.file] <= kMostLogged) diagnostics.ErrorLog(problem.Message());
  }
  for (const auto& [file, count] : counts) {
    if (count <= kMostLogged) continue;
    const int others = count - kMostLogged;
    diagnostics.ErrorLog(file + ": " + std::to_string(others) +
                         (others == 1 ? " more problem" : " more problems"));
  }
}

std::string Record::Text(std::size_t field) const {
  return field < fields.size() ? fields[field].text : std::string();
}

int Record::ColumnOf(std::size_t field) const {
  return field < fields.size() ? fields[field].column : end_column;
}

std::vector<Record> SplitRecords(std::string_view content, const std::string& file,
                                 std::vector<FileProblem>& problems) {
  // Some editors put a byte order mark in front of a text.
  if (content.starts_with("\xEF\xBB\xBF")) content.remove_prefix(3);
  std::vector<Record> records;
  for (int number = 1; !content.empty(); ++number) {
    const std::string_view line = TakeLine(content);
    const std::string_view trimmed = Trim(line);
    if (trimmed.empty() || trimmed.front() == '#') continue;
    LineReader reader(line);
    Record& record = records.emplace_back(reader.Read());
    record.line = number;
    if (record.broken) {
      problems.push_back({file, number, reader.Problem().column, reader.Problem().text});
    }
  }
  return records;
}

std::string CsvField(std::string_view text) {
  std::string field = ReplaceAll(ReplaceAll(text, "\r", " "), "\n", " ");
  if (field.find_first_of(",\"#") == std::string::npos && Trim(field) == field) return field;
  return "\"" + ReplaceAll(field, "\"", "\"\"") + "\"";
}

}  // namespace skyhop::BeaconModule
