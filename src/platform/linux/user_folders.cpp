#include "platform/linux/user_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "common/errors.h"

namespace skyhop::platform {

std::filesystem::path UserFolder(const char* variable, const char* fallback) {
  // The base directory rules say that a relative path in such a variable is to be ignored.
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

std::filesystem::path ExecutablePath() {
  std::error_code ignored;
  return std::filesystem::read_symlink("/proc/self/exe", ignored);
}

}  // namespace skyhop::platform
