#pragma once

#include "estimate/great_circle.h"
#include "estimate/propagation_math.h"

namespace skyhop::estimate {

/// Spread of the E layer's MUF from day to day.
inline constexpr MufSpread kEMufSpread = {0.1, 0.1};

/// Spread of the F2 layer's MUF over the days of a month at a position: `month` 1 to 12,
/// `local_time` in hours, 0 to below 24.
/// Source: the CCIR tables of the MUF's deciles, averaged over the classes of sunspot activity.
[[nodiscard]] MufSpread F2MufSpread(const GeoPosition& position, int month, double local_time);

}  // namespace skyhop::estimate
