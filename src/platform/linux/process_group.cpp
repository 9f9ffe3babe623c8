#include "platform/linux/process_group.h"

#include <poll.h>
#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include "common/text.h"

namespace skyhop::platform {
namespace {

constexpr std::chrono::milliseconds kTimeToEnd{500};

/// The process group that ends with this program, 0 for none. It is global because a signal handler
/// can use nothing else.
volatile sig_atomic_t interrupted_group = 0;

/// Calls only functions that a signal handler may call. Reaps the shell, which would otherwise
/// still count as a member of its group.
extern "C" void EndGroupAndSelf(int signal) {
  static constexpr int kStep = 10;  // ms
  const auto group = static_cast<pid_t>(interrupted_group);
  if (group > 0) {
    ::kill(-group, SIGTERM);
    for (int waited = 0; waited < kTimeToEnd.count(); waited += kStep) {
      (void)::waitpid(group, nullptr, WNOHANG);
      if (::kill(-group, 0) != 0) break;
      (void)::poll(nullptr, 0, kStep);
    }
    ::kill(-group, SIGKILL);
  }
  ::raise(signal);
}

/// Whether a line of /proc/PID/stat describes a running process of `group`. The program's name, in
/// parentheses before state and group, may hold any character.
bool RunsInGroup(const std::string& line, pid_t group) {
  const std::size_t name_end = line.rfind(')');
  if (name_end == std::string::npos) return false;
  std::istringstream fields(line.substr(name_end + 1));
  char state = 0;
  pid_t parent = 0;
  pid_t member_of = 0;
  fields >> state >> parent >> member_of;
  return fields && member_of == group && state != 'Z' && state != 'X';
}

/// Whether a process of the group runs. kill() alone cannot show that: it also counts ended
/// processes that their parents have not reaped.
bool GroupRuns(pid_t group) {
  if (::kill(-group, 0) != 0 && errno == ESRCH) return false;
  std::error_code error;
  for (std::filesystem::directory_iterator entry("/proc", error), end; !error && entry != end;
       entry.increment(error)) {
    if (!IsDigit(entry->path().filename().native().front())) continue;
    std::ifstream file(entry->path() / "stat");
    std::string line;
    std::getline(file, line);
    if (RunsInGroup(line, group)) return true;
  }
  return static_cast<bool>(error);
}

void WaitForGroup(pid_t group, std::chrono::milliseconds longest) {
  const auto until = std::chrono::steady_clock::now() + longest;
  while (GroupRuns(group) && std::chrono::steady_clock::now() < until) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

}  // namespace

void EndGroup(pid_t group) {
  // The shell ends at once even if its engine does not, so check the whole group.
  for (const int signal : {SIGTERM, SIGKILL}) {
    if (!GroupRuns(group)) break;
    ::kill(-group, signal);
    WaitForGroup(group, kTimeToEnd);
  }
}

void EndGroupWithThisProgram(pid_t group) {
  interrupted_group = static_cast<sig_atomic_t>(group);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action {};
    // Keep ignoring a signal that is ignored, as in a background job.
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = EndGroupAndSelf;
    // EndGroupAndSelf raises the signal again, for its default action. This second signal waits for
    // the end of the handler, and so do further signals of the user: the engine must have ended by
    // then.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int held : {SIGINT, SIGTERM, SIGHUP}) ::sigaddset(&action.sa_mask, held);
    ::sigaction(signal, &action, nullptr);
  }
}

}  // namespace skyhop::platform
