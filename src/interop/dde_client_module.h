#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "common/diagnostics.h"
#include "interop/dde_client.h"
#include "interop/dde_common.h"
#include "interop/link_transport.h"
#include "interop/peer_window.h"

namespace skyhop::DDEClientModule {

/// A peer as the user sees it.
struct PeerStatus {
  std::int16_t role = 0;
  std::string name;
  std::string purpose;
  bool connected = false;
};

/// A beacon's fields for a look-up in Tessera. The texts are those of the beacon files.
struct BeaconPlace {
  std::string call;
  std::string prefix;
  std::string latitude;
  std::string longitude;
  std::string qth;
  std::string country;
  std::string continent;
  std::string cq_zone;
  std::string itu_zone;
  std::string time_zone;
};

/// The links to the peers: Gleaner, Tessera and the transceiver control. A peer counts as connected
/// while every one of its topics is linked. Peers that are not connected are retried every
/// kRetryInterval, and at once when they announce their start.
class Links {
 public:
  static constexpr std::chrono::milliseconds kRetryInterval{30'000};
  /// Longer than the transaction of an announcement: a link cannot be opened within it.
  static constexpr std::chrono::milliseconds kStartDelay{100};

  struct Collaborators {
    LinkTransport& transport;
    DDEClient& client;
    PeerWindow& window;
    LinkTimer& timer;
    DDECommon::Records& records;
    Diagnostics& diagnostics;
  };

  /// All must outlive this object.
  explicit Links(Collaborators collaborators);
  ~Links();
  Links(const Links&) = delete;
  Links& operator=(const Links&) = delete;

  /// Takes announcements and connects to every peer that runs.
  void Initialize();
  /// Closes all links and opens none again.
  void Terminate();
  [[nodiscard]] bool GetTerminating() const { return terminating_; }

  /// Closes the links of a peer and opens them again. A failure is logged and tried again later.
  void ConnectToServer(std::int16_t role);
  [[nodiscard]] bool ServerConnected(std::int16_t role) const;
  /// The number of the peer's connection, counted from 1; 0 while it is not connected.
  [[nodiscard]] int Connection(std::int16_t role) const;
  void SetServerConnected(std::int16_t role, bool connected);
  void RetryDeadServers();
  void ServerRetryTimer_Tick();

  [[nodiscard]] std::vector<PeerStatus> Peers() const;
  /// Names of the connected peers for the head of the error log.
  [[nodiscard]] std::string InteropCaption() const;

  // Commands to peers; one to a peer that is not connected is dropped.
  /// `frequency` is sent as it is given.
  void Qsy(const std::string& frequency);
  void SetTransceiverMode(const std::string& mode);
  void SetVfoA();
  void SetSplit(bool on);
  void BeaconLookup(const BeaconPlace& place);
  /// Bearings in degrees.
  void SelectBearing(std::int16_t bearing);
  void RotateShortPath(std::int16_t bearing);
  void DisplaySolarHistory();

 private:
  class Link;
  struct Peer {
    std::vector<std::unique_ptr<Link>> links;  ///< the command link among them
    bool connected = false;
    int connections = 0;  ///< so far
    bool died = false;
  };

  [[nodiscard]] std::vector<std::unique_ptr<Link>> OpenLinks(std::int16_t role);
  void Disconnect(std::int16_t role);
  void LinkClosed(std::int16_t role, const std::string& control);
  void PeerStarts(std::int16_t role);
  void RunTimerWhileNeeded();
  [[nodiscard]] LinkConversation* CommandLink(std::int16_t role);
  void Send(std::int16_t role, const char* word, const std::string& argument = {});

  Collaborators with_;
  std::map<std::int16_t, Peer> peers_;
  std::set<std::int16_t> starting_;    ///< announced, not connected to yet
  std::set<std::int16_t> connecting_;  ///< links are being opened
  bool usable_ = false;
  bool terminating_ = false;
};

}  // namespace skyhop::DDEClientModule
