#include "geo/coordinate_text.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::LatLonModule {
namespace {

/// Degrees, minutes and seconds.
constexpr std::size_t kUnits = 3;

/// The marks of the units in the program's own text form.
constexpr std::string_view kMarks = "d'\"";

/// Other spellings of the marks and of the minus sign. Two apostrophes are a seconds mark.
constexpr std::array<std::pair<std::string_view, std::string_view>, 14> kSpellings = {{
    {"''", "\""},
    {"\u2032\u2032", "\""},
    {"\u00B0", "d"},
    {"\u00BA", "d"},
    {"\u02DA", "d"},
    {"\u2032", "'"},
    {"\u2019", "'"},
    {"\u2018", "'"},
    {"\u00B4", "'"},
    {"\u2033", "\""},
    {"\u201D", "\""},
    {"\u201C", "\""},
    {"\u2212", "-"},
    {"\u00A0", " "},
}};

/// Takes a coordinate apart, character by character.
class CoordinateReader {
 public:
  CoordinateReader(std::string text, Axis axis) : text_(std::move(text)), axis_(axis) {}

  std::optional<Angle> Read() {
    while (at_ < text_.size()) {
      if (!TakeOne()) return std::nullopt;
    }
    if (numbers_ == 0 || (sign_ != 0 && letter_ != 0)) return std::nullopt;
    if (numbers_ > 1 && sign_ == 0 && letter_ == 0) return std::nullopt;
    return Result();
  }

 private:
  bool TakeOne() {
    const char c = text_[at_];
    if (IsBlank(c)) {
      ++at_;
      return true;
    }
    if (c == '-' || c == '+') return TakeSign(c);
    if (IsDigit(c) || c == '.') return TakeNumber();
    return TakeLetter(c);
  }

  bool TakeSign(char c) {
    if (numbers_ > 0 || sign_ != 0) return false;
    sign_ = c;
    ++at_;
    return true;
  }

  bool TakeLetter(char c) {
    const std::string_view letters = axis_ == Axis::kLatitude ? "NS" : "EW";
    if (letters.find(c) == std::string_view::npos || letter_ != 0) return false;
    letter_ = c;
    letter_after_ = numbers_;
    ++at_;
    return true;
  }

  bool TakeNumber() {
    const std::size_t begin = at_;
    while (at_ < text_.size() && (IsDigit(text_[at_]) || text_[at_] == '.')) ++at_;
    const std::string_view number = std::string_view(text_).substr(begin, at_ - begin);
    const std::optional<double> value = WholeNumberText(number);
    // Only the last number may have decimals.
    if (!value || has_decimals_) return false;
    has_decimals_ = number.find('.') != std::string_view::npos;
    std::size_t next = at_;
    while (next < text_.size() && IsBlank(text_[next])) ++next;
    std::size_t unit = next_unit_;
    const std::size_t mark = next < text_.size() ? kMarks.find(text_[next]) : std::string::npos;
    if (mark != std::string::npos) {
      unit = mark;
      at_ = next + 1;
    }
    if (unit < next_unit_ || unit >= kUnits) return false;
    values_.at(unit) = *value;
    next_unit_ = unit + 1;
    ++numbers_;
    return true;
  }

  [[nodiscard]] std::optional<Angle> Result() const {
    // The letter may be in front, behind, or behind the degrees, not between minutes and seconds.
    if (letter_ != 0 && letter_after_ > 1 && letter_after_ != numbers_) return std::nullopt;
    if (values_[1] >= 60 || values_[2] >= 60) return std::nullopt;
    const double degrees = values_[0] + values_[1] / 60 + values_[2] / 3600;
    Angle angle = AngleFromDecimalDegrees(degrees, axis_);
    if (IsUndefined(angle)) return std::nullopt;
    const bool north_or_east = letter_ != 0 ? letter_ == 'N' || letter_ == 'E' : sign_ != '-';
    const bool negative = north_or_east == (axis_ == Axis::kLatitude);
    angle.sign = static_cast<std::int16_t>(negative ? -1 : 1);
    return angle;
  }

  std::string text_;
  Axis axis_;
  std::size_t at_ = 0;
  std::array<double, kUnits> values_{};
  std::size_t next_unit_ = 0;
  std::size_t numbers_ = 0;
  std::size_t letter_after_ = 0;  ///< numbers before the letter
  bool has_decimals_ = false;
  char sign_ = 0;
  char letter_ = 0;
};

}  // namespace

std::optional<Angle> ReadCoordinate(std::string_view text, Axis axis) {
  std::string plain = UpperCase(Trim(text));
  for (const auto& [spelling, mark] : kSpellings) plain = ReplaceAll(plain, spelling, mark);
  for (std::size_t i = 1; i + 1 < plain.size(); ++i) {
    if (plain[i] == ',' && IsDigit(plain[i - 1]) && IsDigit(plain[i + 1])) plain[i] = '.';
  }
  return CoordinateReader(std::move(plain), axis).Read();
}

std::string CoordinateText(const Angle& angle, Axis axis) {
  return axis == Axis::kLatitude ? LatitudeString({angle, {}}) : LongitudeString({{}, angle});
}

std::string_view CoordinateExamples(Axis axis) {
  return axis == Axis::kLatitude ? "33 54' 0\" S, 33.9 S or -33.9"
                                 : "18 25' 0\" E, 18.42 E or 18.42";
}

}  // namespace skyhop::LatLonModule
