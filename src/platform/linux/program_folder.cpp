#include <sys/stat.h>

#include <cstdlib>

#include "common/errors.h"
#include "common/files.h"
#include "platform/linux/atomic_file.h"
#include "platform/linux/user_folders.h"
#include "platform/placed_files.h"
#include "platform/platform.h"

namespace skyhop::platform {
namespace {

/// The folder above the one that holds the executable.
std::filesystem::path InstallationPrefix() {
  return ExecutablePath().parent_path().parent_path();
}

}  // namespace

std::optional<FileStamp> StampOf(const std::filesystem::path& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return FileStamp{static_cast<std::uintmax_t>(status.st_size), status.st_mtim.tv_sec,
                   status.st_mtim.tv_nsec};
}

void PutFile(const std::filesystem::path& path, std::string_view content, bool executable) {
  ReplaceFile(path, content, executable ? 0755 : 0644);
}

std::filesystem::path ProgramFolder() {
  std::filesystem::path folder;
  if (const char* home = std::getenv("SKYHOP_HOME"); home != nullptr && *home != '\0') {
    folder = std::filesystem::absolute(home);
  } else {
    folder = UserFolder("XDG_DATA_HOME", ".local/share") / "skyhop";
  }
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw FileError(error, "cannot create the program folder " + PathText(folder));
  return folder;
}

std::vector<std::string> FillProgramFolder(const std::filesystem::path& folder) {
  const std::filesystem::path prefix = InstallationPrefix();
  std::vector<ShippedFile> files;
  files.reserve(std::size(kShippedTexts) + 1);
  for (const char* name : kShippedTexts) {
    files.push_back({prefix / SKYHOP_DATA_FOLDER / name, name, false});
  }
  files.push_back({prefix / SKYHOP_ENGINE_FOLDER / "skyhop-estimate",
                   std::filesystem::path("IonCap") / "ioncap.exe", true});
  return PlaceFiles(folder, files);
}

std::filesystem::path DataFile(const std::filesystem::path& name) {
  return InstallationPrefix() / SKYHOP_DATA_FOLDER / name;
}

std::filesystem::path HelpFile(const std::filesystem::path& program_folder) {
  std::filesystem::path own = program_folder / "index.htm";
  std::error_code ignored;
  if (std::filesystem::is_regular_file(own, ignored)) return own;
  return DataFile(std::filesystem::path("help") / "index.htm");
}

}  // namespace skyhop::platform
