#pragma once

#include <string>
#include <string_view>

namespace skyhop::platform {

// DDE texts use a code page of the machine and end with a zero byte.

/// Converts UTF-8 to bytes of a code page, without the zero byte at the end. Zero bytes, invalid
/// UTF-8 and letters that the code page lacks become "?". Throws Error 5 when the text is too long
/// for a link.
[[nodiscard]] std::string DdeBytes(std::string_view text, unsigned code_page);

/// Converts received bytes up to the first zero to UTF-8. Some programs send 16-bit characters;
/// their zero bytes identify them.
[[nodiscard]] std::string DdeText(std::string_view bytes, unsigned code_page);

/// Whether a text can name an application or a topic: letters, digits and "_", at most 200.
[[nodiscard]] bool IsDdeName(std::string_view name);

}  // namespace skyhop::platform
