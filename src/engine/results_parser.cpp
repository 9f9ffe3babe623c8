#include "engine/results_parser.h"

#include <bitset>
#include <cmath>
#include <optional>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::IONCAPModule {
namespace {

/// The lines of a text, ended by LF or CR LF.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}

  /// The next line, nothing at the end of the text.
  std::optional<std::string_view> Next() {
    if (rest_.empty()) return std::nullopt;
    const std::size_t end = rest_.find('\n');
    std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    ++number_;
    return line;
  }

  /// Number of the line that Next() returned last, counted from 1.
  [[nodiscard]] std::size_t Number() const { return number_; }

 private:
  std::string_view rest_;
  std::size_t number_ = 0;
};

/// A line with its place in the file, for messages.
struct Place {
  const std::string* file_name;
  std::size_t line_number;
  std::string_view line;
};

std::string_view Columns(std::string_view line, std::size_t first, std::size_t width) {
  return first > line.size() ? std::string_view() : line.substr(first - 1, width);
}

[[noreturn]] void ThrowField(const Error& error, const Place& place, std::size_t first,
                             std::size_t width) {
  throw Error(error.Number(), std::string(error.what()) + " (" + *place.file_name + ", line " +
                                  std::to_string(place.line_number) + ", columns " +
                                  std::to_string(first) + "-" + std::to_string(first + width - 1) +
                                  ")");
}

/// Converts one field; `convert` throws what the message is made of.
template <class Convert>
auto Field(const Place& place, std::size_t first, std::size_t width, Convert convert) {
  try {
    return convert(Columns(place.line, first, width));
  } catch (const Error& error) {
    ThrowField(error, place, first, width);
  }
}

float SingleField(const Place& place, std::size_t first, std::size_t width) {
  return Field(place, first, width, [](std::string_view text) { return ToSingle(text); });
}

[[noreturn]] void ThrowPastEnd(const std::string& file_name, std::size_t lines,
                               const std::string& what) {
  throw Error(errors::kInputPastEnd, "Input past end of file: " + file_name + " ends after line " +
                                         std::to_string(lines) + ", " + what);
}

void RoundAxis(ResultsTable& table) {
  table.f_min = std::floor(table.f_min);
  table.f_max = std::ceil(table.f_max);
}

/// Columns of the rows 1 to 7 of a LUF/MUF line.
struct RowColumns {
  std::size_t row;
  std::size_t first;
  std::size_t width;
};
constexpr RowColumns kRowColumns[] = {{1, 1, 9},  {2, 10, 6}, {3, 16, 7}, {4, 23, 7},
                                      {5, 30, 7}, {6, 37, 7}, {7, 44, 7}};

void ReadLufMufLine(const Place& place, bool has_luf, std::size_t hour, ResultsTable& table) {
  for (const auto& [row, first, width] : kRowColumns) {
    float& value = table.frequencies[row][hour];
    if (row == rows::kLuf) {
      value = has_luf ? std::fabs(SingleField(place, first, width)) : -1.0F;
    } else {
      value = SingleField(place, first, width);
    }
  }
}

}  // namespace

void ParseLufMufResults(std::string_view text, const std::string& file_name, bool has_luf,
                        ResultsTable& table) {
  LineReader lines(text);
  const auto next = [&](const char* missing) {
    const std::optional<std::string_view> line = lines.Next();
    if (!line) ThrowPastEnd(file_name, lines.Number(), missing);
    return *line;
  };
  while (next("without the header \"HPF  ESMUF\"").find("HPF  ESMUF") == std::string_view::npos) {
  }
  (void)next("right after the header");
  table.f_min = 10000;
  table.f_max = 0;
  for (std::size_t hour = 1; hour < kHourCount; ++hour) {
    const std::string_view line = next("before its 24 hours are complete");
    ReadLufMufLine({&file_name, lines.Number(), line}, has_luf, hour, table);
    if (hour == kHourCount - 1) {
      for (std::size_t row = 1; row < rows::kCount; ++row) {
        table.frequencies[row][0] = table.frequencies[row][hour];
      }
    }
    if (table.Muf10(hour) > table.f_max) table.f_max = table.Muf10(hour);
    if (table.Luf(hour) >= table.f_max) table.f_max = table.Luf(hour);
    if (table.Muf90(hour) < table.f_min) table.f_min = table.Muf90(hour);
    if (table.Luf(hour) < table.f_min) table.f_min = table.Luf(hour);
  }
  RoundAxis(table);
}

namespace {

constexpr std::size_t kTagColumn = 68;
constexpr std::size_t kFirstBandColumn = 17;
constexpr std::size_t kBandWidth = 5;
/// 160 m is not predicted in this mode.
constexpr std::size_t kFirstBand = 1;
/// A band whose reliability exceeds this much is worth a place on the axis.
constexpr float kOpenReliability = 0.2F;

/// Collects the lines of a METHOD 30 file into the table.
class Method30Reader {
 public:
  explicit Method30Reader(ResultsTable& table) : table_(&table) {}

  /// Takes one line that is not blank. Returns false when the line ends the results.
  bool Take(const Place& place) {
    const std::string tag = UpperCase(Trim(Columns(place.line, kTagColumn, place.line.size())));
    if (tag == "FREQ") return TakeFrequencies(place);
    if (tag == "SNR") {
      ForEachBand(table_->snr, place, SingleField);
    } else if (tag == "REL") {
      ForEachBand(table_->reliability, place, SingleField);
      WidenAxis();
      complete_.set(hour_);
    } else if (tag == "MODE") {
      ForEachBand(table_->mode, place, [](const Place& at, std::size_t first, std::size_t width) {
        return std::string(Columns(at.line, first, width));
      });
    } else if (tag == "S DBW") {
      ForEachBand(table_->signal_power, place,
                  [](const Place& at, std::size_t first, std::size_t width) {
                    return Field(at, first, width, [](std::string_view text) {
                      return RoundToInteger(static_cast<double>(ToSingle(text)));
                    });
                  });
    }
    return true;
  }

  [[nodiscard]] int LastHour() const { return static_cast<int>(hour_); }
  [[nodiscard]] int CompleteHours() const { return static_cast<int>((complete_ >> 1U).count()); }

 private:
  bool TakeFrequencies(const Place& place) {
    const std::int16_t hour =
        Field(place, 1, 6, [](std::string_view text) { return ToInteger(text); });
    if (hour >= static_cast<int>(kHourCount)) return false;
    if (hour < 0) {
      ThrowField(Error(errors::kSubscript, "Subscript out of range: hour " + std::to_string(hour)),
                 place, 1, 6);
    }
    hour_ = static_cast<std::size_t>(hour);
    auto& rows = table_->frequencies;
    rows[rows::kMuf50][hour_] = SingleField(place, 7, 6);
    rows[rows::kMuf90][hour_] = SingleField(place, 13, 6);
    rows[rows::kMuf10][hour_] = 0;
    rows[rows::kLuf][hour_] = 0;
    Widen(table_->Muf50(hour_));
    Widen(table_->Muf90(hour_));
    if (hour_ == kHourCount - 1) {
      for (const std::size_t row : {rows::kMuf50, rows::kMuf90, rows::kMuf10, rows::kLuf}) {
        rows[row][0] = rows[row][hour_];
      }
    }
    return true;
  }

  template <class Value, class Read>
  void ForEachBand(ResultsTable::PerBand<Value>& values, const Place& place, Read read) {
    for (std::size_t band = kFirstBand; band < kBandCount; ++band) {
      values[band][hour_] =
          read(place, kFirstBandColumn + (band - kFirstBand) * kBandWidth, kBandWidth);
      if (hour_ == kHourCount - 1) values[band][0] = values[band][hour_];
    }
  }

  void WidenAxis() {
    for (std::size_t band = kFirstBand; band < kBandCount; ++band) {
      if (table_->reliability[band][hour_] > kOpenReliability) Widen(kBandLineFrequencies[band]);
    }
  }

  void Widen(float frequency) {
    if (frequency >= table_->f_max) table_->f_max = frequency;
    if (frequency < table_->f_min) table_->f_min = frequency;
  }

  ResultsTable* table_;
  std::size_t hour_ = 0;
  std::bitset<kHourCount> complete_;
};

void ClearMethod30(ResultsTable& table) {
  for (const std::size_t row : {rows::kMuf90, rows::kMuf10, rows::kMuf50, rows::kLuf}) {
    table.frequencies[row].fill(0);
  }
  table.snr = {};
  table.reliability = {};
  table.mode = {};
  table.signal_power = {};
  table.f_min = 10000;
  table.f_max = 0;
}

}  // namespace

Method30Outcome ParseMethod30Results(std::string_view text, const std::string& file_name,
                                     ResultsTable& table) {
  LineReader lines(text);
  Method30Outcome outcome;
  while (const std::optional<std::string_view> line = lines.Next()) {
    if (line->find("MULTIPATH POWER TOLERANCE") != std::string_view::npos) {
      outcome.header_found = true;
      break;
    }
  }
  if (outcome.header_found) {
    ClearMethod30(table);
    Method30Reader reader(table);
    while (const std::optional<std::string_view> line = lines.Next()) {
      if (line->find("END OF RUN") != std::string_view::npos) break;
      if (Trim(*line).empty()) continue;
      if (!reader.Take({&file_name, lines.Number(), *line})) break;
    }
    outcome.last_hour = reader.LastHour();
    outcome.complete_hours = reader.CompleteHours();
    RoundAxis(table);
  }
  outcome.lines = lines.Number();
  return outcome;
}

namespace {

/// The blank-delimited word at the start of `text`.
std::string_view FirstWord(std::string_view text) {
  text = Trim(text);
  return text.substr(0, text.find(' '));
}

std::string_view LastWord(std::string_view text) {
  text = Trim(text);
  const std::size_t blank = text.rfind(' ');
  return blank == std::string_view::npos ? text : text.substr(blank + 1);
}

void ReadHeadingLine(std::string_view line, ResultsHeading& heading) {
  const std::size_t version = line.find(" VERSION ");
  if (version != std::string_view::npos && heading.engine.empty()) {
    heading.engine = Trim(line.substr(0, version));
    heading.version = FirstWord(line.substr(version + 9));
  }
  const std::size_t ssn = line.find("SSN =");
  if (ssn != std::string_view::npos && heading.sunspot_number.empty()) {
    heading.month = FirstWord(line);
    heading.year = LastWord(line.substr(0, ssn));
    heading.sunspot_number = NumberText(LeadingNumber(line.substr(ssn + 5)));
  }
  const std::size_t power = line.find("kW");
  if (power != std::string_view::npos && heading.power.empty()) {
    heading.power = LastWord(line.substr(0, power));
  }
}

}  // namespace

ResultsHeading ReadHeading(std::string_view text) {
  ResultsHeading heading;
  LineReader lines(text);
  // A heading ends where the table begins; what stands in the table is no heading.
  while (const std::optional<std::string_view> line = lines.Next()) {
    if (line->find("HPF  ESMUF") != std::string_view::npos ||
        line->find("MULTIPATH POWER TOLERANCE") != std::string_view::npos) {
      break;
    }
    ReadHeadingLine(*line, heading);
  }
  return heading;
}

}  // namespace skyhop::IONCAPModule
