#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

#include "platform/linux/file_descriptor.h"

namespace skyhop::platform {

/// Reads what a process prints in the background, so that it never waits for a reader, and keeps
/// the last 4 kB.
class OutputTail {
 public:
  /// Reads `pipe` until all who can write into it have closed it.
  explicit OutputTail(FileDescriptor pipe);

  /// What was printed last. Waits a moment for the end of the output.
  [[nodiscard]] std::string Text() const;

 private:
  struct State {
    std::mutex mutex;
    std::condition_variable closed;
    std::string text;
    bool ended = false;
  };

  // The reading thread may outlive this object when a grandchild keeps the pipe open.
  std::shared_ptr<State> state_;
};

}  // namespace skyhop::platform
