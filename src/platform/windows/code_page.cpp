#include "platform/windows/code_page.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <iterator>

#include "common/errors.h"
#include "common/files.h"

namespace skyhop::platform {
namespace {

unsigned StoredCodePage(const wchar_t* name) {
  wchar_t text[16] = {};
  DWORD size = sizeof text - sizeof(wchar_t);
  const LSTATUS status =
      ::RegGetValueW(HKEY_LOCAL_MACHINE, L"SYSTEM\\CurrentControlSet\\Control\\Nls\\CodePage", name,
                     RRF_RT_REG_SZ, nullptr, text, &size);
  return status == ERROR_SUCCESS ? static_cast<unsigned>(std::wcstoul(text, nullptr, 10)) : 0;
}

unsigned CodePageOf(const wchar_t* name, unsigned otherwise) {
  const unsigned stored = StoredCodePage(name);
  return stored != 0 && ::IsValidCodePage(stored) ? stored : otherwise;
}

}  // namespace

std::wstring Wide(std::string_view text, unsigned code_page) {
  const int length = static_cast<int>(text.size());
  const int size = ::MultiByteToWideChar(code_page, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  ::MultiByteToWideChar(code_page, 0, text.data(), length, wide.data(), size);
  return wide;
}

std::string Narrow(std::wstring_view text, unsigned code_page, bool* lacking) {
  // The flag prevents replacement by similar letters. For UTF-8, which has every letter, the system
  // refuses both the flag and `asked`.
  const DWORD flags = code_page == kUtf8 ? 0 : WC_NO_BEST_FIT_CHARS;
  BOOL replaced = FALSE;
  BOOL* const asked = code_page == kUtf8 ? nullptr : &replaced;
  const int length = static_cast<int>(text.size());
  const int size =
      ::WideCharToMultiByte(code_page, flags, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(code_page, flags, text.data(), length, bytes.data(), size, nullptr, asked);
  if (lacking != nullptr) *lacking = replaced != FALSE;
  return bytes;
}

std::string Utf8(std::wstring_view text) {
  return Narrow(text, kUtf8);
}

CodePages MachineCodePages() {
  return {CodePageOf(L"ACP", ::GetACP()), CodePageOf(L"OEMCP", ::GetOEMCP())};
}

std::string PathInCodePage(const std::filesystem::path& path, unsigned code_page) {
  const std::wstring& wide = path.native();
  if (wide.empty()) return {};
  if (std::any_of(wide.begin(), wide.end(), [](wchar_t c) { return c < L' '; })) {
    throw Error(errors::kInvalidCall,
                "the engine cannot be told a path with a line break: " + PathText(path));
  }
  bool lacking = false;
  std::string text = Narrow(wide, code_page, &lacking);
  if (text.empty() || lacking) {
    throw Error(errors::kInvalidCall,
                "the engine cannot be told a path with letters that code page " +
                    std::to_string(code_page) + " lacks: " + PathText(path));
  }
  return text;
}

}  // namespace skyhop::platform
