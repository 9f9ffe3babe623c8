#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "beacon/beacon_location.h"
#include "beacon/schedule.h"

namespace skyhop::BeaconModule {

/// The programs that follow the beacons with us. A command to one that is not there does nothing.
class BeaconPeers {
 public:
  virtual ~BeaconPeers() = default;
  /// Whether there is anybody to tune the transceiver.
  [[nodiscard]] virtual bool HasTransceiver() const = 0;
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
/// knob; antenna and map move when the beacon changes. An option that is switched on takes effect
/// at once.
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
  /// What was last commanded.
  struct Done {
    std::optional<Transmission> tuned;
    std::string rotated;  ///< the beacon's call
    std::string looked_up;
    std::string selected;
  };

  BeaconPeers* peers_;
  FollowOptions options_;
  Done done_;
};

}  // namespace skyhop::BeaconModule
