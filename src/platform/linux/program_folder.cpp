#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "common/errors.h"
#include "common/files.h"
#include "platform/linux/file_descriptor.h"
#include "platform/linux/ini_settings_store.h"
#include "platform/placed_files.h"
#include "platform/platform.h"

namespace skyhop::platform {
namespace {

/// The folder above the one that holds the executable.
std::filesystem::path InstallationPrefix() {
  return ExecutablePath().parent_path().parent_path();
}

/// The folder that `variable` names if it holds an absolute path, else `fallback` below the user's
/// home folder. Throws Error 76 when the user has no home folder.
std::filesystem::path UserFolder(const char* variable, const char* fallback) {
  // The base directory rules require programs to ignore a relative path in such a variable.
  if (const char* folder = std::getenv(variable); folder != nullptr && folder[0] == '/') {
    return folder;
  }
  if (const char* home = std::getenv("HOME"); home != nullptr && home[0] == '/') {
    return std::filesystem::path(home) / fallback;
  }
  const passwd* user = ::getpwuid(::getuid());
  if (user == nullptr || user->pw_dir == nullptr) {
    throw Error(errors::kPathNotFound, "the user has no home folder");
  }
  return std::filesystem::path(user->pw_dir) / fallback;
}

}  // namespace

std::filesystem::path ExecutablePath() {
  std::error_code ignored;
  return std::filesystem::read_symlink("/proc/self/exe", ignored);
}

std::filesystem::path EstimateEngineFile() {
  return InstallationPrefix() / SKYHOP_ENGINE_FOLDER / "skyhop-estimate";
}

std::optional<FileStamp> StampOf(const std::filesystem::path& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return FileStamp{static_cast<std::uintmax_t>(status.st_size), status.st_mtim.tv_sec,
                   status.st_mtim.tv_nsec};
}

void SyncFile(const std::filesystem::path& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.IsOpen() || ::fsync(file.Get()) != 0) {
    throw FileError(std::error_code(errno, std::generic_category()),
                    "cannot write " + PathText(path) + " to the disk");
  }
}

std::unique_ptr<SettingsStore> MakeSettingsStore() {
  return std::make_unique<IniSettingsStore>(UserFolder("XDG_CONFIG_HOME", ".config") / "marlo");
}

std::filesystem::path ProgramFolder() {
  std::filesystem::path folder;
  if (const char* home = std::getenv("SKYHOP_HOME"); home != nullptr && *home != '\0') {
    folder = std::filesystem::absolute(home);
  } else {
    folder = UserFolder("XDG_DATA_HOME", ".local/share") / "skyhop";
  }
  CreateFolder(folder);
  return folder;
}

std::filesystem::path DataFile(const std::filesystem::path& name) {
  return InstallationPrefix() / SKYHOP_DATA_FOLDER / name;
}

}  // namespace skyhop::platform
