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

/// Waits for a system object, at most until a time. Meanwhile this thread's windows answer the
/// questions of other programs, since the one waited for may have to ask them; nothing else
/// happens. Returns whether the object was set.
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

/// The talk whose thread this is: DDE calls back without saying for whom.
thread_local DdeTalk* own_talk = nullptr;

/// Wakes this thread from time to time. While DDE waits for a peer, some systems let nobody ask
/// this thread's windows anything unless a message wakes it, and whoever looks for a partner asks
/// every window there is.
class Heartbeat {
 public:
  Heartbeat() {
    constexpr DWORD interval = 20;  // ms
    ::CreateTimerQueueTimer(&timer_, nullptr, Beat, this, interval, interval,
                            WT_EXECUTEINTIMERTHREAD);
  }
  ~Heartbeat() {
    // Waits for a beat that is under way.
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
  // The thread keeps the talk, and nobody waits for the thread: one that is held up by a program
  // that hangs goes on holding what is its own.
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
    // Longer than anybody waits, so that no answer in time is not taken for a refusal.
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
  // None of it does anything any more, but somebody may wait for an answer.
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

/// Lets the peer do something, or end, which it may not tell.
void DdeTalk::AwaitMessages(HANDLE also, milliseconds longest) {
  HANDLE objects[2] = {};
  DWORD count = 0;
  if (also != nullptr) objects[count++] = also;
  if (peer_.IsOpen()) objects[count++] = peer_.Get();
  ::MsgWaitForMultipleObjectsEx(count, objects, static_cast<DWORD>(longest.count()), QS_ALLINPUT,
                                MWMO_INPUTAVAILABLE);
  const bool peer_ended = PeerGone();
  // After the look at the peer, so that its last words are heard.
  DispatchMessages();
  if (peer_ended) LoseLink();
}

bool DdeTalk::PeerGone() const {
  return (peer_window_ != nullptr && !::IsWindow(peer_window_)) ||
         (peer_.IsOpen() && ::WaitForSingleObject(peer_.Get(), 0) == WAIT_OBJECT_0);
}

DdeTalk::Answer DdeTalk::Transact(UINT type, const std::string* item, const std::string& block,
                                  std::string* value, milliseconds longest) {
  // An acknowledgement may be left of the transaction before; this one would take it for its
  // answer.
  DispatchMessages();
  if (lost_) return Answer::kNone;
  std::optional<DdeName> name;
  if (item != nullptr) name.emplace(instance_, *item);
  // The block is copied, zero included; the function just does not say so.
  auto* const bytes = reinterpret_cast<BYTE*>(const_cast<char*>(block.c_str()));
  const Heartbeat heartbeat;
  const HDDEDATA data = ::DdeClientTransaction(
      item != nullptr ? nullptr : bytes, item != nullptr ? 0 : static_cast<DWORD>(block.size() + 1),
      conversation_, name ? name->Get() : nullptr, item != nullptr ? CF_TEXT : 0, type,
      static_cast<DWORD>(longest.count()), nullptr);
  if (data != nullptr) {
    // Where no value was asked for, the handle is none but just not null.
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
    // A refusal is the peer's own decision.
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

/// `item` is what the peer calls it, whose letters may be large or small where ours are not.
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
