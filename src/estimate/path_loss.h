#pragma once

#include <span>

#include "estimate/great_circle.h"
#include "estimate/muf.h"
#include "estimate/reflection_area.h"

namespace skyhop::estimate {

/// Loss beyond the one that is computed, as measured on real paths. Positive decibels; the level of
/// a tenth, half and nine tenths of the observations.
struct ExcessLoss {
  double least_tenth = 0;
  double median = 0;
  double greatest_tenth = 0;
  double geomagnetic_latitude = 0;  ///< mean of the points' magnitudes, degrees
};

/// The mean over `points`, at least one, of a path of `path_length` km.
/// Source: the table of CCIR Report 252, averaged over seasons and local times.
[[nodiscard]] ExcessLoss ExcessLossOf(std::span<const GeoPosition> points, double path_length);

/// What the excess loss adds to the path's loss and to the spread of the signal in an hour, dB.
struct SystemLoss {
  double median = 0;        ///< at least 0
  double lower_decile = 0;  ///< of the signal below its median, at least 1
  double upper_decile = 0;  ///< above it, at least 0.5
};

/// The part of the excess loss that is not already counted as days above the F2 layer's MUF.
[[nodiscard]] SystemLoss SystemLossOf(const ExcessLoss& excess, const LayerMuf& f2);

/// Absorption by the D and E layers in an hour.
/// Source: Lucas and Haydon, ESSA report ITSA-1 (1966), for rays reflected by the F2 layer; for the
/// E layer with the corrections for the part of the ray near its peak.
class Absorption {
 public:
  /// `areas`, at least one, are those of the path.
  explicit Absorption(std::span<const ReflectionArea> areas);

  /// Index of absorption of one area: 0.1 at night, above 1 at noon.
  [[nodiscard]] static double IndexOf(const ReflectionArea& area);

  /// Its mean over the path.
  [[nodiscard]] double MeanIndex() const { return mean_index_; }

  /// How absorption in an area falls with `frequency`, MHz: the divisor before collisions are
  /// added.
  [[nodiscard]] static double FrequencyTerm(const ReflectionArea& area, double frequency);

  /// Loss in dB of one hop with the given absorption index and frequency term. Negative for some
  /// rays that the E layer reflects well below its critical frequency.
  [[nodiscard]] double HopLoss(double index, double frequency_term, const ReflectionArea& area,
                               const Ray& ray) const;

  /// Loss in dB at the vertical for an absorption index of 1, with the frequency term of the F2
  /// layer's rays, which pass all of the absorbing region.
  [[nodiscard]] static double Vertical(double frequency_term);

 private:
  double mean_index_ = 0;
  double e_constant_ = 0;  // dB for a reflection near the peak of the E layer
  double e_slope_ = 0;     // dB per natural logarithm of the frequency
};

}  // namespace skyhop::estimate
