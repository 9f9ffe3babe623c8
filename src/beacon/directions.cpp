#include "beacon/directions.h"

#include <cmath>

#include "geo/great_circle.h"

namespace skyhop::BeaconModule {
namespace {

// The same values as in the prediction window, so that both show the same long path.
constexpr double kEquatorKilometres = 40075.16;
constexpr double kEquatorMiles = 24901.55;

constexpr double kOctantWidth = 360.0 / kOctantCount;

}  // namespace

Octant OctantOf(double bearing) {
  const int number = static_cast<int>(std::floor((bearing + kOctantWidth / 2) / kOctantWidth));
  return static_cast<Octant>(((number % kOctantCount) + kOctantCount) % kOctantCount);
}

std::optional<Way> WayTo(const Position& station, const Position& beacon, bool distance_miles,
                         Diagnostics& diagnostics) {
  if (LatLonModule::IsUndefined(station) || LatLonModule::IsUndefined(beacon)) return std::nullopt;
  const Vector vector = ComputeVector(station, beacon, distance_miles, diagnostics);
  Way way;
  way.azimuth =
      double{LatLonModule::ComputePositionVector(station, beacon, "S", distance_miles, diagnostics)
                 .azimuth};
  way.short_bearing = static_cast<int>(vector.azimuth);
  way.short_distance = static_cast<int>(vector.distance);
  way.long_bearing = way.short_bearing + (way.short_bearing <= 180 ? 180 : -180);
  const double equator = distance_miles ? kEquatorMiles : kEquatorKilometres;
  way.long_distance = static_cast<int>(std::lround(equator - way.short_distance));
  return way;
}

}  // namespace skyhop::BeaconModule
