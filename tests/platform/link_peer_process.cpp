#include "link_peer_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>

#include "link_words.h"
#include "platform/linux/dbus_links.h"

extern char** environ;

namespace skyhop::testing {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

LinkPeerProcess::LinkPeerProcess(const std::string& application) {
  std::array<int, 2> to{};
  std::array<int, 2> from{};
  if (::pipe2(to.data(), O_CLOEXEC) != 0 || ::pipe2(from.data(), O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, to[0], STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, from[1], STDOUT_FILENO);
  std::string program = SKYHOP_LINK_PEER;
  std::string name = application;
  std::array<char*, 3> arguments = {program.data(), name.data(), nullptr};
  const int error =
      ::posix_spawn(&process_, program.c_str(), &actions, nullptr, arguments.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  ::close(to[0]);
  ::close(from[1]);
  input_ = to[1];
  ::fcntl(input_, F_SETFL, O_NONBLOCK);
  output_ = from[0];
  if (error != 0) throw std::runtime_error("cannot start " + program);
}

LinkPeerProcess::~LinkPeerProcess() {
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
  ::close(input_);
  ::close(output_);
}

void LinkPeerProcess::Order(const std::vector<std::string>& words) {
  const std::string line = Line(words);
  for (std::size_t written = 0; written < line.size();) {
    // A peer that waits until it can tell something takes no orders.
    Read(0);
    const ssize_t size = ::write(input_, line.data() + written, line.size() - written);
    if (size >= 0) {
      written += static_cast<std::size_t>(size);
    } else if (errno == EAGAIN) {
      std::this_thread::sleep_for(milliseconds(1));
    } else {
      throw std::runtime_error("the peer has ended");
    }
  }
  const auto end = steady_clock::now() + std::chrono::seconds(10);
  for (const int before = done_; done_ == before;) {
    Read(100);
    if (steady_clock::now() > end) throw std::runtime_error("the peer does not obey");
  }
}

void LinkPeerProcess::Read(int longest_ms) {
  pollfd ready{output_, POLLIN, 0};
  while (::poll(&ready, 1, longest_ms) > 0) {
    std::array<char, 65536> block{};
    const ssize_t size = ::read(output_, block.data(), block.size());
    if (size <= 0) return;
    unread_.append(block.data(), static_cast<std::size_t>(size));
    longest_ms = 0;
  }
  for (std::size_t end = unread_.find('\n'); end != std::string::npos; end = unread_.find('\n')) {
    const std::vector<std::string> words = Words(unread_.substr(0, end));
    unread_.erase(0, end + 1);
    if (words.at(0) == "done") ++done_;
    if (words.at(0) == "taken") ++taken_;
    if (words.at(0) == "executed") executed_.push_back(words.at(1));
    if (words.at(0) == "value") values_.push_back(words.at(1));
  }
}

void LinkPeerProcess::Serve(const std::string& topic,
                            const std::map<std::string, std::string>& items) {
  std::vector<std::string> words = {"serve", topic};
  for (const auto& [item, value] : items) words.insert(words.end(), {item, value});
  Order(words);
}

void LinkPeerProcess::Publish(const std::string& topic, const std::string& item,
                              const std::string& value) {
  Order({"publish", topic, item, value});
}

void LinkPeerProcess::Execute(const std::string& application, const std::string& topic,
                              const std::string& command) {
  Order({"execute", application, topic, command});
}

void LinkPeerProcess::Request(const std::string& application, const std::string& topic,
                              const std::string& item) {
  Order({"request", application, topic, item});
}

void LinkPeerProcess::Hang() {
  ::kill(process_, SIGSTOP);
  ::waitpid(process_, nullptr, WUNTRACED);
}

void LinkPeerProcess::Continue() {
  ::kill(process_, SIGCONT);
}

std::vector<std::string> LinkPeerProcess::Executed() {
  Read(0);
  return executed_;
}

std::vector<std::string> LinkPeerProcess::Values() {
  Read(0);
  return values_;
}

void LinkPeerProcess::Flood(const std::string& application, const std::string& topic,
                            const std::string& command, int times) {
  taken_ = 0;
  Order({"flood", application, topic, command, std::to_string(times)});
}

void LinkPeerProcess::SendGarbage(const std::string& application, const std::string& topic) {
  taken_ = 0;
  Order({"garbage", application, topic});
}

bool LinkPeerProcess::AllTaken() {
  Read(0);
  return taken_ > 0;
}

BusWorld::BusWorld() : bus_(g_test_dbus_new(G_TEST_DBUS_NONE)) {
  g_test_dbus_up(bus_);
}

BusWorld::~BusWorld() {
  Down();
}

void BusWorld::Down() {
  if (bus_ == nullptr) return;
  g_test_dbus_down(bus_);
  g_clear_object(&bus_);
}

std::unique_ptr<LinkTransport> BusWorld::MakeTransport(const std::string& name) {
  return std::make_unique<platform::DBusLinks>(name);
}

std::unique_ptr<LinkPeer> BusWorld::StartPeer(const std::string& name) {
  return std::make_unique<LinkPeerProcess>(name);
}

bool BusWorld::RunUntil(const std::function<bool()>& done) {
  const auto end = steady_clock::now() + std::chrono::seconds(20);
  while (!done()) {
    if (steady_clock::now() > end) return false;
    if (g_main_context_iteration(nullptr, FALSE) == 0) {
      std::this_thread::sleep_for(milliseconds(1));
    }
  }
  return true;
}

void BusWorld::RunShortly() {
  const auto end = steady_clock::now() + milliseconds(200);
  RunUntil([&] { return steady_clock::now() > end; });
}

}  // namespace skyhop::testing
