#pragma once

#include <string>
#include <string_view>

namespace skyhop::platform {

// Texts as DDE carries them: in a code page of the machine, ended by a zero byte.

/// UTF-8 as bytes of a code page, without the zero byte at the end. What the code page lacks, zero
/// bytes and what is no UTF-8 become "?". Throws Error 5 when the text is too long for a link.
[[nodiscard]] std::string DdeBytes(std::string_view text, unsigned code_page);

/// What bytes that arrived say, up to the first zero. Some programs send 16-bit characters; they
/// are told by their zero bytes.
[[nodiscard]] std::string DdeText(std::string_view bytes, unsigned code_page);

/// Whether a text can name an application or a topic: letters, digits and "_", at most 200.
[[nodiscard]] bool IsDdeName(std::string_view name);

}  // namespace skyhop::platform
