#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

#include "platform/linux/file_descriptor.h"

namespace skyhop::platform {

/// Reads a process's output in the background, so that the process never blocks on a full pipe.
/// Keeps the last 4 kB.
class OutputTail {
 public:
  /// Reads `pipe` until all processes that can write into it have closed it.
  explicit OutputTail(FileDescriptor pipe);

  /// The end of the output. Waits up to a fifth of a second for the output to end.
  [[nodiscard]] std::string Text() const;

 private:
  struct State {
    std::mutex mutex;
    std::condition_variable closed;
    std::string text;
    bool ended = false;
  };

  // Shared, since the reading thread outlives this object when a grandchild keeps the pipe open.
  std::shared_ptr<State> state_;
};

}  // namespace skyhop::platform
