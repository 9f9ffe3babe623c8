#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "common/errors.h"
#include "common/files.h"
#include "platform/linux/file_descriptor.h"
#include "platform/platform.h"

namespace skyhop::platform {
namespace {

// Child processes inherit none of these descriptors: an engine that outlives the program must not
// keep the program's locks.

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

/// The address for requests to show the window of the instance that holds `lock`. It is an abstract
/// socket name, so it needs no file. Each lock file has one.
class ShowAddress {
 public:
  explicit ShowAddress(const FileDescriptor& lock) {
    struct stat facts {};
    if (!lock.IsOpen() || ::fstat(lock.Get(), &facts) != 0) return;
    // The leading zero byte keeps the name out of the file system.
    const std::string name = std::string(1, '\0') + "skyhop-show-" + std::to_string(facts.st_dev) +
                             "-" + std::to_string(facts.st_ino);
    address_.sun_family = AF_UNIX;
    std::memcpy(address_.sun_path, name.data(), name.size());
    size_ = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
  }

  [[nodiscard]] bool IsKnown() const { return size_ > 0; }
  [[nodiscard]] const sockaddr* Get() const { return reinterpret_cast<const sockaddr*>(&address_); }
  [[nodiscard]] socklen_t Size() const { return size_; }

 private:
  sockaddr_un address_{};
  socklen_t size_ = 0;
};

FileDescriptor Socket() {
  return FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

class FileInstanceGuard : public InstanceGuard {
 public:
  explicit FileInstanceGuard(const std::filesystem::path& file)
      // A lock needs only read access, so this can lock another user's file too.
      : file_(::open(file.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0644)) {
    (void)TryLock();
  }

  [[nodiscard]] bool AnotherIsRunning() override { return !TryLock(); }

  void ShowOther() override {
    constexpr int longest = 2000;  // ms
    const ShowAddress address(file_);
    const FileDescriptor asking = Socket();
    if (!address.IsKnown() || !asking.IsOpen()) return;
    if (::connect(asking.Get(), address.Get(), address.Size()) != 0) return;
    pollfd answer{asking.Get(), POLLIN, 0};
    (void)::poll(&answer, 1, longest);
  }

  void AnswerShow(const std::function<void()>& show) override {
    if (!Listen()) return;
    for (;;) {
      // The answer is to close the connection.
      const FileDescriptor asking(
          ::accept4(requests_->Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
      if (!asking.IsOpen()) return;
      ucred peer{};
      socklen_t size = sizeof(peer);
      // Ignore other users: they do not see the desktop with the window.
      if (::getsockopt(asking.Get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
          peer.uid == ::getuid()) {
        show();
      }
    }
  }

 private:
  /// Whether requests can arrive. Tries to set this up only once.
  [[nodiscard]] bool Listen() {
    if (!requests_) {
      requests_ = Socket();
      const ShowAddress address(file_);
      if (!address.IsKnown() || ::bind(requests_->Get(), address.Get(), address.Size()) != 0 ||
          ::listen(requests_->Get(), SOMAXCONN) != 0) {
        requests_ = FileDescriptor(-1);
      }
    }
    return requests_->IsOpen();
  }

  /// False if another instance has the lock. True if this instance already has it.
  [[nodiscard]] bool TryLock() const {
    if (!file_.IsOpen()) return true;
    while (::flock(file_.Get(), LOCK_EX | LOCK_NB) != 0) {
      // A file system without locks cannot show another instance.
      if (errno != EINTR) return errno != EWOULDBLOCK;
    }
    return true;
  }

  FileDescriptor file_;
  std::optional<FileDescriptor> requests_;
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
  // Lock the folder itself: that needs no file, so a read-only folder works too.
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
