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

}  // namespace skyhop
