#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace skyhop::platform {

/// Work that other threads, and callbacks in which nothing must wait, leave to the thread that made
/// this object: it is done in order, out of that thread's message loop.
class WindowQueue {
 public:
  using Work = std::function<void()>;

  WindowQueue();
  /// What has not been done by now never is.
  ~WindowQueue();
  WindowQueue(const WindowQueue&) = delete;
  WindowQueue& operator=(const WindowQueue&) = delete;

  /// Where to leave work. May outlive the queue, and is used by any thread.
  class Entry {
   public:
    void Post(Work work);

   private:
    friend class WindowQueue;
    std::mutex mutex_;
    std::deque<Work> waiting_;
    HWND window_ = nullptr;  ///< null once the queue has gone
  };
  [[nodiscard]] const std::shared_ptr<Entry>& GetEntry() const { return entry_; }

 private:
  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM word, LPARAM entry);
  static void DoSome(const std::shared_ptr<Entry>& entry);

  std::shared_ptr<Entry> entry_ = std::make_shared<Entry>();
};

}  // namespace skyhop::platform
