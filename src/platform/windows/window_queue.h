#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace skyhop::platform {

/// A queue of work for the thread that created this object. Other threads, and callbacks that must
/// not wait, add work; the thread does it in order from its message loop.
class WindowQueue {
 public:
  using Work = std::function<void()>;

  WindowQueue();
  /// Drops the work that is not done yet.
  ~WindowQueue();
  WindowQueue(const WindowQueue&) = delete;
  WindowQueue& operator=(const WindowQueue&) = delete;

  /// Accepts work from any thread. May outlive the queue.
  class Entry {
   public:
    void Post(Work work);

   private:
    friend class WindowQueue;
    std::mutex mutex_;
    std::deque<Work> waiting_;
    HWND window_ = nullptr;  ///< null after the queue's end
  };
  [[nodiscard]] const std::shared_ptr<Entry>& GetEntry() const { return entry_; }

 private:
  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM word, LPARAM entry);
  static void DoSome(const std::shared_ptr<Entry>& entry);

  std::shared_ptr<Entry> entry_ = std::make_shared<Entry>();
};

}  // namespace skyhop::platform
