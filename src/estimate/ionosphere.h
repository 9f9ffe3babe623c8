#pragma once

#include <array>
#include <cstddef>

#include "estimate/geomagnetic_field.h"
#include "estimate/great_circle.h"

namespace skyhop::estimate {

/// Monthly median state of the ionosphere above a position at some hour.
struct IonosphereState {
  double foe = 0;           ///< critical frequency of the E layer, MHz
  double f2 = 0;            ///< foF2 plus half the gyrofrequency, MHz, 1.2 to 25
  double m3000 = 0;         ///< M(3000)F2, 1.8 to 4.2
  double height_ratio = 0;  ///< height over semi-thickness of the F2 layer, 2 to 5.3
  double local_time = 0;    ///< mean local time, hours, 0 to below 24
};

/// The ionosphere above one position in one month. What does not depend on the hour is worked out
/// once, so that an hour costs a few dozen multiplications.
class Ionosphere {
 public:
  /// `month` is 1 to 12; `sunspot_number`, the smoothed one, counts as 0 to 200.
  Ionosphere(const GeoPosition& position, const MagneticField& field, int month,
             double sunspot_number);

  /// The state at `utc_hour`.
  [[nodiscard]] IonosphereState At(double utc_hour) const;

 private:
  static constexpr std::size_t kTimes = 7;
  static constexpr std::size_t kZeniths = 4;
  static constexpr std::size_t kDays = 6;
  using F2Sums = std::array<std::array<double, kZeniths>, kTimes>;

  [[nodiscard]] double CosineOfZenith(double hour_angle) const;

  double longitude_;
  double zenith_constant_;   // sin(latitude) sin(declination)
  double zenith_amplitude_;  // cos(latitude) cos(declination)
  double least_foe_;
  F2Sums log_f2_{};
  F2Sums m3000_{};
  std::array<double, kDays> foe_{};
  std::array<double, kDays> height_ratio_{};
};

}  // namespace skyhop::estimate
