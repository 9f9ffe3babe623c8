#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "beacon/directions.h"
#include "beacon/schedule.h"

namespace skyhop::BeaconModule {

/// Which beacons the user follows.
struct Selection {
  enum class By {
    kBand,    ///< every beacon on one frequency
    kCall,    ///< one beacon on every frequency
    kOctant,  ///< the beacons in one direction, on whatever frequency
  };

  By by = By::kBand;
  std::size_t frequency = 0;  ///< index into the schedule's
  std::string call;
  Octant octant = Octant::kN;

  friend bool operator==(const Selection&, const Selection&) = default;
};

/// What is known of the beacons besides the schedule.
struct BeaconFacts {
  /// The octant that a beacon is in; nothing when it is not known.
  std::function<std::optional<Octant>(const std::string& call)> octant;
  /// Whether a beacon is on the air.
  std::function<bool(const std::string& call)> on_air;
  /// How open a frequency is predicted to be, higher for better; 0 for closed or not known.
  std::function<int(const std::string& call, std::size_t frequency)> open_level;
};

/// The transmission to listen for at `time`: nothing while none of the selected beacons transmits.
/// For an octant with several beacons it is the one on the most open frequency, and among equally
/// open frequencies on the lowest. Beacons that are off the air are skipped.
[[nodiscard]] std::optional<Transmission> TargetAt(const Schedule& schedule,
                                                   const Selection& selection, UtcTime time,
                                                   const BeaconFacts& facts);

}  // namespace skyhop::BeaconModule
