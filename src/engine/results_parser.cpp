#include "engine/results_parser.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "engine/antenna.h"
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

/// The word after `label`; empty if the line lacks the label.
std::string WordBehind(std::string_view line, std::string_view label) {
  const std::size_t at = line.find(label);
  return at == std::string_view::npos ? std::string()
                                      : std::string(FirstWord(line.substr(at + label.size())));
}

void SetOnce(std::string& value, std::string read) {
  if (value.empty()) value = std::move(read);
}

/// Reads parts of a line from its start and skips blanks between them.
class LineScanner {
 public:
  explicit LineScanner(std::string_view line) : rest_(line) {}

  /// Reads digits and points; returns an empty text if there are none.
  std::string Number() {
    rest_ = Trim(rest_);
    const std::size_t end = std::min(rest_.find_first_not_of("0123456789."), rest_.size());
    std::string number(rest_.substr(0, end));
    rest_.remove_prefix(end);
    return number;
  }

  /// Reads one of `letters`; returns 0 if the next character is none of them.
  char Letter(std::string_view letters) {
    rest_ = Trim(rest_);
    if (rest_.empty() || letters.find(rest_.front()) == std::string_view::npos) return 0;
    const char letter = rest_.front();
    rest_.remove_prefix(1);
    return letter;
  }

  /// Reads a latitude and a longitude, each a number and a letter.
  std::optional<HeadingPosition> Position() {
    std::string parts[2];
    const std::string_view letters[2] = {"NS", "EW"};
    for (std::size_t i = 0; i < 2; ++i) {
      parts[i] = Number();
      const char letter = Letter(letters[i]);
      if (parts[i].empty() || letter == 0) return std::nullopt;
      parts[i] += std::string(" ") + letter;
    }
    return HeadingPosition{parts[0], parts[1]};
  }

 private:
  std::string_view rest_;
};

/// Reads a line such as "40.50 N 74.25 W - 51.50 N 0.12 W", then two azimuths, nautical miles and
/// kilometers.
void ReadRoute(std::string_view line, ResultsHeading& heading) {
  LineScanner scanner(line);
  const std::optional<HeadingPosition> transmitter = scanner.Position();
  if (!transmitter || scanner.Letter("-") == 0) return;
  const std::optional<HeadingPosition> receiver = scanner.Position();
  if (!receiver) return;
  heading.transmitter = transmitter;
  heading.receiver = receiver;
  for (int number = 0; number < 4; ++number) heading.kilometers = scanner.Number();
}

/// The antenna's file in brackets. The estimate engine does not read files: it names the isotropic
/// antenna that it uses, and after it the file of the deck.
std::string AntennaFile(std::string_view line) {
  const std::size_t open = line.find('[');
  const std::size_t close = line.find(']');
  if (open != std::string_view::npos && close != std::string_view::npos && open < close) {
    return std::string(Trim(line.substr(open + 1, close - open - 1)));
  }
  std::string replaced = WordBehind(line, " in place of ");
  if (!replaced.empty()) return replaced;
  return line.find(" isotropic ") == std::string_view::npos ? std::string()
                                                            : std::string(kIsotropicFile);
}

void ReadQuestion(std::string_view line, ResultsHeading& heading) {
  if (line.find(" AZIMUTHS ") != std::string_view::npos) {
    heading.long_path = line.find("<Long>") != std::string_view::npos;
  }
  if (!heading.transmitter) ReadRoute(line, heading);
  SetOnce(heading.takeoff, WordBehind(line, "Minimum Angle="));
  SetOnce(heading.noise, WordBehind(line, "3 MHz NOISE ="));
  SetOnce(heading.snr, WordBehind(line, "REQ. SNR ="));
  const std::string reliability = WordBehind(line, "REQ. REL =");
  // Without the "%", the value could be a fraction.
  if (reliability.ends_with('%')) {
    SetOnce(heading.reliability, reliability.substr(0, reliability.size() - 1));
  }
  const std::string_view first = FirstWord(line);
  if (first == "XMTR") SetOnce(heading.transmitter_antenna, AntennaFile(line));
  if (first == "RCVR") SetOnce(heading.receiver_antenna, AntennaFile(line));
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
    const std::optional<double> number = WholeNumberText(FirstWord(line.substr(ssn + 5)));
    if (number) heading.sunspot_number = NumberText(*number);
  }
  const std::size_t power = line.find("kW");
  if (power != std::string_view::npos && heading.power.empty()) {
    heading.power = LastWord(line.substr(0, power));
  }
}

}  // namespace

bool NamesEstimate(std::string_view engine) {
  return EqualsIgnoringCase(engine, "SKYHOP ESTIMATE ENGINE");
}

ResultsHeading ReadHeading(std::string_view text) {
  ResultsHeading heading;
  LineReader lines(text);
  // The heading ends at the start of the table.
  while (const std::optional<std::string_view> line = lines.Next()) {
    if (line->find("HPF  ESMUF") != std::string_view::npos ||
        line->find("MULTIPATH POWER TOLERANCE") != std::string_view::npos) {
      break;
    }
    // The user may have typed the names of the stations, so they do not repeat an input.
    if (FirstWord(*line) == "LABEL") continue;
    ReadHeadingLine(*line, heading);
    ReadQuestion(*line, heading);
  }
  return heading;
}

}  // namespace skyhop::IONCAPModule
