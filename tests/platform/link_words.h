#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace skyhop::testing {

// The messages between a test and a peer process: lines of words. Bytes that would disturb this
// format are "%" and two hexadecimal digits.

inline std::string EncodeWord(std::string_view word) {
  constexpr const char* digits = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : word) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte > ' ' && byte < 0x7F && byte != '%') {
      encoded += c;
    } else {
      encoded += {'%', digits[byte >> 4U], digits[byte & 15U]};
    }
  }
  return encoded.empty() ? "%" : encoded;
}

inline std::string DecodeWord(std::string_view word) {
  const auto value = [](char digit) { return digit <= '9' ? digit - '0' : digit - 'A' + 10; };
  std::string decoded;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (word[i] != '%') {
      decoded += word[i];
    } else if (i + 2 < word.size()) {
      decoded += static_cast<char>(value(word[i + 1]) * 16 + value(word[i + 2]));
      i += 2;
    }
  }
  return decoded;
}

inline std::string Line(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : " ") + EncodeWord(word);
  return line + "\n";
}

/// The words of a line without its end.
inline std::vector<std::string> Words(std::string_view line) {
  std::vector<std::string> words;
  while (!line.empty()) {
    const std::size_t blank = std::min(line.find(' '), line.size());
    words.push_back(DecodeWord(line.substr(0, blank)));
    line.remove_prefix(std::min(blank + 1, line.size()));
  }
  return words;
}

}  // namespace skyhop::testing
