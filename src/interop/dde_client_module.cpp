#include "interop/dde_client_module.h"

#include <algorithm>
#include <utility>

#include "common/errors.h"
#include "common/text.h"
#include "interop/suite.h"

namespace skyhop::DDEClientModule {
namespace {

struct LinkedPeer {
  std::int16_t role;
  const char* application;
  const char* name;  ///< as the user knows it
  const char* purpose;
};

constexpr LinkedPeer kPeers[] = {
    {role::kSpots, application::kGleaner, "Gleaner", "spots and solar indices"},
    {role::kTessera, application::kTessera, "Tessera", "locations and antenna rotation"},
    {role::kTransceiverControl, application::kTuneward, "Tuneward", "transceiver control"},
};

struct LinkedItem {
  const char* item;
  LinkControl control;
};

struct LinkedTopic {
  std::int16_t role;
  const char* topic;
  const char* control;  ///< the control's name in the log
  std::span<const LinkedItem> items;
};

constexpr LinkedItem kSpotItems[] = {
    {"SFI", LinkControl::kSFI},
    {"A", LinkControl::kA},
    {"K", LinkControl::kK},
};
constexpr LinkedItem kSelectionItems[] = {
    {"SelectedLatitude", LinkControl::kDXLatitude},
    {"SelectedLongitude", LinkControl::kDXLongitude},
    {"Country", LinkControl::kDXPrefix},
};
constexpr LinkedItem kStationItems[] = {
    {"Latitude", LinkControl::kLocalLatitude},
    {"Longitude", LinkControl::kLocalLongitude},
};
constexpr LinkedItem kTransceiverItems[] = {
    {"FreqDisplay", LinkControl::kFreq},
    {"Mode", LinkControl::kMode},
};

/// A peer's command link is the one without items.
const LinkedTopic kTopics[] = {
    {role::kSpots, topic::kServer, "DDEGleaner", {}},
    {role::kSpots, "SpotDatabaseUI", "SFI", kSpotItems},
    {role::kTessera, topic::kServer, "TesseraDDECommand", {}},
    {role::kTessera, "TesseraMain", "DXLatitude", kSelectionItems},
    {role::kTessera, "TesseraConfig", "LocalLatitude", kStationItems},
    {role::kTransceiverControl, topic::kServer, "DDETransceiverControl", {}},
    {role::kTransceiverControl, "CIV_TunewardUI", "Freq", kTransceiverItems},
};

const LinkedPeer* Find(std::int16_t role) {
  const auto* const found = std::find_if(std::begin(kPeers), std::end(kPeers),
                                         [&](const LinkedPeer& peer) { return peer.role == role; });
  return found == std::end(kPeers) ? nullptr : found;
}

}  // namespace

/// One topic's link.
class Links::Link : public LinkListener {
 public:
  Link(Links& links, const LinkedTopic& linked) : links_(&links), linked_(&linked) {}

  /// Throws the transport's errors.
  void Connect(LinkTransport& transport, const char* application) {
    conversation_ = transport.Connect(application, linked_->topic, *this);
  }
  void Advise() {
    for (const LinkedItem& item : linked_->items) conversation_->Advise(item.item);
  }
  /// The conversation when it is for commands, else null.
  [[nodiscard]] LinkConversation* ForCommands() const {
    return linked_->items.empty() ? conversation_.get() : nullptr;
  }
  [[nodiscard]] bool Open() const { return conversation_ != nullptr && conversation_->Open(); }
  void Forget() {
    for (const LinkedItem& item : linked_->items) links_->with_.client.Forget(item.control);
  }

  void Changed(const std::string& item, const std::string& value) override {
    for (const LinkedItem& known : linked_->items) {
      if (item != known.item) continue;
      links_->with_.client.Change(known.control, value);
      return;
    }
  }
  void Closed() override { links_->LinkClosed(linked_->role, linked_->control); }

 private:
  Links* links_;
  const LinkedTopic* linked_;
  std::unique_ptr<LinkConversation> conversation_;
};

Links::Links(Collaborators collaborators) : with_(collaborators) {
  for (const LinkedPeer& peer : kPeers) peers_.try_emplace(peer.role);
  with_.client.SetStartListener([this](std::int16_t role) { PeerStarts(role); });
}

Links::~Links() {
  with_.client.SetStartListener({});
}

void Links::Initialize() {
  with_.diagnostics.Trap("DDEClientModule.Initialize", [&] {
    with_.diagnostics.DebugLog("DDEClientModule.Initialize");
    const std::string problem = with_.transport.Problem();
    if (!problem.empty()) {
      with_.diagnostics.DebugLog("   no links with other programs: " + problem);
      return;
    }
    usable_ = true;
    // Peers can be reached even when their announcements cannot be taken.
    with_.diagnostics.Trap("DDEClientModule.Initialize",
                           [&] { with_.transport.Serve(topic::kClient, with_.client); });
    for (const LinkedPeer& peer : kPeers) ConnectToServer(peer.role);
    RunTimerWhileNeeded();
  });
}

void Links::Terminate() {
  with_.diagnostics.Trap("DDEClientModule.Terminate", [&] {
    with_.diagnostics.DebugLog("DDEClientModule.Terminate");
    terminating_ = true;
    with_.timer.Stop();
    starting_.clear();
    for (const LinkedPeer& peer : kPeers) {
      Disconnect(peer.role);
      peers_[peer.role].connected = false;
    }
    if (usable_) with_.transport.Unserve(topic::kClient);
  });
}

void Links::ConnectToServer(std::int16_t role) {
  with_.diagnostics.Trap("DDEClientModule.ConnectToServer", [&] {
    with_.diagnostics.DebugLog("DDEClientModule.ConnectToServer, theServer = " +
                               std::to_string(role));
    if (Find(role) == nullptr || !usable_ || terminating_ || !connecting_.insert(role).second) {
      return;
    }
    starting_.erase(role);
    Disconnect(role);
    std::vector<std::unique_ptr<Link>> links;
    std::string problem;
    try {
      links = OpenLinks(role);
      // While one is opened another may close.
      if (!std::all_of(links.begin(), links.end(), [](const auto& link) { return link->Open(); })) {
        problem = "it closed a link at once";
      }
    } catch (const Error& error) {
      problem = error.what();
    }
    connecting_.erase(role);
    if (terminating_) return;
    if (!problem.empty()) {
      with_.diagnostics.DebugLog("DDEClientModule.ConnectToServer: failed to connect to " +
                                 DDECommon::ServerName(role) + ": " + problem);
      if (ServerConnected(role)) SetServerConnected(role, false);
      return;
    }
    peers_[role].links = std::move(links);
    SetServerConnected(role, true);
    for (const std::unique_ptr<Link>& link : peers_[role].links) link->Advise();
  });
}

std::vector<std::unique_ptr<Links::Link>> Links::OpenLinks(std::int16_t role) {
  std::vector<std::unique_ptr<Link>> links;
  for (const LinkedTopic& linked : kTopics) {
    if (linked.role != role) continue;
    links.push_back(std::make_unique<Link>(*this, linked));
    links.back()->Connect(with_.transport, Find(role)->application);
  }
  return links;
}

void Links::Disconnect(std::int16_t role) {
  // A link that reports its own end calls this function, so remove the links from the list before
  // they end.
  const std::vector<std::unique_ptr<Link>> links = std::exchange(peers_[role].links, {});
  for (const std::unique_ptr<Link>& link : links) link->Forget();
}

bool Links::ServerConnected(std::int16_t role) const {
  const auto found = peers_.find(role);
  return found != peers_.end() && found->second.connected;
}

int Links::Connection(std::int16_t role) const {
  return ServerConnected(role) ? peers_.at(role).connections : 0;
}

void Links::SetServerConnected(std::int16_t role, bool connected) {
  with_.diagnostics.Trap("DDEClientModule.SetServerConnected", [&] {
    const auto found = peers_.find(role);
    if (found == peers_.end()) return;
    Peer& peer = found->second;
    const std::string name = DDECommon::ServerName(role);
    with_.diagnostics.DebugLog("DDEClientModule.SetServerConnected: " + name + " " +
                               BooleanText(connected));
    const bool was_connected = std::exchange(peer.connected, connected);
    if (connected) ++peer.connections;
    if (connected && peer.died) {
      peer.died = false;
      with_.diagnostics.DebugLog(name + " reconnected");
    } else if (!connected && was_connected) {
      peer.died = true;
      with_.diagnostics.DebugLog(name + " died; initiating retry");
      with_.timer.Start(kRetryInterval);
    }
    with_.window.LinksChanged();
  });
}

void Links::LinkClosed(std::int16_t role, const std::string& control) {
  with_.diagnostics.Trap("DDEClient." + control + "_LinkClose", [&] {
    if (GetTerminating()) return;
    Disconnect(role);
    SetServerConnected(role, false);
  });
}

void Links::PeerStarts(std::int16_t role) {
  if (Find(role) == nullptr) return ConnectToServer(role);
  if (!usable_ || terminating_) return;
  starting_.insert(role);
  with_.timer.Start(kStartDelay);
}

void Links::RetryDeadServers() {
  with_.diagnostics.Trap("DDEClientModule.RetryDeadServers", [&] {
    for (const LinkedPeer& peer : kPeers) {
      if (ServerConnected(peer.role)) continue;
      with_.diagnostics.DebugLog("  retrying " + DDECommon::ServerName(peer.role));
      ConnectToServer(peer.role);
    }
  });
}

void Links::ServerRetryTimer_Tick() {
  with_.diagnostics.Trap("DDEClient.ServerRetryTimer_Timer", [&] {
    if (terminating_) return;
    if (starting_.empty()) {
      RetryDeadServers();
    } else {
      for (const std::int16_t role : std::exchange(starting_, {})) ConnectToServer(role);
    }
    RunTimerWhileNeeded();
  });
}

void Links::RunTimerWhileNeeded() {
  const bool all = std::all_of(peers_.begin(), peers_.end(),
                               [](const auto& entry) { return entry.second.connected; });
  if (all && starting_.empty()) {
    with_.timer.Stop();
  } else {
    with_.timer.Start(starting_.empty() ? kRetryInterval : kStartDelay);
  }
}

/// The conversation for commands to a peer; null while it is not connected.
LinkConversation* Links::CommandLink(std::int16_t role) {
  if (!ServerConnected(role)) return nullptr;
  for (const std::unique_ptr<Link>& link : peers_[role].links) {
    if (LinkConversation* const conversation = link->ForCommands()) return conversation;
  }
  return nullptr;
}

std::vector<PeerStatus> Links::Peers() const {
  std::vector<PeerStatus> peers;
  for (const LinkedPeer& peer : kPeers) {
    peers.push_back({peer.role, peer.name, peer.purpose, ServerConnected(peer.role)});
  }
  return peers;
}

std::string Links::InteropCaption() const {
  const std::string problem = with_.transport.Problem();
  if (!problem.empty()) return "no links: " + problem;
  std::string names;
  for (const PeerStatus& peer : Peers()) {
    if (peer.connected) names += (names.empty() ? "" : ", ") + peer.name;
  }
  return names.empty() ? "none" : names;
}

}  // namespace skyhop::DDEClientModule
