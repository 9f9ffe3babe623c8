#pragma once

#include <chrono>
#include <string>

namespace skyhop {

/// The values that peers publish for this program, each by the name of the control that is linked
/// to it.
enum class LinkControl {
  kSFI,             ///< solar flux
  kA,               ///< geomagnetic A index
  kK,               ///< geomagnetic K index
  kDXLatitude,      ///< the location that is selected in Tessera
  kDXLongitude,     ///<
  kDXPrefix,        ///< its country
  kLocalLatitude,   ///< the user's own location
  kLocalLongitude,  ///<
  kFreq,            ///< the transceiver's frequency in kHz
  kMode,            ///< and its mode
};
inline constexpr int kLinkControlCount = 10;

/// A place as a peer publishes it. Parts that the peer has not published are empty.
struct PeerPlace {
  std::string latitude;
  std::string longitude;
  std::string country;
};

/// The part of the prediction window that follows peers. A peer may publish any text: the window
/// uses what it can and ignores the rest.
class PeerWindow {
 public:
  struct FollowedBand {
    std::string name;       ///< empty when the frequency is on none
    bool followed = false;  ///< whether the window shows it
  };

  virtual ~PeerWindow() = default;

  /// The transceiver is on a frequency in MHz now.
  virtual FollowedBand FollowFrequency(double frequency) = 0;
  /// A value that is neither the frequency nor part of a place changed.
  virtual void Follow(LinkControl control, const std::string& text) = 0;
  /// The location that is selected in Tessera changed.
  virtual void FollowSelection(const PeerPlace& place) = 0;
  /// The user's own location changed; it has no country.
  virtual void FollowStation(const PeerPlace& place) = 0;
  /// A value is not known any more: its peer has gone or publishes nothing that can be read.
  virtual void Forget(LinkControl control) = 0;
  /// The state of a link changed.
  virtual void LinksChanged() = 0;
};

/// A timer of the links: `ServerRetryTimer`, whose ticks go to DDEClientModule::Links, or
/// `PeerValuesTimer`, whose ticks go to DDEClient.
class LinkTimer {
 public:
  virtual ~LinkTimer() = default;
  /// Ticks repeatedly. Restarts a running timer.
  virtual void Start(std::chrono::milliseconds interval) = 0;
  virtual void Stop() = 0;
};

}  // namespace skyhop
