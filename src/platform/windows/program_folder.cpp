#include <windows.h>

#include "common/files.h"
#include "platform/placed_files.h"
#include "platform/platform.h"
#include "platform/windows/executable_path.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_error.h"

namespace skyhop::platform {
namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;

/// Deletes the temporary file unless it has taken its final name.
class TemporaryName {
 public:
  explicit TemporaryName(std::filesystem::path name) : name_(std::move(name)) {}
  ~TemporaryName() {
    if (!name_.empty()) ::DeleteFileW(name_.c_str());
  }
  TemporaryName(const TemporaryName&) = delete;
  TemporaryName& operator=(const TemporaryName&) = delete;

  [[nodiscard]] const wchar_t* Get() const { return name_.c_str(); }
  void Keep() { name_.clear(); }

 private:
  std::filesystem::path name_;
};

void WriteAll(HANDLE file, std::string_view content, const std::string& what) {
  while (!content.empty()) {
    const auto most = static_cast<DWORD>(std::min<std::size_t>(content.size(), 1U << 20U));
    DWORD written = 0;
    if (!::WriteFile(file, content.data(), most, &written, nullptr)) throw LastSystemError(what);
    content.remove_prefix(written);
  }
  if (!::FlushFileBuffers(file)) throw LastSystemError(what);
}

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

void PutFile(const std::filesystem::path& path, std::string_view content, bool /*executable*/) {
  const std::string what = "cannot write " + PathText(path);
  // The system's own function for such a name knows no long paths.
  TemporaryName temporary(path.native() + L'-' + std::to_wstring(::GetCurrentProcessId()));
  Handle file(::CreateFileW(temporary.Get(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) throw LastSystemError(what);
  WriteAll(file.Get(), content, what);
  file.Close();
  if (!::MoveFileExW(temporary.Get(), path.c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    throw LastSystemError(what);
  }
  temporary.Keep();
}

std::filesystem::path ProgramFolder() {
  return ExecutablePath().parent_path();
}

std::vector<std::string> FillProgramFolder(const std::filesystem::path& folder) {
  std::vector<ShippedFile> files;
  for (const char* name : kShippedTexts) files.push_back({DataFile(name), name, false});
  files.push_back({ExecutablePath().parent_path() / "skyhop-estimate.exe",
                   std::filesystem::path("IonCap") / "ioncap.exe", true});
  return PlaceFiles(folder, files);
}

std::filesystem::path DataFile(const std::filesystem::path& name) {
  return ExecutablePath().parent_path() / "data" / std::filesystem::path(name).make_preferred();
}

std::filesystem::path HelpFile(const std::filesystem::path& program_folder) {
  std::filesystem::path own = program_folder / "index.htm";
  std::error_code ignored;
  if (std::filesystem::is_regular_file(own, ignored)) return own;
  return DataFile(std::filesystem::path("help") / "index.htm");
}

}  // namespace skyhop::platform
