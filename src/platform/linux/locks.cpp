#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <thread>
#include <utility>

#include "common/errors.h"
#include "common/files.h"
#include "platform/linux/file_descriptor.h"
#include "platform/platform.h"

namespace skyhop::platform {
namespace {

// All descriptors here are closed in child processes: an engine that outlives the program must not
// go on holding the program's locks.

class FileRunLock : public RunLock {
 public:
  explicit FileRunLock(FileDescriptor file) : file_(std::move(file)) {}

 private:
  FileDescriptor file_;
};

class FolderRunLocker : public RunLocker {
 public:
  explicit FolderRunLocker(std::filesystem::path folder) : folder_(std::move(folder)) {}
  [[nodiscard]] std::unique_ptr<RunLock> Lock() override {
    return LockRuns(folder_, std::chrono::milliseconds(0));
  }

 private:
  std::filesystem::path folder_;
};

class FileInstanceGuard : public InstanceGuard {
 public:
  explicit FileInstanceGuard(const std::filesystem::path& file)
      // A lock needs no right to write, so that a file of another user's can be locked too.
      : file_(::open(file.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0644)) {
    (void)TryLock();
  }

  [[nodiscard]] bool AnotherIsRunning() override { return !TryLock(); }

 private:
  /// False when another instance has the lock. Locking what is locked already succeeds.
  [[nodiscard]] bool TryLock() const {
    if (!file_.IsOpen()) return true;
    while (::flock(file_.Get(), LOCK_EX | LOCK_NB) != 0) {
      // File systems without locks cannot tell.
      if (errno != EINTR) return errno != EWOULDBLOCK;
    }
    return true;
  }

  FileDescriptor file_;
};

}  // namespace

std::unique_ptr<RunLock> LockRuns(const std::filesystem::path& program_folder,
                                  std::chrono::milliseconds longest) {
  const auto until = std::chrono::steady_clock::now() + longest;
  FileDescriptor folder(::open(program_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.IsOpen()) {
    throw FileError(std::error_code(errno, std::generic_category()),
                    "cannot open " + PathText(program_folder));
  }
  // The folder itself carries the lock: it needs no file, so a read-only folder can be locked too.
  while (::flock(folder.Get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) break;
    if (std::chrono::steady_clock::now() >= until) return nullptr;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return std::make_unique<FileRunLock>(std::move(folder));
}

std::unique_ptr<RunLocker> MakeRunLocker(const std::filesystem::path& program_folder) {
  return std::make_unique<FolderRunLocker>(program_folder);
}

std::unique_ptr<InstanceGuard> MakeInstanceGuard(const std::filesystem::path& program_folder) {
  return std::make_unique<FileInstanceGuard>(program_folder / "skyhop.lock");
}

}  // namespace skyhop::platform
