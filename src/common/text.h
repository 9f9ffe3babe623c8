#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace skyhop {

/// True for the characters that count as blanks: space and tab.
[[nodiscard]] constexpr bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

[[nodiscard]] constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// True for A to Z and a to z.
[[nodiscard]] constexpr bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// `text` without its leading and trailing blanks; a view into the argument.
[[nodiscard]] std::string_view Trim(std::string_view text);

/// The letters a to z turned to capitals; all other bytes stay, so UTF-8 text survives.
[[nodiscard]] std::string UpperCase(std::string_view text);

/// The letters A to Z turned to small ones; all other bytes stay.
[[nodiscard]] std::string LowerCase(std::string_view text);

[[nodiscard]] constexpr char UpperCase(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

[[nodiscard]] constexpr char LowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Compares without regard to the case of the letters A to Z.
[[nodiscard]] bool EqualsIgnoringCase(std::string_view a, std::string_view b);

/// `text` with every occurrence of the non-empty `from` replaced by `to`.
[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view from,
                                     std::string_view to);

/// Takes the first line off `rest` and returns it without its end: CR LF, LF or CR.
[[nodiscard]] std::string_view TakeLine(std::string_view& rest);

/// Bytes of the UTF-8 character at the start of the non-empty `text`; 1 where that is no UTF-8.
[[nodiscard]] std::size_t CharacterSize(std::string_view text);

/// "True" or "False", the words in which a flag is saved and logged.
[[nodiscard]] constexpr const char* BooleanText(bool value) {
  return value ? "True" : "False";
}

}  // namespace skyhop
