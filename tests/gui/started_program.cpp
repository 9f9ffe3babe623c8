#include "started_program.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <sstream>
#include <system_error>

#include "support/program_run.h"

namespace skyhop::testing {

StartedProgram::StartedProgram(const std::filesystem::path& program) {
  std::string path = program.string();
  char* const arguments[] = {path.data(), nullptr};
  const int error = ::posix_spawn(&process_, path.c_str(), nullptr, nullptr, arguments, ::environ);
  if (error != 0) throw std::system_error(error, std::generic_category(), path);
}

StartedProgram::~StartedProgram() {
  if (Ended()) return;
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
}

bool StartedProgram::Ended() {
  int status = 0;
  if (!ended_ && ::waitpid(process_, &status, WNOHANG) == process_) {
    ended_ = true;
    if (WIFEXITED(status)) status_ = WEXITSTATUS(status);
  }
  return ended_;
}

void StartedProgram::Send(int signal) const {
  ::kill(process_, signal);
}

std::vector<std::string> StartedProgram::Find(const std::string& title) const {
  const ProgramResult found = RunProgram(
      "xdotool",
      {"search", "--all", "--onlyvisible", "--pid", std::to_string(process_), "--name", title}, {});
  std::istringstream lines(found.out);
  std::vector<std::string> windows;
  for (std::string line; std::getline(lines, line);) windows.push_back(line);
  return windows;
}

void StartedProgram::Minimise() const {
  const std::vector<std::string> windows = Find(".");
  if (!windows.empty()) (void)RunProgram("xdotool", {"windowminimize", windows.back()}, {});
}

void StartedProgram::PressKey(const std::string& key) const {
  const std::vector<std::string> windows = Find(".");
  if (windows.empty()) return;
  (void)RunProgram("xdotool", {"windowfocus", windows.back(), "key", key}, {});
}

}  // namespace skyhop::testing
