#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "beacon/beacon_location.h"
#include "beacon/schedule.h"

namespace skyhop::BeaconModule {

/// The programs that follow the beacons with us.
enum class BeaconPeer {
  kTransceiver,  ///< tunes the transceiver
  kMap,          ///< turns the antenna, shows bearings and beacons
};

/// Sends commands to those programs. A command to a program that is not connected does nothing.
class BeaconPeers {
 public:
  virtual ~BeaconPeers() = default;
  /// The number of the connection with a program: 0 while there is none. Each new connection has
  /// another number, since its program has lost all earlier commands.
  [[nodiscard]] virtual int Connection(BeaconPeer peer) const = 0;
  [[nodiscard]] bool HasTransceiver() const { return Connection(BeaconPeer::kTransceiver) != 0; }
  /// Selects the transceiver's VFO A.
  virtual void SetVfoA() = 0;
  virtual void SetSplit(bool on) = 0;
  /// Tunes the transceiver; `frequency` is in kHz.
  virtual void Qsy(const std::string& frequency) = 0;
  virtual void SetTransceiverMode(const std::string& mode) = 0;
  /// Turns the antenna; a bearing in degrees, along the short path.
  virtual void RotateShortPath(std::int16_t bearing) = 0;
  /// Shows a bearing, in degrees, on the map.
  virtual void SelectBearing(std::int16_t bearing) = 0;
  /// Shows a beacon on the map.
  virtual void LookUp(const Beacon& beacon) = 0;
};

/// What following a beacon does.
struct FollowOptions {
  bool retune = false;
  bool rotate = false;
  bool look_up = false;
  bool select_bearing = false;

  friend bool operator==(const FollowOptions&, const FollowOptions&) = default;
};

/// Makes the peers follow the beacons, once per transmission however often Follow is called. It
/// tunes the transceiver for every transmission, so that it returns after the user has turned the
/// knob. It moves antenna and map when the beacon or its bearing changes. An option that is
/// switched on and a peer that connects take effect at once.
class Follower {
 public:
  /// Must outlive this object.
  explicit Follower(BeaconPeers& peers) : peers_(&peers) {}

  void SetOptions(const FollowOptions& options);
  [[nodiscard]] const FollowOptions& Options() const { return options_; }

  /// `target` is the transmission to listen for now; without one the peers stay as they are.
  /// `beacon` is null if its location is unknown, `bearing` nothing if the user's or the beacon's
  /// location is.
  void Follow(const std::optional<Transmission>& target, double frequency, const Beacon* beacon,
              std::optional<std::int16_t> bearing);

 private:
  struct Tuning {
    int connection = 0;
    Transmission transmission;
    friend bool operator==(const Tuning&, const Tuning&) = default;
  };
  struct Pointing {
    int connection = 0;
    std::string call;
    std::int16_t bearing = 0;
    friend bool operator==(const Pointing&, const Pointing&) = default;
  };
  /// The last commands.
  struct Done {
    std::optional<Tuning> tuned;
    std::optional<Pointing> rotated;
    std::optional<Pointing> looked_up;  ///< without a bearing
    std::optional<Pointing> selected;
  };

  void Tune(const Transmission& target, double frequency);
  void Point(const std::string& call, const Beacon* beacon, std::optional<std::int16_t> bearing);

  BeaconPeers* peers_;
  FollowOptions options_;
  Done done_;
};

}  // namespace skyhop::BeaconModule
