#include "common/text.h"

#include <algorithm>

namespace skyhop {

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string UpperCase(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = UpperCase(c);
  return result;
}

std::string LowerCase(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = LowerCase(c);
  return result;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return UpperCase(x) == UpperCase(y); });
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  for (std::size_t found = text.find(from); found != std::string_view::npos;
       found = text.find(from)) {
    result.append(text.substr(0, found)).append(to);
    text.remove_prefix(found + from.size());
  }
  return result.append(text);
}

std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end);
  rest.remove_prefix(rest.starts_with("\r\n") ? 2 : std::min<std::size_t>(rest.size(), 1));
  return line;
}

std::size_t CharacterSize(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) return 1;
  std::size_t size = 1;
  if (lead >= 0xC2 && lead <= 0xDF) size = 2;
  if (lead >= 0xE0 && lead <= 0xEF) size = 3;
  if (lead >= 0xF0 && lead <= 0xF4) size = 4;
  if (size > text.size()) return 1;
  for (std::size_t i = 1; i < size; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U) return 1;
  }
  return size;
}

}  // namespace skyhop
