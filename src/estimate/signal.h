#pragma once

#include "estimate/reflection_area.h"

namespace skyhop::estimate {

/// A signal at the receiver: its monthly median and the distances of the deciles from it.
struct SignalLevel {
  double power = 0;         ///< dB above the transmitter's power, so a negative number
  double lower_decile = 0;  ///< dB below the median, 0 to 25 for a single ray
  double upper_decile = 0;  ///< dB above it, the same
};

/// The signal by one ray or bundle of rays, and how it travelled.
struct RaySignal {
  SignalLevel level;
  double elevation = 0;      ///< take-off angle, radians
  double days = 0;           ///< fraction of the days below the MUF of the ray, 0 to 1
  int hops = 0;              ///< 0 when only the layers at the path's ends are known
  Layer first = Layer::kF2;  ///< reflects at the transmitter's end
  Layer last = Layer::kF2;   ///< at the receiver's end; the same as `first` when `hops` > 0
};

/// No decile of a ray's signal is farther from the median, dB.
inline constexpr double kWidestDecile = 25.0;

}  // namespace skyhop::estimate
