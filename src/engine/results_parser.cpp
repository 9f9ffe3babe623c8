#include "engine/results_parser.h"

#include <cmath>
#include <optional>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "engine/results_lines.h"

namespace skyhop::IONCAPModule {
namespace {

[[noreturn]] void ThrowPastEnd(const std::string& file_name, std::size_t lines,
                               const std::string& what) {
  throw Error(errors::kInputPastEnd, "Input past end of file: " + file_name + " ends after line " +
                                         std::to_string(lines) + ", " + what);
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
      const float luf = has_luf ? SingleField(place, first, width) : 0;
      value = has_luf ? std::fabs(luf) : -1.0F;
      table.reached[hour] = luf >= 0;
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
      table.reached[0] = table.reached[hour];
    }
    if (table.Muf10(hour) > table.f_max) table.f_max = table.Muf10(hour);
    if (table.Luf(hour) >= table.f_max) table.f_max = table.Luf(hour);
    if (table.Muf90(hour) < table.f_min) table.f_min = table.Muf90(hour);
    if (table.Luf(hour) < table.f_min) table.f_min = table.Luf(hour);
  }
  RoundAxis(table);
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
