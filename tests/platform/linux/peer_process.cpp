#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <utility>

#include "peer_process.h"

extern char** environ;

namespace skyhop::testing {

struct PeerProcess::State {
  pid_t process = 0;
  int input = -1;
  int output = -1;
  std::string unread;  ///< the output that arrived during a write
};

PeerProcess::PeerProcess(const std::string& program, const std::string& argument)
    : state_(std::make_unique<State>()) {
  std::array<int, 2> to{};
  std::array<int, 2> from{};
  if (::pipe2(to.data(), O_CLOEXEC) != 0 || ::pipe2(from.data(), O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, to[0], STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, from[1], STDOUT_FILENO);
  std::string path = program;
  std::string name = argument;
  std::array<char*, 3> arguments = {path.data(), name.data(), nullptr};
  const int error =
      ::posix_spawn(&state_->process, path.c_str(), &actions, nullptr, arguments.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  ::close(to[0]);
  ::close(from[1]);
  state_->input = to[1];
  ::fcntl(state_->input, F_SETFL, O_NONBLOCK);
  state_->output = from[0];
  if (error != 0) throw std::runtime_error("cannot start " + program);
}

PeerProcess::~PeerProcess() {
  ::kill(state_->process, SIGKILL);
  ::waitpid(state_->process, nullptr, 0);
  ::close(state_->input);
  ::close(state_->output);
}

void PeerProcess::Write(const std::string& text) {
  for (std::size_t written = 0; written < text.size();) {
    const ssize_t size = ::write(state_->input, text.data() + written, text.size() - written);
    if (size >= 0) {
      written += static_cast<std::size_t>(size);
    } else if (errno == EAGAIN) {
      // A program that waits for a reader of its output reads no input.
      state_->unread += Read(1);
    } else {
      throw std::runtime_error("the peer has ended");
    }
  }
}

std::string PeerProcess::Read(int longest_ms) {
  std::string text = std::exchange(state_->unread, {});
  if (!text.empty()) longest_ms = 0;
  pollfd ready{state_->output, POLLIN, 0};
  while (::poll(&ready, 1, longest_ms) > 0) {
    std::array<char, 65536> block{};
    const ssize_t size = ::read(state_->output, block.data(), block.size());
    if (size <= 0) break;
    text.append(block.data(), static_cast<std::size_t>(size));
    longest_ms = 0;
  }
  return text;
}

void PeerProcess::Suspend() {
  ::kill(state_->process, SIGSTOP);
  ::waitpid(state_->process, nullptr, WUNTRACED);
}

void PeerProcess::Resume() {
  ::kill(state_->process, SIGCONT);
}

}  // namespace skyhop::testing
