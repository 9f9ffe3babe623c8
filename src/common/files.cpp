#include "common/files.h"

#include <cerrno>
#include <fstream>
#include <random>

#include "common/errors.h"
#include "common/text.h"

namespace skyhop {
namespace {

Error LastFileError(const std::string& what) {
  const int code = errno != 0 ? errno : EIO;
  return FileError(std::error_code(code, std::generic_category()), what);
}

void WriteFileFor(const std::filesystem::path& path, const std::string& content,
                  const std::string& what,
                  std::filesystem::perms permissions = std::filesystem::perms::unknown) {
  errno = 0;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file) {
    const int reason = errno;
    // Systems report different errors for a folder.
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
      throw Error(errors::kPathFileAccess, what + ": it is a folder");
    }
    errno = reason;
    throw LastFileError(what);
  }
  if (permissions != std::filesystem::perms::unknown) {
    std::error_code error;
    std::filesystem::permissions(path, permissions, error);
    if (error) throw FileError(error, what);
  }
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  if (!file) throw LastFileError(what);
}

/// The file that a symbolic link leads to, also where there is none yet; any other path as it is.
std::filesystem::path LinkTarget(const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::is_symlink(path, error)) return path;
  std::filesystem::path target = std::filesystem::canonical(path, error);
  return error ? path.parent_path() / std::filesystem::read_symlink(path) : target;
}

/// An unused file name in the same folder.
std::filesystem::path UnusedNeighbour(const std::filesystem::path& path) {
  std::random_device random;
  while (true) {
    std::filesystem::path neighbour =
        path.parent_path() / ("skyhop-" + std::to_string(random()) + ".tmp");
    std::error_code ignored;
    if (!std::filesystem::exists(std::filesystem::symlink_status(neighbour, ignored))) {
      return neighbour;
    }
  }
}

}  // namespace

std::string PathText(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::filesystem::path PathFromText(const std::string& text) {
  return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string ReadFile(const std::filesystem::path& path, std::size_t limit) {
  const std::string what = "cannot read " + PathText(path);
  // Opening a folder for reading succeeds on some systems and only the first read fails.
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    throw Error(errors::kPathFileAccess, what + ": it is a folder");
  }
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) throw LastFileError(what);
  std::string content;
  std::error_code size_error;
  const auto size = std::filesystem::file_size(path, size_error);
  if (!size_error) {
    if (size > limit) {
      throw Error(errors::kOverflow,
                  what + ": it is longer than " + std::to_string(limit) + " bytes");
    }
    content.resize(static_cast<std::size_t>(size));
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(file.gcount()));
  }
  if (file.bad()) throw LastFileError(what);
  return content;
}

void WriteFile(const std::filesystem::path& path, const std::string& content) {
  WriteFileFor(path, content, "cannot write " + PathText(path));
}

void WriteFileAtOnce(const std::filesystem::path& path, const std::string& content,
                     std::filesystem::perms permissions, FileSync sync) {
  const std::string what = "cannot write " + PathText(path);
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    throw Error(errors::kPathFileAccess, what + ": it is not a regular file");
  }
  const std::filesystem::path target = LinkTarget(path);
  const std::filesystem::path neighbour = UnusedNeighbour(target);
  try {
    WriteFileFor(neighbour, content, what, permissions);
    if (sync != nullptr) sync(neighbour);
    std::filesystem::rename(neighbour, target, error);
    if (error) throw FileError(error, what);
  } catch (...) {
    std::error_code ignored;
    std::filesystem::remove(neighbour, ignored);
    throw;
  }
}

void CreateFolder(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::create_directories(path, error);
  if (error) throw FileError(error, "cannot make the folder " + PathText(path));
}

namespace Common {

std::string HTTPFilename(const std::string& name) {
  // A fourth slash would make the folder's name the first part of a path that begins with "//",
  // which some browsers take for the name of a server.
  const char* const scheme = name.starts_with('/') ? "file://" : "file:///";
  return scheme + ReplaceAll(ReplaceAll(name, " ", "%20"), "\\", "/");
}

}  // namespace Common
}  // namespace skyhop
