#pragma once

#include <span>

namespace skyhop {

/// Moves `places`, which ascend, apart until neighbours are at least `spacing` away from each other
/// and all lie in [`low`, `high`], with the least sum of squared moves. Where there is not enough
/// room, the spacing shrinks to what there is.
void SpreadApart(std::span<double> places, double spacing, double low, double high);

}  // namespace skyhop
