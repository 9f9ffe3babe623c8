#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace skyhop::platform {

/// The system's number for UTF-8.
inline constexpr unsigned kUtf8 = 65001;

/// Converts text in a code page to the system's wide text. Bytes that are not valid UTF-8 become
/// U+FFFD.
[[nodiscard]] std::wstring Wide(std::string_view text, unsigned code_page = kUtf8);

/// Converts wide text to a code page. A letter that the code page lacks becomes "?" and sets
/// `lacking`.
[[nodiscard]] std::string Narrow(std::wstring_view text, unsigned code_page,
                                 bool* lacking = nullptr);

/// Converts wide text to UTF-8.
[[nodiscard]] std::string Utf8(std::wstring_view text);

/// The code pages of the machine, for text that other programs read. The usual system functions are
/// no use here: this program uses UTF-8, so they report UTF-8 to it.
struct CodePages {
  unsigned ansi = 0;
  unsigned oem = 0;
};
[[nodiscard]] CodePages MachineCodePages();

/// Converts a path to a code page. Throws Error 5 for a path with control characters or with
/// letters that the code page lacks.
[[nodiscard]] std::string PathInCodePage(const std::filesystem::path& path, unsigned code_page);

}  // namespace skyhop::platform
