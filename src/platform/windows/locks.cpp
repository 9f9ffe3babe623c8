#include <windows.h>

#include <iterator>
#include <utility>

#include "common/files.h"
#include "platform/platform.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_error.h"

namespace skyhop::platform {
namespace {

// A lock is a named system object that exists while a program has it open. The system closes the
// objects of a program that ends, even after a crash. Child processes do not inherit it.

/// The longest time that a second start waits for the running instance to show its window.
constexpr std::chrono::milliseconds kLongestShow{2000};

/// A name for a folder, the same for all users and for every spelling of its path. Throws the
/// Errors of FileError when the folder cannot be opened.
std::wstring LockName(const wchar_t* kind, const std::filesystem::path& folder) {
  const std::string what = "cannot open " + PathText(folder);
  const Handle opened(::CreateFileW(folder.c_str(), FILE_READ_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION facts{};
  if (!opened.IsOpen() || !::GetFileInformationByHandle(opened.Get(), &facts)) {
    throw LastSystemError(what);
  }
  if ((facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
    throw SystemError(ERROR_DIRECTORY, what);
  }
  wchar_t name[100] = {};
  std::swprintf(name, std::size(name), L"Global\\Skyhop-%ls-%08lx-%08lx%08lx", kind,
                facts.dwVolumeSerialNumber, facts.nFileIndexHigh, facts.nFileIndexLow);
  return name;
}

/// The object with this name; closed if another holder has it.
Handle Take(const std::wstring& name) {
  Handle lock(::CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
  if (::GetLastError() == ERROR_ALREADY_EXISTS) lock.Close();
  return lock;
}

class ObjectRunLock : public RunLock {
 public:
  explicit ObjectRunLock(Handle object) : object_(std::move(object)) {}

 private:
  Handle object_;
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

class ObjectInstanceGuard : public InstanceGuard {
 public:
  explicit ObjectInstanceGuard(const std::filesystem::path& folder) {
    try {
      name_ = LockName(L"program", folder);
      object_ = Take(name_);
      // Set while a second start waits for the running instance's window.
      show_ = Handle(::CreateEventW(nullptr, TRUE, FALSE, (name_ + L"-show").c_str()));
    } catch (const Error&) {
      // A folder that cannot be opened cannot show another instance. The program reports its error
      // later.
    }
  }

  [[nodiscard]] bool AnotherIsRunning() override {
    if (name_.empty() || object_.IsOpen()) return false;
    object_ = Take(name_);
    return !object_.IsOpen();
  }

  void ShowOther() override {
    if (!show_.IsOpen()) return;
    // The system allows only the active program to bring up windows, so pass this right on.
    ::AllowSetForegroundWindow(ASFW_ANY);
    ::SetEvent(show_.Get());
    const auto until = std::chrono::steady_clock::now() + kLongestShow;
    while (IsAsked() && std::chrono::steady_clock::now() < until) ::Sleep(10);
    ::ResetEvent(show_.Get());
  }

  void AnswerShow(const std::function<void()>& show) override {
    if (!show_.IsOpen() || !IsAsked()) return;
    show();
    ::ResetEvent(show_.Get());
  }

 private:
  [[nodiscard]] bool IsAsked() const {
    return ::WaitForSingleObject(show_.Get(), 0) == WAIT_OBJECT_0;
  }

  std::wstring name_;
  Handle object_;
  Handle show_;
};

}  // namespace

std::unique_ptr<RunLock> LockRuns(const std::filesystem::path& program_folder,
                                  std::chrono::milliseconds longest) {
  const auto until = std::chrono::steady_clock::now() + longest;
  const std::wstring name = LockName(L"run", program_folder);
  Handle lock = Take(name);
  while (!lock.IsOpen()) {
    if (std::chrono::steady_clock::now() >= until) return nullptr;
    ::Sleep(5);
    lock = Take(name);
  }
  return std::make_unique<ObjectRunLock>(std::move(lock));
}

std::unique_ptr<RunLocker> MakeRunLocker(const std::filesystem::path& program_folder) {
  return std::make_unique<FolderRunLocker>(program_folder);
}

std::unique_ptr<InstanceGuard> MakeInstanceGuard(const std::filesystem::path& program_folder) {
  return std::make_unique<ObjectInstanceGuard>(program_folder);
}

}  // namespace skyhop::platform
