#include "platform/linux/output_tail.h"

#include <array>
#include <cerrno>
#include <thread>

namespace skyhop::platform {
namespace {

constexpr std::size_t kKept = 4096;
constexpr std::chrono::milliseconds kLongestWait{200};

}  // namespace

OutputTail::OutputTail(FileDescriptor pipe) : state_(std::make_shared<State>()) {
  std::thread([state = state_, source = std::move(pipe)] {
    std::array<char, kKept> buffer{};
    for (;;) {
      const ssize_t count = ::read(source.Get(), buffer.data(), buffer.size());
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) break;
      const std::lock_guard lock(state->mutex);
      state->text.append(buffer.data(), static_cast<std::size_t>(count));
      if (state->text.size() > kKept) state->text.erase(0, state->text.size() - kKept);
    }
    const std::lock_guard lock(state->mutex);
    state->ended = true;
    state->closed.notify_all();
  }).detach();
}

std::string OutputTail::Text() const {
  std::unique_lock lock(state_->mutex);
  state_->closed.wait_for(lock, kLongestWait, [this] { return state_->ended; });
  return state_->text;
}

}  // namespace skyhop::platform
