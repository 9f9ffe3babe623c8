#pragma once

#include <string>
#include <string_view>

namespace skyhop {

/// True for the characters that count as blanks: space and tab.
[[nodiscard]] constexpr bool IsBlank(char c) {
  return c == ' ' || c == '\t';
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

/// "True" or "False", the words in which a flag is saved and logged.
[[nodiscard]] constexpr const char* BooleanText(bool value) {
  return value ? "True" : "False";
}

}  // namespace skyhop
