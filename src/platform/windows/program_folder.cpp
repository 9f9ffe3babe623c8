#include <windows.h>

#include "common/files.h"
#include "platform/placed_files.h"
#include "platform/platform.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_error.h"

namespace skyhop::platform {
namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;

}  // namespace

std::filesystem::path ExecutablePath() {
  std::wstring name(MAX_PATH, L'\0');
  while (true) {
    const DWORD length =
        ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (length < name.size()) {
      name.resize(length);
      return name;
    }
    name.resize(name.size() * 2);
  }
}

std::optional<FileStamp> StampOf(const std::filesystem::path& path) {
  WIN32_FILE_ATTRIBUTE_DATA facts{};
  if (!::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &facts)) return std::nullopt;
  const auto ticks = static_cast<std::int64_t>(
      (static_cast<std::uint64_t>(facts.ftLastWriteTime.dwHighDateTime) << 32U) |
      facts.ftLastWriteTime.dwLowDateTime);
  return FileStamp{(static_cast<std::uintmax_t>(facts.nFileSizeHigh) << 32U) | facts.nFileSizeLow,
                   ticks / kTicksPerSecond, ticks % kTicksPerSecond * 100};
}

void SyncFile(const std::filesystem::path& path) {
  const Handle file(::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen() || !::FlushFileBuffers(file.Get())) {
    throw LastSystemError("cannot write " + PathText(path) + " to the disk");
  }
}

std::filesystem::path EstimateEngineFile() {
  return ExecutablePath().parent_path() / "skyhop-estimate.exe";
}

std::filesystem::path ProgramFolder() {
  return ExecutablePath().parent_path();
}

std::filesystem::path DataFile(const std::filesystem::path& name) {
  return ExecutablePath().parent_path() / "data" / std::filesystem::path(name).make_preferred();
}

}  // namespace skyhop::platform
