#pragma once

#include <windows.h>

#include <ddeml.h>

#include <string>
#include <string_view>
#include <utility>

#include "platform/windows/code_page.h"

namespace skyhop::platform {

/// Owns a DDE string handle. It belongs to an instance, that is, to the use of DDE by one thread.
class DdeName {
 public:
  DdeName(DWORD instance, std::string_view name)
      : instance_(instance),
        handle_(::DdeCreateStringHandleW(instance, Wide(name).c_str(), CP_WINUNICODE)) {}
  ~DdeName() {
    if (handle_ != nullptr) ::DdeFreeStringHandle(instance_, handle_);
  }
  DdeName(const DdeName&) = delete;
  DdeName& operator=(const DdeName&) = delete;

  [[nodiscard]] HSZ Get() const { return handle_; }

 private:
  DWORD instance_;
  HSZ handle_;
};

/// The text of a DDE string handle.
[[nodiscard]] inline std::string NameText(DWORD instance, HSZ name) {
  wchar_t text[256] = {};
  const DWORD length = ::DdeQueryStringW(instance, name, text, 256, CP_WINUNICODE);
  return Utf8({text, length});
}

/// A copy of the bytes of a DDE data handle.
[[nodiscard]] inline std::string BlockBytes(HDDEDATA block) {
  DWORD size = 0;
  const BYTE* const bytes = ::DdeAccessData(block, &size);
  std::string copy(reinterpret_cast<const char*>(bytes), bytes == nullptr ? 0 : size);
  ::DdeUnaccessData(block);
  return copy;
}

}  // namespace skyhop::platform
