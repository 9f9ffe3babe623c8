#pragma once

#include <filesystem>
#include <string>

namespace skyhop::platform {

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
