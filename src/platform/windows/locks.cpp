#include <windows.h>

#include <iterator>
#include <utility>

#include "common/files.h"
#include "platform/platform.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_error.h"

namespace skyhop::platform {
namespace {

// A lock is a named object of the system that exists as long as somebody has it open, and the
// system closes what a program that ends, in whatever way, leaves open. Child processes do not
// inherit it.

/// How long a start waits until the instance that runs has brought its window up.
constexpr std::chrono::milliseconds kLongestShow{2000};

/// A name that a folder has for everybody, however its path is spelled.
/// Throws the Errors of FileError when the folder cannot be opened.
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

/// The object of this name, closed when somebody else has it.
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
      // Set while a start waits for the window of the instance that runs.
      show_ = Handle(::CreateEventW(nullptr, TRUE, FALSE, (name_ + L"-show").c_str()));
    } catch (const Error&) {
      // A folder that cannot be opened cannot tell; the program says what is wrong with it later.
    }
  }

  [[nodiscard]] bool AnotherIsRunning() override {
    if (name_.empty() || object_.IsOpen()) return false;
    object_ = Take(name_);
    return !object_.IsOpen();
  }

  void ShowOther() override {
    if (!show_.IsOpen()) return;
    // The system lets only the program that the user works with bring up windows.
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
