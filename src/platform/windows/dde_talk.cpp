#include "platform/windows/dde_talk.h"

#include <algorithm>
#include <utility>

#include "common/text.h"
#include "interop/link_transport.h"
#include "platform/windows/code_page.h"
#include "platform/windows/dde_memory.h"
#include "platform/windows/dde_text.h"
#include "platform/windows/system_error.h"

namespace skyhop::platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

void DispatchMessages() {
  MSG message{};
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
}

/// Waits for a system object, at most until a time. Meanwhile this thread's windows answer only
/// messages that other programs send, since the program at the other end may have to ask them.
/// Returns whether the object was set.
[[nodiscard]] bool WaitPatiently(HANDLE object, steady_clock::time_point until) {
  while (true) {
    const auto left = std::chrono::ceil<milliseconds>(until - steady_clock::now());
    const auto longest = static_cast<DWORD>(std::max<long long>(left.count(), 0));
    if (::MsgWaitForMultipleObjects(1, &object, FALSE, longest, QS_SENDMESSAGE) !=
        WAIT_OBJECT_0 + 1) {
      return ::WaitForSingleObject(object, 0) == WAIT_OBJECT_0;
    }
    MSG message{};
    ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  }
}

/// The talk of this thread. DDE does not pass it to the callback.
thread_local DdeTalk* own_talk = nullptr;

/// Wakes this thread regularly. On some systems, while DDE waits for a peer, a thread answers the
/// messages of other programs only when a message wakes it. A program that looks for a partner asks
/// every window, so it would hang.
class Heartbeat {
 public:
  Heartbeat() {
    constexpr DWORD interval = 20;  // ms
    ::CreateTimerQueueTimer(&timer_, nullptr, Beat, this, interval, interval,
                            WT_EXECUTEINTIMERTHREAD);
  }
  ~Heartbeat() {
    // Waits for a running Beat to end.
    if (timer_ != nullptr) ::DeleteTimerQueueTimer(nullptr, timer_, INVALID_HANDLE_VALUE);
  }
  Heartbeat(const Heartbeat&) = delete;
  Heartbeat& operator=(const Heartbeat&) = delete;

 private:
  static void CALLBACK Beat(void* heartbeat, BOOLEAN) {
    ::PostThreadMessageW(static_cast<Heartbeat*>(heartbeat)->thread_, WM_NULL, 0, 0);
  }

  DWORD thread_ = ::GetCurrentThreadId();
  HANDLE timer_ = nullptr;
};

}  // namespace

DdeTalk::DdeTalk(std::string application, std::string topic)
    : application_(std::move(application)),
      topic_(std::move(topic)),
      code_page_(MachineCodePages().ansi) {}

std::shared_ptr<DdeTalk> DdeTalk::Begin(std::string application, std::string topic) {
  std::shared_ptr<DdeTalk> talk(new DdeTalk(std::move(application), std::move(topic)));
  // The thread owns the talk, and no other thread waits for it. A thread that a hanging program
  // blocks keeps its own resources.
  auto own_pointer = std::make_unique<std::shared_ptr<DdeTalk>>(talk);
  const Handle thread(::CreateThread(nullptr, 0, OnThread, own_pointer.get(), 0, nullptr));
  if (!thread.IsOpen()) throw LastSystemError("cannot start a thread");
  (void)own_pointer.release();
  return talk;
}

DWORD WINAPI DdeTalk::OnThread(void* own_pointer) {
  const std::unique_ptr<std::shared_ptr<DdeTalk>> talk(
      static_cast<std::shared_ptr<DdeTalk>*>(own_pointer));
  (*talk)->Run();
  return 0;
}

DdeTalk::Opening DdeTalk::WaitForOpening(Time until) {
  return WaitPatiently(opened_.Get(), until) ? opening_.load() : Opening::kUnknown;
}

bool DdeTalk::Tell(Events events) {
  const std::lock_guard lock(mutex_);
  events_ = std::move(events);
  return !ended_;
}

void DdeTalk::WaitForEnd(Time until) {
  (void)WaitPatiently(sent_.Get(), until);
}

void DdeTalk::Leave(Work work) {
  const std::lock_guard lock(mutex_);
  work_.push_back(std::move(work));
  ::SetEvent(work_waits_.Get());
}

void DdeTalk::Execute(std::string bytes) {
  Leave([this, bytes = std::move(bytes)] { SendCommand(bytes); });
}

void DdeTalk::Advise(std::string item) {
  Leave([this, item = std::move(item)] { BeginAdvise(item); });
}

std::shared_ptr<DdeTalk::Question> DdeTalk::Ask(const std::string& item, Time until) {
  auto question = std::make_shared<Question>();
  question->item = item;
  Leave([this, question] {
    if (question->forgotten) return;
    // Longer than any caller waits, so that a late answer is not reported as a refusal.
    question->value = RequestValue(question->item, 2 * LinkTransport::kLongestWait);
    ::SetEvent(question->answered.Get());
  });
  if (WaitPatiently(question->answered.Get(), until)) return question;
  question->forgotten = true;
  return nullptr;
}

void DdeTalk::End() {
  const std::lock_guard lock(mutex_);
  events_ = {};
  ending_ = true;
  ::SetEvent(work_waits_.Get());
}

void DdeTalk::Run() {
  own_talk = this;
  const bool open = Open();
  opening_ = open ? Opening::kOpen : Opening::kNobody;
  ::SetEvent(opened_.Get());
  if (open) Converse();
  ::SetEvent(sent_.Get());
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    if (events_.closed) events_.closed();
  }
  const Heartbeat heartbeat;
  if (conversation_ != nullptr) ::DdeDisconnect(conversation_);
  if (instance_ != 0) ::DdeUninitialize(instance_);
}

bool DdeTalk::Open() {
  if (::DdeInitializeA(&instance_, OnEvent, APPCMD_CLIENTONLY, 0) != DMLERR_NO_ERROR) return false;
  {
    const DdeName application(instance_, application_);
    const DdeName topic(instance_, topic_);
    conversation_ = ::DdeConnect(instance_, application.Get(), topic.Get(), nullptr);
  }
  if (conversation_ == nullptr) return false;
  CONVINFO facts{};
  facts.cb = sizeof facts;
  DWORD process = 0;
  if (::DdeQueryConvInfo(conversation_, QID_SYNC, &facts) != 0) {
    peer_window_ = facts.hwndPartner;
    ::GetWindowThreadProcessId(peer_window_, &process);
  }
  if (process != 0) peer_ = Handle(::OpenProcess(SYNCHRONIZE, FALSE, process));
  return true;
}

void DdeTalk::Converse() {
  while (!lost_) {
    if (const std::optional<Work> work = NextWork()) {
      (*work)();
      continue;
    }
    {
      const std::lock_guard lock(mutex_);
      if (ending_ && work_.empty()) return;
    }
    AwaitWork();
  }
  // The remaining work sends nothing, but a caller may wait for its answer.
  while (const std::optional<Work> work = NextWork()) (*work)();
}

std::optional<DdeTalk::Work> DdeTalk::NextWork() {
  const std::lock_guard lock(mutex_);
  if (work_.empty()) return std::nullopt;
  Work work = std::move(work_.front());
  work_.pop_front();
  return work;
}

void DdeTalk::AwaitWork() {
  AwaitMessages(work_waits_.Get(), milliseconds(INFINITE));
}

/// Waits for `also`, a message of the peer or the end of the peer. A peer may end without a
/// message.
void DdeTalk::AwaitMessages(HANDLE also, milliseconds longest) {
  HANDLE objects[2] = {};
  DWORD count = 0;
  if (also != nullptr) objects[count++] = also;
  if (peer_.IsOpen()) objects[count++] = peer_.Get();
  ::MsgWaitForMultipleObjectsEx(count, objects, static_cast<DWORD>(longest.count()), QS_ALLINPUT,
                                MWMO_INPUTAVAILABLE);
  const bool peer_ended = PeerGone();
  // Dispatch after checking the peer, so that its last messages are received.
  DispatchMessages();
  if (peer_ended) LoseLink();
}

bool DdeTalk::PeerGone() const {
  return (peer_window_ != nullptr && !::IsWindow(peer_window_)) ||
         (peer_.IsOpen() && ::WaitForSingleObject(peer_.Get(), 0) == WAIT_OBJECT_0);
}

DdeTalk::Answer DdeTalk::Transact(UINT type, const std::string* item, const std::string& block,
                                  std::string* value, milliseconds longest) {
  // Dispatch an acknowledgement that is left of the previous transaction; this transaction would
  // take it for its own answer.
  DispatchMessages();
  if (lost_) return Answer::kNone;
  std::optional<DdeName> name;
  if (item != nullptr) name.emplace(instance_, *item);
  // The function copies the block with its zero, although its parameter is not const.
  auto* const bytes = reinterpret_cast<BYTE*>(const_cast<char*>(block.c_str()));
  const Heartbeat heartbeat;
  const HDDEDATA data = ::DdeClientTransaction(
      item != nullptr ? nullptr : bytes, item != nullptr ? 0 : static_cast<DWORD>(block.size() + 1),
      conversation_, name ? name->Get() : nullptr, item != nullptr ? CF_TEXT : 0, type,
      static_cast<DWORD>(longest.count()), nullptr);
  if (data != nullptr) {
    // If no value was requested, this is not a real handle, only a value other than null.
    if (value != nullptr) {
      *value = BlockBytes(data);
      ::DdeFreeDataHandle(data);
    }
    return Answer::kDone;
  }
  switch (::DdeGetLastError(instance_)) {
    case DMLERR_BUSY:
      return Answer::kBusy;
    case DMLERR_NOTPROCESSED:
      return Answer::kRefused;
    default:
      return Answer::kNone;
  }
}

void DdeTalk::SendCommand(const std::string& bytes) {
  const auto until = steady_clock::now() + LinkTransport::kSlowAnswer;
  constexpr milliseconds while_busy{50};
  while (!lost_) {
    const auto left = std::chrono::ceil<milliseconds>(until - steady_clock::now());
    const Answer answer =
        left.count() > 0 ? Transact(XTYP_EXECUTE, nullptr, bytes, nullptr, left) : Answer::kNone;
    // A refusal is the peer's decision, so do not try again.
    if (answer == Answer::kDone || answer == Answer::kRefused) return;
    if (answer == Answer::kNone) return LoseLink();
    AwaitMessages(nullptr, while_busy);
  }
}

void DdeTalk::BeginAdvise(const std::string& item) {
  if (std::find(advised_.begin(), advised_.end(), item) == advised_.end()) {
    advised_.push_back(item);
  }
  const Answer answer = Transact(XTYP_ADVSTART, &item, {}, nullptr, LinkTransport::kSlowAnswer);
  if (answer == Answer::kNone) LoseLink();
  if (answer != Answer::kDone) return;
  const std::optional<std::string> value = RequestValue(item, LinkTransport::kSlowAnswer);
  if (!value) return;
  const std::lock_guard lock(mutex_);
  if (events_.changed) events_.changed(item, *value);
}

std::optional<std::string> DdeTalk::RequestValue(const std::string& item, milliseconds longest) {
  std::string value;
  if (Transact(XTYP_REQUEST, &item, {}, &value, longest) != Answer::kDone) return std::nullopt;
  return DdeText(value, code_page_);
}

/// `item` is the peer's spelling, which may differ from ours in case.
void DdeTalk::TellChange(const std::string& item, HDDEDATA data) {
  const auto found =
      std::find_if(advised_.begin(), advised_.end(),
                   [&](const std::string& advised) { return EqualsIgnoringCase(advised, item); });
  if (found == advised_.end() || data == nullptr) return;
  const std::string bytes = BlockBytes(data);
  if (bytes.size() > LinkTopic::kLongestCommand + 2) return;
  const std::lock_guard lock(mutex_);
  if (events_.changed) events_.changed(*found, DdeText(bytes, code_page_));
}

HDDEDATA CALLBACK DdeTalk::OnEvent(UINT type, UINT, HCONV, HSZ, HSZ item, HDDEDATA data, ULONG_PTR,
                                   ULONG_PTR) {
  switch (type) {
    case XTYP_ADVDATA:
      own_talk->TellChange(NameText(own_talk->instance_, item), data);
      return reinterpret_cast<HDDEDATA>(ULONG_PTR{DDE_FACK});
    case XTYP_DISCONNECT:
      own_talk->conversation_ = nullptr;
      own_talk->LoseLink();
      return nullptr;
    default:
      return nullptr;
  }
}

}  // namespace skyhop::platform
