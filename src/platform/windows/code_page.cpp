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
  // UTF-8 lacks nothing, and the system wants to hear no questions about it.
  const bool utf8 = code_page == CP_UTF8;
  const DWORD flags = utf8 ? 0 : WC_NO_BEST_FIT_CHARS;
  BOOL lacking = FALSE;
  BOOL* const asked = utf8 ? nullptr : &lacking;
  const int length = static_cast<int>(wide.size());
  const int size =
      ::WideCharToMultiByte(code_page, flags, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(code_page, flags, wide.data(), length, text.data(), size, nullptr, asked);
  if (size == 0 || lacking) {
    throw Error(errors::kInvalidCall,
                "the engine cannot be told a path with letters that code page " +
                    std::to_string(code_page) + " lacks: " + PathText(path));
  }
  return text;
}

}  // namespace skyhop::platform
