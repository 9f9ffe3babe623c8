#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace skyhop::platform {

/// The code page that is UTF-8, as the system numbers it.
inline constexpr unsigned kUtf8 = 65001;

/// Text of a code page as the system's wide functions take it. Bytes that are not valid UTF-8
/// become U+FFFD.
[[nodiscard]] std::wstring Wide(std::string_view text, unsigned code_page = kUtf8);

/// Wide text in a code page. A letter that the code page lacks becomes "?" and sets `lacking`.
[[nodiscard]] std::string Narrow(std::wstring_view text, unsigned code_page,
                                 bool* lacking = nullptr);

/// Wide text as UTF-8.
[[nodiscard]] std::string Utf8(std::wstring_view text);

/// The code pages of the machine. What the system tells this program about them is no use: it uses
/// UTF-8 itself, other programs do not.
struct CodePages {
  unsigned ansi = 0;
  unsigned oem = 0;
};
[[nodiscard]] CodePages MachineCodePages();

/// A path in a code page. Throws Error 5 for a path with letters that it lacks, or with control
/// characters.
[[nodiscard]] std::string PathInCodePage(const std::filesystem::path& path, unsigned code_page);

}  // namespace skyhop::platform
