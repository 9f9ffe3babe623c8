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

/// A conversation with a topic of another application, on a thread of its own: opening one asks
/// every window of the desktop, and a single one that hangs holds up whoever asks. Nothing here but
/// the waits named so takes time.
class DdeTalk {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// Called on the conversation's own thread, until the talk has been told to end.
  struct Events {
    std::function<void(const std::string& item, const std::string& value)> changed;
    std::function<void()> closed;
  };

  enum class Opening { kUnknown, kOpen, kNobody };

  /// A question and what becomes of it.
  struct Question {
    std::string item;
    Handle answered{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::optional<std::string> value;  ///< to be read once answered
    std::atomic<bool> forgotten = false;
  };

  /// Starts to open a conversation.
  [[nodiscard]] static std::shared_ptr<DdeTalk> Begin(std::string application, std::string topic);
  DdeTalk(const DdeTalk&) = delete;
  DdeTalk& operator=(const DdeTalk&) = delete;

  /// Waits at most until a time. kUnknown when the conversation is neither open nor refused then.
  [[nodiscard]] Opening WaitForOpening(Time until);
  /// Who is told from now on. Returns false when the conversation has ended before.
  [[nodiscard]] bool Tell(Events events);
  /// Whether it is still being opened.
  [[nodiscard]] bool IsOpening() const { return opening_ == Opening::kUnknown; }

  /// Sends bytes without their zero at the end. Commands go out one after the other.
  void Execute(std::string bytes);
  void Advise(std::string item);
  /// Asks and waits at most until a time. Returns null when there is no answer by then, else the
  /// question with its value.
  [[nodiscard]] std::shared_ptr<Question> Ask(const std::string& item, Time until);

  /// Ends the conversation once all that was sent has arrived.
  void End();
  /// Waits until that has happened, at most until a time.
  void WaitForEnd(Time until);

 private:
  using Work = std::function<void()>;

  DdeTalk(std::string application, std::string topic);

  static DWORD WINAPI OnThread(void* own_pointer);
  static HDDEDATA CALLBACK OnEvent(UINT type, UINT format, HCONV conversation, HSZ topic, HSZ item,
                                   HDDEDATA data, ULONG_PTR, ULONG_PTR);
  /// How a transaction ended.
  enum class Answer { kDone, kRefused, kBusy, kNone };

  void Run();
  [[nodiscard]] bool Open();
  void Converse();
  void AwaitWork();
  void AwaitMessages(HANDLE also, std::chrono::milliseconds longest);
  [[nodiscard]] bool PeerGone() const;
  /// Sends `block`, or asks about `item` when there is one; `value`, if any, gets what came back.
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

  // The thread's own.
  DWORD instance_ = 0;
  HCONV conversation_ = nullptr;
  HWND peer_window_ = nullptr;
  Handle peer_;  ///< the other program
  std::vector<std::string> advised_;
  bool lost_ = false;
};

}  // namespace skyhop::platform
