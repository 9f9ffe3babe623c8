#include "platform/windows/window_queue.h"

#include <utility>

#include "platform/windows/system_error.h"

namespace skyhop::platform {
namespace {

constexpr const wchar_t* kClass = L"SkyhopWindowQueue";
constexpr UINT kWorkWaits = WM_APP;

}  // namespace

WindowQueue::WindowQueue() {
  WNDCLASSEXW look{};
  look.cbSize = sizeof look;
  look.lpfnWndProc = OnMessage;
  look.hInstance = ::GetModuleHandleW(nullptr);
  look.lpszClassName = kClass;
  ::RegisterClassExW(&look);  // fails if another queue has registered it
  entry_->window_ = ::CreateWindowExW(0, kClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      look.hInstance, nullptr);
  if (entry_->window_ == nullptr) throw LastSystemError("cannot create a message window");
  ::SetWindowLongPtrW(entry_->window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&entry_));
}

WindowQueue::~WindowQueue() {
  HWND window = nullptr;
  std::deque<Work> undone;
  {
    const std::lock_guard lock(entry_->mutex_);
    window = std::exchange(entry_->window_, nullptr);
    undone.swap(entry_->waiting_);
  }
  ::DestroyWindow(window);
}

void WindowQueue::Entry::Post(Work work) {
  const std::lock_guard lock(mutex_);
  if (window_ == nullptr) return;
  waiting_.push_back(std::move(work));
  if (waiting_.size() == 1) ::PostMessageW(window_, kWorkWaits, 0, 0);
}

LRESULT CALLBACK WindowQueue::OnMessage(HWND window, UINT message, WPARAM word, LPARAM more) {
  if (message != kWorkWaits) return ::DefWindowProcW(window, message, word, more);
  if (const LONG_PTR entry = ::GetWindowLongPtrW(window, GWLP_USERDATA)) {
    // A copy, since the work may end the queue.
    DoSome(std::shared_ptr(*reinterpret_cast<std::shared_ptr<Entry>*>(entry)));
  }
  return 0;
}

/// Does one piece of work and posts a message for the rest. Other events are handled between two
/// pieces, and work that shows a message box does not block the work behind it.
void WindowQueue::DoSome(const std::shared_ptr<Entry>& entry) {
  Work work;
  {
    const std::lock_guard lock(entry->mutex_);
    if (entry->waiting_.empty()) return;
    work = std::move(entry->waiting_.front());
    entry->waiting_.pop_front();
    if (!entry->waiting_.empty()) ::PostMessageW(entry->window_, kWorkWaits, 0, 0);
  }
  work();
}

}  // namespace skyhop::platform
