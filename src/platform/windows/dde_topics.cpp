#include "platform/windows/dde_topics.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <vector>

#include "common/text.h"
#include "platform/windows/code_page.h"
#include "platform/windows/dde_memory.h"
#include "platform/windows/dde_text.h"

namespace skyhop::platform {
namespace {

/// The objects that serve on this thread. DDE does not pass the object to the callback.
thread_local std::vector<DdeTopics*> servers;

HDDEDATA Answer(ULONG_PTR value) {
  return reinterpret_cast<HDDEDATA>(value);
}

}  // namespace

DdeTopics::DdeTopics(std::string application, std::shared_ptr<WindowQueue::Entry> queue)
    : application_(std::move(application)),
      queue_(std::move(queue)),
      code_page_(MachineCodePages().ansi) {
  constexpr DWORD uninteresting = CBF_SKIP_REGISTRATIONS | CBF_SKIP_UNREGISTRATIONS;
  const UINT failure = ::DdeInitializeA(&instance_, OnEvent, uninteresting, 0);
  if (failure != DMLERR_NO_ERROR) {
    char text[64] = {};
    std::snprintf(text, std::size(text), "DDE cannot be used: code %04X", failure);
    problem_ = text;
    return;
  }
  servers.push_back(this);
}

DdeTopics::~DdeTopics() {
  if (!problem_.empty()) return;
  std::erase(servers, this);
  ::DdeUninitialize(instance_);
}

void DdeTopics::Serve(const std::string& name, LinkTopic& topic) {
  const auto added = std::make_shared<Served>(Served{name, &topic, {}});
  if (!served_.try_emplace(UpperCase(name), added).second) {
    throw Error(errors::kInvalidCall, name + " is served already");
  }
  if (served_.size() == 1) {
    const DdeName application(instance_, application_);
    ::DdeNameService(instance_, application.Get(), nullptr, DNS_REGISTER);
  }
}

void DdeTopics::Unserve(const std::string& name) {
  if (served_.erase(UpperCase(name)) == 0) return;
  std::vector<HCONV> ended;
  std::erase_if(conversations_, [&](const auto& entry) {
    if (entry.second != UpperCase(name)) return false;
    ended.push_back(entry.first);
    return true;
  });
  for (const HCONV conversation : ended) ::DdeDisconnect(conversation);
  if (served_.empty()) {
    const DdeName application(instance_, application_);
    ::DdeNameService(instance_, application.Get(), nullptr, DNS_UNREGISTER);
  }
}

void DdeTopics::Publish(const std::string& topic, const std::string& item,
                        const std::string& value) {
  const std::shared_ptr<Served> served = Find(topic);
  if (!served) return;
  served->published[UpperCase(item)] = value;
  const DdeName topic_name(instance_, topic);
  const DdeName item_name(instance_, item);
  ::DdePostAdvise(instance_, topic_name.Get(), item_name.Get());
}

std::shared_ptr<DdeTopics::Served> DdeTopics::Find(const std::string& name) const {
  const auto found = served_.find(UpperCase(name));
  return found == served_.end() ? nullptr : found->second;
}

bool DdeTopics::Accepts(HSZ topic, HSZ application) const {
  return EqualsIgnoringCase(NameText(instance_, application), application_) &&
         Find(NameText(instance_, topic)) != nullptr;
}

HDDEDATA DdeTopics::Take(HSZ topic, HDDEDATA command) {
  const std::shared_ptr<Served> served = Find(NameText(instance_, topic));
  const DWORD size = ::DdeGetData(command, nullptr, 0, 0);
  // Some programs send 16-bit characters, which double the length; add two bytes for the zero.
  if (!served || size > 2 * LinkTopic::kLongestCommand + 2) return Answer(DDE_FNOTPROCESSED);
  std::string text = DdeText(BlockBytes(command), code_page_);
  if (text.size() > LinkTopic::kLongestCommand) return Answer(DDE_FNOTPROCESSED);
  queue_->Post([weak = std::weak_ptr(served), text = std::move(text)] {
    if (const std::shared_ptr<Served> still = weak.lock()) still->topic->Execute(text);
  });
  return Answer(DDE_FACK);
}

bool DdeTopics::HasItem(HSZ topic, HSZ item) const {
  const std::shared_ptr<Served> served = Find(NameText(instance_, topic));
  return served && served->topic->Request(NameText(instance_, item)).has_value();
}

HDDEDATA DdeTopics::Value(HSZ topic, HSZ item, bool as_published) const {
  const std::shared_ptr<Served> served = Find(NameText(instance_, topic));
  if (!served) return nullptr;
  const std::string name = NameText(instance_, item);
  std::optional<std::string> value;
  const auto published = served->published.find(UpperCase(name));
  if (as_published && published != served->published.end()) {
    value = published->second;
  } else {
    value = served->topic->Request(name);
  }
  if (!value || value->size() > LinkTopic::kLongestCommand) return nullptr;
  std::string bytes = DdeBytes(*value, code_page_);
  // The size includes the zero at the end.
  return ::DdeCreateDataHandle(instance_, reinterpret_cast<BYTE*>(bytes.data()),
                               static_cast<DWORD>(bytes.size() + 1), 0, item, CF_TEXT, 0);
}

HDDEDATA CALLBACK DdeTopics::OnEvent(UINT type, UINT format, HCONV conversation, HSZ first,
                                     HSZ second, HDDEDATA data, ULONG_PTR, ULONG_PTR) {
  if (type == XTYP_CONNECT || type == XTYP_CONNECT_CONFIRM) {
    const auto server = std::find_if(servers.begin(), servers.end(), [&](const DdeTopics* one) {
      return one->Accepts(first, second);
    });
    if (server == servers.end()) return nullptr;
    if (type == XTYP_CONNECT) return Answer(TRUE);
    (*server)->conversations_[conversation] = UpperCase(NameText((*server)->instance_, first));
    return nullptr;
  }
  const auto found = std::find_if(servers.begin(), servers.end(), [&](const DdeTopics* one) {
    return one->conversations_.contains(conversation);
  });
  if (found == servers.end()) return nullptr;
  DdeTopics& server = **found;
  switch (type) {
    case XTYP_DISCONNECT:
      server.conversations_.erase(conversation);
      return nullptr;
    case XTYP_EXECUTE:
      return server.Take(first, data);
    case XTYP_REQUEST:
      return format == CF_TEXT ? server.Value(first, second, false) : nullptr;
    case XTYP_ADVSTART:
      return Answer(format == CF_TEXT && server.HasItem(first, second) ? TRUE : FALSE);
    case XTYP_ADVREQ:
      // Some systems ask for items of that name in all topics.
      return server.conversations_[conversation] == UpperCase(NameText(server.instance_, first))
                 ? server.Value(first, second, true)
                 : nullptr;
    default:
      return nullptr;
  }
}

}  // namespace skyhop::platform
