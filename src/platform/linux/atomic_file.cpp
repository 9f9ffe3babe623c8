#include "platform/linux/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "common/errors.h"
#include "common/files.h"
#include "platform/linux/file_descriptor.h"

namespace skyhop::platform {
namespace {

Error SystemError(const std::string& what) {
  return FileError(std::error_code(errno, std::generic_category()), what);
}

void WriteAll(int descriptor, std::string_view content, const std::string& what) {
  while (!content.empty()) {
    const ssize_t written = ::write(descriptor, content.data(), content.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      throw SystemError(what);
    }
    content.remove_prefix(static_cast<std::size_t>(written));
  }
}

/// Deletes the temporary file unless it has taken its final name.
class TemporaryName {
 public:
  explicit TemporaryName(std::string name) : name_(std::move(name)) {}
  ~TemporaryName() {
    if (!name_.empty()) ::unlink(name_.c_str());
  }
  TemporaryName(const TemporaryName&) = delete;
  TemporaryName& operator=(const TemporaryName&) = delete;

  [[nodiscard]] const char* Get() const { return name_.c_str(); }
  void Keep() { name_.clear(); }

 private:
  std::string name_;
};

}  // namespace

void ReplaceFile(const std::filesystem::path& path, std::string_view content, mode_t mode) {
  const std::string what = "cannot write " + PathText(path);
  std::error_code no_target;
  std::filesystem::path target = std::filesystem::canonical(path, no_target);
  if (no_target) {
    // No file yet, or a link whose target is still to be made.
    std::error_code no_link;
    const std::filesystem::path link = std::filesystem::read_symlink(path, no_link);
    target = no_link ? path : path.parent_path() / link;
  }

  std::string pattern = target.string() + ".XXXXXX";
  FileDescriptor file(::mkostemp(pattern.data(), O_CLOEXEC));
  if (!file.IsOpen()) throw SystemError(what);
  TemporaryName temporary(pattern);
  WriteAll(file.Get(), content, what);
  if (::fchmod(file.Get(), mode) != 0 || ::fsync(file.Get()) != 0) throw SystemError(what);
  file.Close();
  if (::rename(temporary.Get(), target.c_str()) != 0) throw SystemError(what);
  temporary.Keep();

  // The new name is safe only once the folder is written as well. Some file systems cannot do that
  // for folders, and the file is in place by now, so a failure here is none of the caller's.
  const FileDescriptor folder(
      ::open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.IsOpen()) (void)::fsync(folder.Get());
}

}  // namespace skyhop::platform
