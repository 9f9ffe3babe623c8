#pragma once

#include <array>
#include <cstddef>

#include "estimate/great_circle.h"

namespace skyhop::estimate {

/// Noise power in a bandwidth of 1 Hz.
struct NoiseLevel {
  double median = 0;        ///< dBW
  double upper_decile = 0;  ///< dB above the median
  double lower_decile = 0;  ///< dB below the median
};

/// The radio noise of one hour at the receiver.
class HourNoise {
 public:
  static constexpr std::size_t kOrders = 4;

  /// `atmospheric` are the coefficients of the atmospheric noise factor in powers of the logarithm
  /// of the frequency; `man_made` as RadioNoise has it.
  HourNoise(const std::array<double, kOrders>& atmospheric, double man_made)
      : atmospheric_(atmospheric), man_made_(man_made) {}

  /// The sum of atmospheric, man-made and, above `screening_frequency`, galactic noise at
  /// `frequency`, both MHz.
  /// Sources: ITU-R P.372 for the lines of man-made and galactic noise, Spaulding and Stewart, NTIA
  /// Report 87-212, for the sum of log-normal variables.
  [[nodiscard]] NoiseLevel At(double frequency, double screening_frequency) const;

 private:
  std::array<double, kOrders> atmospheric_;
  double man_made_;
};

/// The radio noise at a receiver in one month.
class RadioNoise {
 public:
  /// `man_made` is the man-made noise at 3 MHz in dB below 1 W in 1 Hz, a positive number. The
  /// atmospheric noise is a fit to the maps of CCIR Report 322.
  RadioNoise(const GeoPosition& receiver, int month, double man_made);

  [[nodiscard]] HourNoise At(double utc_hour) const;

 private:
  static constexpr std::size_t kHarmonics = 5;

  double longitude_;
  double man_made_;
  // [harmonic of the day][order of the frequency]
  std::array<std::array<double, HourNoise::kOrders>, kHarmonics> atmospheric_{};
};

}  // namespace skyhop::estimate
