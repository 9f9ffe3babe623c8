#pragma once

#include <windows.h>

#include <ddeml.h>

#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/windows/handle.h"

namespace skyhop::platform {

/// A conversation with a topic of another application, on its own thread: opening a conversation
/// asks every window of the desktop, and a single hanging window blocks the thread that asks. Only
/// WaitForOpening, Ask and WaitForEnd block the caller.
class DdeTalk {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// Callbacks. They run on the conversation's own thread until End is called.
  struct Events {
    std::function<void(const std::string& item, const std::string& value)> changed;
    std::function<void()> closed;
  };

  enum class Opening { kUnknown, kOpen, kNobody };

  /// A request for an item's value, and its answer.
  struct Question {
    std::string item;
    Handle answered{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::optional<std::string> value;  ///< valid once `answered` is set
    std::atomic<bool> forgotten = false;
  };

  /// Starts to open a conversation in the background.
  [[nodiscard]] static std::shared_ptr<DdeTalk> Begin(std::string application, std::string topic);
  DdeTalk(const DdeTalk&) = delete;
  DdeTalk& operator=(const DdeTalk&) = delete;

  /// Waits for the opening, at most until a time. Returns kUnknown if the conversation is neither
  /// open nor refused by then.
  [[nodiscard]] Opening WaitForOpening(Time until);
  /// Sets the receiver of events. Returns false if the conversation has already ended.
  [[nodiscard]] bool Tell(Events events);
  /// Whether it is still being opened.
  [[nodiscard]] bool IsOpening() const { return opening_ == Opening::kUnknown; }

  /// Sends a command; `bytes` are without the zero at the end. Commands are sent one after another.
  void Execute(std::string bytes);
  void Advise(std::string item);
  /// Requests an item's value and waits at most until a time. Returns null if no answer arrives by
  /// then, else the question with its value.
  [[nodiscard]] std::shared_ptr<Question> Ask(const std::string& item, Time until);

  /// Ends the conversation after all pending commands and requests.
  void End();
  /// Waits until the conversation has ended, at most until a time.
  void WaitForEnd(Time until);

 private:
  using Work = std::function<void()>;

  DdeTalk(std::string application, std::string topic);

  static DWORD WINAPI OnThread(void* own_pointer);
  static HDDEDATA CALLBACK OnEvent(UINT type, UINT format, HCONV conversation, HSZ topic, HSZ item,
                                   HDDEDATA data, ULONG_PTR, ULONG_PTR);
  /// The result of a transaction.
  enum class Answer { kDone, kRefused, kBusy, kNone };

  void Run();
  [[nodiscard]] bool Open();
  void Converse();
  void AwaitWork();
  void AwaitMessages(HANDLE also, std::chrono::milliseconds longest);
  [[nodiscard]] bool PeerGone() const;
  /// Sends `block`, or requests `item` if it is not null. Stores the answer in `value` if that is
  /// not null.
  [[nodiscard]] Answer Transact(UINT type, const std::string* item, const std::string& block,
                                std::string* value, std::chrono::milliseconds longest);
  [[nodiscard]] std::optional<Work> NextWork();
  void Leave(Work work);
  void SendCommand(const std::string& bytes);
  void BeginAdvise(const std::string& item);
  [[nodiscard]] std::optional<std::string> RequestValue(const std::string& item,
                                                        std::chrono::milliseconds longest);
  void TellChange(const std::string& item, HDDEDATA data);
  void LoseLink() { lost_ = true; }

  const std::string application_;
  const std::string topic_;
  const unsigned code_page_;
  Handle opened_{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  Handle sent_{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  Handle work_waits_{::CreateEventW(nullptr, FALSE, FALSE, nullptr)};
  std::atomic<Opening> opening_ = Opening::kUnknown;

  std::mutex mutex_;
  Events events_;
  std::deque<Work> work_;
  bool ending_ = false;
  bool ended_ = false;

  // Used by the conversation's own thread only.
  DWORD instance_ = 0;
  HCONV conversation_ = nullptr;
  HWND peer_window_ = nullptr;
  Handle peer_;  ///< the other program
  std::vector<std::string> advised_;
  bool lost_ = false;
};

}  // namespace skyhop::platform
