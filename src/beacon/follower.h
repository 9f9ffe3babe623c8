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

/// Takes commands to those programs. A command to one that is not there does nothing.
class BeaconPeers {
 public:
  virtual ~BeaconPeers() = default;
  /// The number of the connection with a program: 0 while there is none, another one each time that
  /// it is connected anew, knowing nothing of what was sent before.
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

/// Has the peers follow the beacons: each transmission once, however often it is told. The
/// transceiver is tuned for every transmission, so that it comes back when the user has turned the
/// knob; antenna and map move when the beacon or its bearing changes. An option that is switched on
/// takes effect at once, and so does a peer that is connected.
class Follower {
 public:
  /// Must outlive this object.
  explicit Follower(BeaconPeers& peers) : peers_(&peers) {}

  void SetOptions(const FollowOptions& options);
  [[nodiscard]] const FollowOptions& Options() const { return options_; }

  /// The transmission to listen for now; nothing leaves the peers where they are. `beacon` is null
  /// when its location is not known, `bearing` nothing when yours or its is not.
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
  /// What was last commanded.
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
