#include "platform/linux/posix_engine_launcher.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "common/errors.h"
#include "common/files.h"
#include "common/text.h"
#include "platform/linux/file_descriptor.h"
#include "platform/linux/output_tail.h"
#include "platform/linux/process_group.h"

// This glibc's header lacks the C linkage of its function.
extern "C" {
#include <sys/pidfd.h>
}

extern char** environ;

namespace skyhop::platform {
namespace {

constexpr int kStarted = 33;

/// The launcher keeps the output of this many ended processes: a caller that started several
/// engines asks for the first one's output only when the last one runs.
constexpr std::ptrdiff_t kEndedKept = 8;

/// The code of a LaunchResult for the system's `error`.
int LaunchCode(int error) {
  switch (error) {
    case ENOENT:
      return 2;
    case ENOTDIR:
      return 3;
    case EACCES:
    case EPERM:
      return 5;
    case ENOMEM:
      return 8;
    case EAGAIN:
    case EMFILE:
    case ENFILE:
      return 0;
    case ETXTBSY:
      return 26;
    case ENOEXEC:
      return 27;
    default:
      return 1;
  }
}

/// posix_spawn's two attribute objects.
class SpawnSettings {
 public:
  SpawnSettings() {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawnattr_init(&attributes_);
  }
  ~SpawnSettings() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  posix_spawn_file_actions_t* Actions() { return &actions_; }
  posix_spawnattr_t* Attributes() { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

bool IsPlain(char c) {
  return IsLetter(c) || IsDigit(c) ||
         std::string_view("/._-+,:@%").find(c) != std::string_view::npos;
}

}  // namespace

struct PosixEngineLauncher::Child {
  ProcessId process = 0;
  FileDescriptor
      handle;  ///< becomes readable when the process ends; closed if the system provides none
  std::optional<OutputTail> output;
  bool ended = false;
  bool reaped = false;

  /// Returns whether the process has ended, and remembers it. Does not reap the process: until it
  /// is reaped, the system gives the number of its group to no other process.
  bool Update() {
    if (ended) return true;
    siginfo_t status{};
    const auto id = static_cast<id_t>(process);
    const int failed = ::waitid(P_PID, id, &status, WEXITED | WNOHANG | WNOWAIT);
    if (failed == 0 && status.si_pid == 0) return false;
    ended = true;
    handle.Close();
    return true;
  }

  /// Releases a process that has ended.
  void Reap() {
    if (!Update() || reaped) return;
    (void)::waitpid(static_cast<pid_t>(process), nullptr, WNOHANG);
    reaped = true;
  }
};

PosixEngineLauncher::PosixEngineLauncher() = default;

PosixEngineLauncher::~PosixEngineLauncher() {
  for (Child& child : children_) child.Reap();
}

PosixEngineLauncher::Child* PosixEngineLauncher::Find(ProcessId process) {
  const auto found = std::find_if(children_.begin(), children_.end(),
                                  [&](const Child& child) { return child.process == process; });
  return found == children_.end() ? nullptr : &*found;
}

void PosixEngineLauncher::ForgetLongEnded() {
  std::ptrdiff_t ended = std::count_if(children_.begin(), children_.end(),
                                       [](Child& child) { return child.Update(); });
  for (auto child = children_.begin(); ended > kEndedKept;) {
    if (!child->ended) {
      ++child;
      continue;
    }
    child->Reap();
    child = children_.erase(child);
    --ended;
  }
}

LaunchResult PosixEngineLauncher::Spawn(const char* const* arguments,
                                        const std::filesystem::path& working_folder,
                                        Printing printing) {
  ForgetLongEnded();
  int ends[2] = {-1, -1};
  if (::pipe2(ends, O_CLOEXEC) != 0) return {LaunchCode(errno), 0};
  FileDescriptor reader(ends[0]);
  FileDescriptor writer(ends[1]);
  if (printing == Printing::kThrownAway) {
    writer = FileDescriptor(::open("/dev/null", O_WRONLY | O_CLOEXEC));
  }

  SpawnSettings settings;
  ::posix_spawn_file_actions_addopen(settings.Actions(), STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  ::posix_spawn_file_actions_adddup2(settings.Actions(), writer.Get(), STDOUT_FILENO);
  ::posix_spawn_file_actions_adddup2(settings.Actions(), writer.Get(), STDERR_FILENO);
  ::posix_spawn_file_actions_addchdir_np(settings.Actions(), working_folder.c_str());
  // A separate group, so that the engine can be ended together with the shell that started it.
  ::posix_spawnattr_setflags(settings.Attributes(), POSIX_SPAWN_SETPGROUP);
  ::posix_spawnattr_setpgroup(settings.Attributes(), 0);

  pid_t process = 0;
  const int error = ::posix_spawnp(&process, arguments[0], settings.Actions(),
                                   settings.Attributes(), const_cast<char**>(arguments), environ);
  if (error != 0) return {LaunchCode(error), 0};
  Child child{process, FileDescriptor(::pidfd_open(process, 0)), std::nullopt};
  if (printing == Printing::kKept) child.output.emplace(std::move(reader));
  // The system may reuse the number of an ended process.
  std::erase_if(children_, [&](const Child& known) { return known.process == process; });
  children_.push_back(std::move(child));
  return {kStarted, process};
}

LaunchResult PosixEngineLauncher::StartBatch(const std::filesystem::path& batch,
                                             const std::string& parameter,
                                             const std::filesystem::path& working_folder) {
  // The shell always starts, so check here for a missing batch file.
  if (::access(batch.c_str(), R_OK) != 0) return {LaunchCode(errno), 0};
  std::error_code ignored;
  if (!std::filesystem::is_directory(working_folder, ignored)) return {LaunchCode(ENOTDIR), 0};
  const char* const arguments[] = {"/bin/sh", batch.c_str(),
                                   parameter.empty() ? nullptr : parameter.c_str(), nullptr};
  return Spawn(arguments, working_folder, Printing::kKept);
}

LaunchResult PosixEngineLauncher::OpenInViewer(const std::string& viewer,
                                               const std::filesystem::path& file) {
  const char* const own[] = {viewer.c_str(), file.c_str(), nullptr};
  // A viewer may outlive this program, so discard its output: nothing would read the pipe.
  const LaunchResult result = Spawn(own, file.parent_path(), Printing::kThrownAway);
  if (result.Succeeded()) return result;
  const char* const desktop[] = {"xdg-open", file.c_str(), nullptr};
  return Spawn(desktop, file.parent_path(), Printing::kThrownAway);
}

bool PosixEngineLauncher::IsRunning(ProcessId process) {
  Child* child = Find(process);
  if (child == nullptr) return false;
  return !child->Update();
}

bool PosixEngineLauncher::WaitForEnd(ProcessId process, std::chrono::milliseconds longest) {
  const auto until = std::chrono::steady_clock::now() + longest;
  while (IsRunning(process)) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        until - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    const FileDescriptor& handle = Find(process)->handle;
    if (handle.IsOpen()) {
      pollfd ended{handle.Get(), POLLIN, 0};
      (void)::poll(&ended, 1, static_cast<int>(std::min<long long>(left.count() + 1, 60'000)));
    } else {
      std::this_thread::sleep_for(std::min(left, std::chrono::milliseconds(2)));
    }
  }
  return true;
}

void PosixEngineLauncher::EndWithThisProgram(ProcessId process) {
  EndGroupWithThisProgram(static_cast<pid_t>(process));
}

void PosixEngineLauncher::End(ProcessId process) {
  Child* child = Find(process);
  if (child == nullptr || child->reaped) return;
  EndGroup(static_cast<pid_t>(process));
  child->Reap();
}

std::string PosixEngineLauncher::Output(ProcessId process) {
  const Child* child = Find(process);
  return child == nullptr || !child->output ? std::string() : child->output->Text();
}

std::filesystem::path PosixEngineLauncher::ShortPath(const std::filesystem::path& path) {
  // Linux has no short names. BatchText quotes paths instead.
  return path;
}

std::string PosixEngineLauncher::BatchText(const std::filesystem::path& path) const {
  std::string text = path.string();
  if (text.find_first_of("\r\n") != std::string::npos) {
    throw Error(errors::kInvalidCall, "a batch file cannot hold a path with a line break: " + text);
  }
  if (!text.empty() && std::all_of(text.begin(), text.end(), IsPlain)) return text;
  // Between single quotes, only the single quote is special.
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

std::string PosixEngineLauncher::DriverText(const std::filesystem::path& path) const {
  // The engine reads one path per line and does not interpret quotes.
  std::string text = path.string();
  if (text.find_first_of("\r\n") != std::string::npos) {
    throw Error(errors::kInvalidCall,
                "the engine cannot be told a path with a line break: " + text);
  }
  return text;
}

}  // namespace skyhop::platform
