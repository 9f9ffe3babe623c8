#pragma once

#include "geo/lat_lon.h"

namespace skyhop::testing {

/// The position of decimal degrees, north and east positive.
inline Position At(double latitude, double longitude) {
  using LatLonModule::Axis;
  return {LatLonModule::AngleFromDecimalDegrees(latitude, Axis::kLatitude),
          LatLonModule::AngleFromDecimalDegrees(longitude, Axis::kLongitude)};
}

}  // namespace skyhop::testing
