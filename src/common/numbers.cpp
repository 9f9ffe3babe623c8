#include "common/numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "common/errors.h"
#include "common/text.h"

namespace skyhop {
namespace {

struct ScannedNumber {
  std::size_t begin = 0;  ///< first character of the number, a plus sign left out
  std::size_t end = 0;    ///< one past its last character
  bool negative = false;
  bool found = false;
};

std::size_t SkipDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

ScannedNumber Scan(std::string_view text) {
  ScannedNumber result;
  std::size_t at = 0;
  while (at < text.size() && IsBlank(text[at])) ++at;
  result.begin = at;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
    result.negative = text[at] == '-';
    ++at;
    // from_chars does not accept a plus sign.
    if (!result.negative) result.begin = at;
  }
  const std::size_t digits = at;
  at = SkipDigits(text, at);
  std::size_t digit_count = at - digits;
  if (at < text.size() && text[at] == '.') {
    const std::size_t fraction = at + 1;
    at = SkipDigits(text, fraction);
    digit_count += at - fraction;
  }
  if (digit_count == 0) return result;
  result.found = true;
  result.end = at;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t exponent = at + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
    const std::size_t last = SkipDigits(text, exponent);
    if (last > exponent) result.end = last;
  }
  return result;
}

/// from_chars reports "out of range" for numbers that are too large and for those that are too
/// small. The decimal exponent of the first non-zero digit distinguishes them.
bool IsTooLarge(std::string_view digits) {
  const std::size_t mantissa_end = std::min(digits.find_first_of("eE"), digits.size());
  const std::string_view mantissa = digits.substr(0, mantissa_end);
  const std::size_t first = mantissa.find_first_of("123456789");
  if (first == std::string_view::npos) return false;
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const long long magnitude = static_cast<long long>(point) - static_cast<long long>(first);
  long long exponent = 0;
  if (mantissa_end < digits.size()) {
    std::string_view text = digits.substr(mantissa_end + 1);
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+') text.remove_prefix(1);
    if (std::from_chars(text.data(), text.data() + text.size(), exponent).ec != std::errc{}) {
      return !negative;
    }
    if (negative) exponent = -exponent;
  }
  return exponent > -magnitude;
}

double Convert(std::string_view text, const ScannedNumber& scanned) {
  double value = 0;
  const char* const first = text.data() + scanned.begin;
  const char* const last = text.data() + scanned.end;
  if (std::from_chars(first, last, value).ec == std::errc::result_out_of_range) {
    value = IsTooLarge(text.substr(scanned.begin, scanned.end - scanned.begin))
                ? std::numeric_limits<double>::infinity()
                : 0.0;
    if (scanned.negative) value = -value;
  }
  return value;
}

[[noreturn]] void ThrowOverflow(const std::string& what) {
  throw Error(errors::kOverflow, "Overflow: " + what);
}

template <class Integer>
Integer RoundTo(double value) {
  // The processor's default rounding mode is to nearest, ties to even.
  const double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<Integer>::min() &&
        rounded <= std::numeric_limits<Integer>::max())) {
    ThrowOverflow(NumberText(value) + " is beyond " + std::to_string(sizeof(Integer) * 8) +
                  " bits");
  }
  return static_cast<Integer>(rounded);
}

template <class Value>
std::string ShortestText(Value value) {
  std::array<char, 400> buffer{};
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  return {buffer.data(), result.ptr};
}

}  // namespace

double LeadingNumber(std::string_view text) {
  const ScannedNumber scanned = Scan(text);
  return scanned.found ? Convert(text, scanned) : 0.0;
}

bool BeginsWithNumber(std::string_view text) {
  return Scan(text).found;
}

std::optional<double> WholeNumberText(std::string_view text) {
  const std::string_view trimmed = Trim(text);
  const ScannedNumber scanned = Scan(trimmed);
  if (!scanned.found || scanned.end != trimmed.size()) return std::nullopt;
  return Convert(trimmed, scanned);
}

double ToDouble(std::string_view text) {
  const std::optional<double> value = WholeNumberText(text);
  if (!value) {
    throw Error(errors::kTypeMismatch,
                "Type mismatch: \"" + std::string(text.substr(0, 60)) + "\" is not a number");
  }
  if (std::isinf(*value)) ThrowOverflow(std::string(text.substr(0, 60)));
  return *value;
}

float ToSingle(std::string_view text) {
  return StoreSingle(ToDouble(text));
}

std::int16_t ToInteger(std::string_view text) {
  return RoundToInteger(ToDouble(text));
}

std::int32_t ToLong(std::string_view text) {
  return RoundToLong(ToDouble(text));
}

bool ToBoolean(std::string_view text) {
  const std::string_view trimmed = Trim(text);
  if (EqualsIgnoringCase(trimmed, "True")) return true;
  if (EqualsIgnoringCase(trimmed, "False")) return false;
  return ToDouble(trimmed) != 0;
}

std::int16_t RoundToInteger(double value) {
  return RoundTo<std::int16_t>(value);
}

std::int32_t RoundToLong(double value) {
  return RoundTo<std::int32_t>(value);
}

float StoreSingle(double value) {
  const auto stored = static_cast<float>(value);
  if (!std::isfinite(stored)) ThrowOverflow(NumberText(value) + " in single precision");
  return stored;
}

std::string NumberText(double value) {
  return ShortestText(value);
}

std::string NumberText(float value) {
  return ShortestText(value);
}

std::string FixedText(double value, int decimals) {
  std::array<char, 400> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                    std::chars_format::fixed, decimals);
  return {buffer.data(), result.ptr};
}

std::string PaddedNumber(int value, int width) {
  std::string digits = std::to_string(value < 0 ? -static_cast<long long>(value) : value);
  if (digits.size() < static_cast<std::size_t>(width)) {
    digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
  }
  return value < 0 ? "-" + digits : digits;
}

}  // namespace skyhop
