#include "platform/windows/system_error.h"

#include <windows.h>

#include <iterator>

#include "common/text.h"
#include "platform/windows/code_page.h"

namespace skyhop::platform {
namespace {

int ErrorNumber(DWORD code) {
  switch (code) {
    case ERROR_FILE_NOT_FOUND:
      return errors::kFileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DIRECTORY:
    case ERROR_BAD_NETPATH:
    case ERROR_INVALID_DRIVE:
      return errors::kPathNotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
    case ERROR_PRIVILEGE_NOT_HELD:
      return errors::kPermissionDenied;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return errors::kDiskFull;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return errors::kFileAlreadyExists;
    case ERROR_NOT_READY:
    case ERROR_IO_DEVICE:
      return errors::kDiskNotReady;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
      return errors::kOutOfMemory;
    default:
      return errors::kPathFileAccess;
  }
}

std::string SystemWords(DWORD code) {
  wchar_t words[512] = {};
  const DWORD length =
      ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                       words, static_cast<DWORD>(std::size(words)), nullptr);
  std::string text(Trim(ReplaceAll(Utf8({words, length}), "\r\n", " ")));
  return text.empty() ? "error code " + std::to_string(code) : text;
}

}  // namespace

Error SystemError(unsigned long code, const std::string& what) {
  return {ErrorNumber(code), what + ": " + SystemWords(code)};
}

Error LastSystemError(const std::string& what) {
  return SystemError(::GetLastError(), what);
}

}  // namespace skyhop::platform
