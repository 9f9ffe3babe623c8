// A peer application that uses DDE like older programs: bytes of the machine's code page, and
// synchronous transactions. The test controls it through its standard input.

#include <windows.h>

#include <ddeml.h>
#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <iostream>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "link_words.h"

namespace {

using skyhop::testing::Line;
using skyhop::testing::Words;
using Texts = std::vector<std::string>;

constexpr DWORD kPatience = 20000;        // ms
constexpr DWORD kConnectPatience = 5000;  // ms
constexpr DWORD kGarbagePatience = 1000;  // ms

DWORD instance = 0;
DWORD main_thread = 0;
std::mutex mutex;
std::deque<Texts> orders;
std::map<std::string, std::map<std::string, std::string>> topics;
std::map<HCONV, std::string> conversations;  ///< the topic of each conversation

void Say(const Texts& words) {
  std::cout << Line(words) << std::flush;
}

std::string Converted(const std::string& text, UINT from, UINT to) {
  std::wstring wide(text.size(), L'\0');
  wide.resize(static_cast<std::size_t>(
      ::MultiByteToWideChar(from, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                            static_cast<int>(wide.size()))));
  std::string converted(4 * wide.size(), '\0');
  converted.resize(static_cast<std::size_t>(
      ::WideCharToMultiByte(to, 0, wide.data(), static_cast<int>(wide.size()), converted.data(),
                            static_cast<int>(converted.size()), nullptr, nullptr)));
  return converted;
}
std::string Ansi(const std::string& text) {
  return Converted(text, CP_UTF8, CP_ACP);
}

std::string NameOf(HSZ name) {
  char text[256] = {};
  ::DdeQueryStringA(instance, name, text, sizeof text, CP_WINANSI);
  return text;
}
HSZ Name(const std::string& text) {
  return ::DdeCreateStringHandleA(instance, Ansi(text).c_str(), CP_WINANSI);
}

/// The text in a block, as UTF-8. Frees nothing.
std::string TextOf(HDDEDATA data) {
  std::string bytes(::DdeGetData(data, nullptr, 0, 0), '\0');
  ::DdeGetData(data, reinterpret_cast<BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()), 0);
  bytes.resize(std::min(bytes.find('\0'), bytes.size()));
  return Converted(bytes, CP_ACP, CP_UTF8);
}

HDDEDATA ValueOf(HSZ topic, HSZ item) {
  const auto& items = topics[NameOf(topic)];
  const auto found = items.find(NameOf(item));
  if (found == items.end()) return nullptr;
  std::string bytes = Ansi(found->second);
  return ::DdeCreateDataHandle(instance, reinterpret_cast<BYTE*>(bytes.data()),
                               static_cast<DWORD>(bytes.size() + 1), 0, item, CF_TEXT, 0);
}

HDDEDATA CALLBACK OnEvent(UINT type, UINT, HCONV conversation, HSZ first, HSZ second, HDDEDATA data,
                          ULONG_PTR, ULONG_PTR) {
  const auto answer = [](ULONG_PTR value) { return reinterpret_cast<HDDEDATA>(value); };
  switch (type) {
    case XTYP_CONNECT:
      return answer(topics.contains(NameOf(first)) ? 1 : 0);
    case XTYP_CONNECT_CONFIRM:
      conversations[conversation] = NameOf(first);
      return nullptr;
    case XTYP_EXECUTE:
      Say({"executed", TextOf(data)});
      return answer(DDE_FACK);
    case XTYP_ADVREQ:
      // Some systems ask for items of that name in every topic.
      return conversations[conversation] == NameOf(first) ? ValueOf(first, second) : nullptr;
    case XTYP_REQUEST:
      Say({"asked", NameOf(second)});
      return ValueOf(first, second);
    case XTYP_ADVSTART:
      return answer(topics[NameOf(first)].contains(NameOf(second)) ? 1 : 0);
    default:
      return nullptr;
  }
}

void Serve(const std::string& application, const Texts& words) {
  auto& items = topics[words.at(1)];
  for (std::size_t i = 2; i + 1 < words.size(); i += 2) items[words[i]] = words[i + 1];
  if (topics.size() == 1) ::DdeNameService(instance, Name(application), nullptr, DNS_REGISTER);
}

void Publish(const std::string& topic, const std::string& item) {
  // Some systems add one reference to the item's atom, but remove one for each conversation that
  // they notify.
  for (std::size_t i = 0; i < conversations.size(); ++i) ::GlobalAddAtomA(item.c_str());
  ::DdePostAdvise(instance, Name(topic), Name(item));
}

/// A conversation with another application while this object lives.
class Talk {
 public:
  Talk(const std::string& application, const std::string& topic, DWORD patience = kConnectPatience)
      : conversation_(Connected(application, topic, patience)) {}
  ~Talk() { ::DdeDisconnect(conversation_); }
  Talk(const Talk&) = delete;
  Talk& operator=(const Talk&) = delete;

  bool Execute(std::string bytes, std::size_t size, DWORD patience = kPatience) {
    return ::DdeClientTransaction(reinterpret_cast<BYTE*>(bytes.data()), static_cast<DWORD>(size),
                                  conversation_, nullptr, 0, XTYP_EXECUTE, patience,
                                  nullptr) != nullptr;
  }
  bool Execute(const std::string& text) {
    const std::string bytes = Ansi(text);
    return Execute(bytes, bytes.size() + 1);
  }
  HDDEDATA Ask(const std::string& item, UINT type, UINT format, DWORD patience = kPatience) {
    return ::DdeClientTransaction(nullptr, 0, conversation_, Name(item), format, type, patience,
                                  nullptr);
  }
  void Poke(const std::string& item, std::string bytes, DWORD patience) {
    ::DdeClientTransaction(reinterpret_cast<BYTE*>(bytes.data()),
                           static_cast<DWORD>(bytes.size() + 1), conversation_, Name(item), CF_TEXT,
                           XTYP_POKE, patience, nullptr);
  }

 private:
  /// On a busy machine an application may not answer in time, so ask repeatedly.
  static HCONV Connected(const std::string& application, const std::string& topic, DWORD patience) {
    HCONV conversation = nullptr;
    const ULONGLONG end = ::GetTickCount64() + patience;
    do {
      conversation = ::DdeConnect(instance, Name(application), Name(topic), nullptr);
    } while (conversation == nullptr && ::GetTickCount64() < end);
    return conversation;
  }

  HCONV conversation_;
};

/// Sends two bytes for each character, like some programs.
void ExecuteWide(const Texts& words) {
  std::string bytes;
  for (const char c : words.at(3)) bytes += {c, '\0'};
  bytes += '\0';
  Talk(words.at(1), words.at(2)).Execute(bytes, bytes.size() + 1);
  Say({"taken"});
}

/// Sends transactions that no link expects.
void SendGarbage(const Texts& words) {
  Talk talk(words.at(1), words.at(2));
  std::string long_text((std::size_t{1} << 20U) + 1, 'x');
  talk.Execute(long_text, long_text.size() + 1, kGarbagePatience);
  talk.Execute({}, 0, kGarbagePatience);
  talk.Poke("Country", "x", kGarbagePatience);
  talk.Ask("Country", XTYP_REQUEST, CF_BITMAP, kGarbagePatience);
  talk.Ask("Country", XTYP_REQUEST, CF_UNICODETEXT, kGarbagePatience);
  talk.Ask("Country", XTYP_ADVSTART, CF_BITMAP, kGarbagePatience);
  talk.Ask("", XTYP_REQUEST, CF_TEXT, kGarbagePatience);
  const Talk system(words.at(1), "System", 0);
  const Talk anybody("", "", 0);
  Say({"taken"});
}

void Request(const Texts& words) {
  const HDDEDATA data = Talk(words.at(1), words.at(2)).Ask(words.at(3), XTYP_REQUEST, CF_TEXT);
  Say({"value", data == nullptr ? "(error)" : TextOf(data)});
}

void Obey(const std::string& application, const Texts& words) {
  const std::string& order = words.at(0);
  if (order == "serve") {
    Serve(application, words);
  } else if (order == "publish") {
    topics[words.at(1)][words.at(2)] = words.at(3);
    Publish(words.at(1), words.at(2));
  } else if (order == "execute") {
    Talk(words.at(1), words.at(2)).Execute(words.at(3));
    Say({"taken"});
  } else if (order == "execute-wide") {
    ExecuteWide(words);
  } else if (order == "request") {
    Request(words);
  } else if (order == "garbage") {
    SendGarbage(words);
  } else if (order == "flood") {
    Say({"done"});  // the next steps take time
    Talk talk(words.at(1), words.at(2));
    for (int i = std::atoi(words.at(4).c_str()); i > 0; --i) talk.Execute(words.at(3));
    Say({"taken"});
    return;
  }
  Say({"done"});
}

DWORD WINAPI ReadOrders(void*) {
  for (std::string line; std::getline(std::cin, line);) {
    const std::lock_guard lock(mutex);
    orders.push_back(Words(line));
    ::PostThreadMessageW(main_thread, WM_NULL, 0, 0);
  }
  std::_Exit(0);
}

std::optional<Texts> NextOrder() {
  const std::lock_guard lock(mutex);
  if (orders.empty()) return std::nullopt;
  Texts words = orders.front();
  orders.pop_front();
  return words;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return 2;
  ::_setmode(::_fileno(stdin), _O_BINARY);
  ::_setmode(::_fileno(stdout), _O_BINARY);
  if (::DdeInitializeA(&instance, OnEvent, CBF_SKIP_REGISTRATIONS | CBF_SKIP_UNREGISTRATIONS, 0) !=
      DMLERR_NO_ERROR) {
    return 1;
  }
  main_thread = ::GetCurrentThreadId();
  MSG message{};
  ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // creates the queue that orders wake
  ::CloseHandle(::CreateThread(nullptr, 0, ReadOrders, nullptr, 0, nullptr));
  while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
    ::DispatchMessageW(&message);
    while (const std::optional<Texts> words = NextOrder()) Obey(arguments[1], *words);
  }
  return 0;
}
