#include "platform/windows/dde_text.h"

#include <windows.h>

#include <algorithm>

#include "common/errors.h"
#include "interop/link_transport.h"
#include "platform/windows/system_error.h"

namespace skyhop::platform {
namespace {

std::string Narrow(const std::wstring& wide, unsigned code_page) {
  if (wide.empty()) return {};
  // The flag keeps letters from turning into others that look like them; UTF-8 lacks none.
  const DWORD flags = code_page == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
  const int length = static_cast<int>(wide.size());
  const int size =
      ::WideCharToMultiByte(code_page, flags, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(code_page, flags, wide.data(), length, bytes.data(), size, nullptr,
                        nullptr);
  return bytes;
}

/// Texts of the suite begin with digits, whose second byte is zero where characters have two.
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
  bytes = bytes.substr(0, bytes.find('\0'));
  if (bytes.empty()) return {};
  const int length = static_cast<int>(bytes.size());
  const int size = ::MultiByteToWideChar(code_page, 0, bytes.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  ::MultiByteToWideChar(code_page, 0, bytes.data(), length, wide.data(), size);
  return Utf8(wide);
}

bool IsDdeName(std::string_view name) {
  constexpr std::size_t longest = 200;
  return !name.empty() && name.size() <= longest &&
         std::all_of(name.begin(), name.end(), [](char c) {
           return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                  c == '_';
         });
}

}  // namespace skyhop::platform
