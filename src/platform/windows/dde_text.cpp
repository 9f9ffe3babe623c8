#include "platform/windows/dde_text.h"

#include <algorithm>

#include "common/errors.h"
#include "common/text.h"
#include "interop/link_transport.h"
#include "platform/windows/code_page.h"

namespace skyhop::platform {
namespace {

/// Texts of the suite begin with digits. The second byte of such a text is zero if its characters
/// have 16 bits.
bool LooksWide(std::string_view bytes) {
  return bytes.size() >= 4 && bytes[0] != '\0' && bytes[1] == '\0' && bytes[3] == '\0';
}

std::wstring Characters(std::string_view bytes) {
  std::wstring wide;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(bytes[i + 1]);
    wide += static_cast<wchar_t>(low | (high << 8U));
  }
  return wide;
}

}  // namespace

std::string DdeBytes(std::string_view text, unsigned code_page) {
  if (text.size() > LinkTopic::kLongestCommand) {
    throw Error(errors::kInvalidCall,
                "a text of " + std::to_string(text.size()) + " bytes is too long for a link");
  }
  std::wstring wide = Wide(text);
  std::replace_if(
      wide.begin(), wide.end(), [](wchar_t c) { return c == L'\0' || c == L'\uFFFD'; }, L'?');
  return Narrow(wide, code_page);
}

std::string DdeText(std::string_view bytes, unsigned code_page) {
  if (LooksWide(bytes)) {
    const std::wstring wide = Characters(bytes);
    return Utf8(std::wstring_view(wide).substr(0, wide.find(L'\0')));
  }
  return Utf8(Wide(bytes.substr(0, bytes.find('\0')), code_page));
}

bool IsDdeName(std::string_view name) {
  constexpr std::size_t longest = 200;
  return !name.empty() && name.size() <= longest &&
         std::all_of(name.begin(), name.end(),
                     [](char c) { return IsLetter(c) || IsDigit(c) || c == '_'; });
}

}  // namespace skyhop::platform
