#include "estimate/card.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::estimate {
namespace {

constexpr Columns kName = {1, 10};

bool IsPrintable(char c) {
  return c >= ' ' && c <= '~';
}

std::string HexText(char c) {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto byte = static_cast<std::uint8_t>(c);
  return std::string("0x") + kDigits[byte >> 4U] + kDigits[byte & 15U];
}

std::string ColumnsText(Columns columns) {
  if (columns.first == columns.last) return "column " + std::to_string(columns.first);
  return "columns " + std::to_string(columns.first) + "-" + std::to_string(columns.last);
}

/// A field without its blanks, and without the plus sign that from_chars does not know.
std::string Squeezed(std::string_view field) {
  std::string squeezed;
  for (const char c : field) {
    if (c != ' ') squeezed += c;
  }
  const bool plus = squeezed.size() > 1 && squeezed[0] == '+' && squeezed[1] != '-';
  return plus ? squeezed.substr(1) : squeezed;
}

template <class Value, class... Format>
bool Convert(const std::string& text, Value& value, Format... format) {
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value, format...);
  return result.ec == std::errc{} && result.ptr == end;
}

}  // namespace

Card::Card(int line, std::string_view text) : line_(line), text_(text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsPrintable(text[i])) continue;
    throw Error(errors::kTypeMismatch, "line " + std::to_string(line) + ", column " +
                                           std::to_string(i + 1) + ": the byte " +
                                           HexText(text[i]) + " is not a character of a card");
  }
}

std::string_view Card::Text(Columns columns) const {
  const std::size_t before = static_cast<std::size_t>(columns.first) - 1;
  if (before >= text_.size()) return {};
  return text_.substr(before, static_cast<std::size_t>(columns.last) - before);
}

std::string_view Card::Name() const {
  const std::string_view name = Text(kName);
  const std::size_t last = name.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view{} : name.substr(0, last + 1);
}

bool Card::IsBlank() const {
  return text_.find_first_not_of(' ') == std::string_view::npos;
}

double Card::Number(Columns columns, int decimals, std::string_view field) const {
  const std::string digits = Squeezed(Text(columns));
  if (digits.empty()) return 0;
  double value = 0;
  // Fixed notation only: an exponent in so narrow a field is a sign of text in the wrong columns.
  if (digits.find_first_not_of("-.0123456789") != std::string::npos ||
      !Convert(digits, value, std::chars_format::fixed)) {
    Refuse(columns, field, "is not a number");
  }
  const bool has_point = digits.find('.') != std::string::npos;
  return has_point ? value : value / std::pow(10.0, decimals);
}

double Card::NumberWithin(Columns columns, int decimals, std::string_view field, double least,
                          double greatest) const {
  const double value = Number(columns, decimals, field);
  if (value < least || value > greatest) {
    Refuse(columns, field,
           "stands for " + NumberText(value) + ", which is not from " + NumberText(least) + " to " +
               NumberText(greatest));
  }
  return value;
}

int Card::Integer(Columns columns, std::string_view field) const {
  const std::string digits = Squeezed(Text(columns));
  int value = 0;
  if (!digits.empty() && !Convert(digits, value)) Refuse(columns, field, "is not a whole number");
  return value;
}

int Card::IntegerWithin(Columns columns, std::string_view field, int least, int greatest) const {
  const int value = Integer(columns, field);
  if (value < least || value > greatest) {
    Refuse(columns, field,
           "is not from " + std::to_string(least) + " to " + std::to_string(greatest));
  }
  return value;
}

bool Card::IsSecondLetter(Columns columns, std::string_view field, char first, char second) const {
  const std::string_view text = Text(columns);
  const char letter = text.empty() ? ' ' : UpperCase(text.front());
  const bool alone = text.find_first_not_of(' ', 1) == std::string_view::npos;
  if ((letter != first && letter != second) || !alone) {
    Refuse(columns, field, std::string("is not ") + first + " or " + second);
  }
  return letter == second;
}

void Card::ExpectEndAt(int column) const {
  const Columns rest = {column, std::max(column, static_cast<int>(text_.size()))};
  const std::size_t found = Text(rest).find_first_not_of(' ');
  if (found == std::string_view::npos) return;
  const int first = column + static_cast<int>(found);
  Refuse({first, static_cast<int>(text_.find_last_not_of(' ')) + 1}, "text",
         "stands behind the last field");
}

void Card::Refuse(Columns columns, std::string_view field, std::string_view complaint) const {
  static constexpr std::size_t kShown = 40;
  const std::string_view text = Text(columns);
  Refuse(ColumnsText(columns) + ": " + std::string(field) + " \"" +
         std::string(text.substr(0, kShown)) + (text.size() > kShown ? "..." : "") + "\" " +
         std::string(complaint));
}

void Card::Refuse(std::string_view complaint) const {
  throw Error(errors::kTypeMismatch, "line " + std::to_string(line_) + ", " + std::string(Name()) +
                                         " card, " + std::string(complaint));
}

}  // namespace skyhop::estimate
