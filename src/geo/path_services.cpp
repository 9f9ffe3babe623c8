#include "geo/path_services.h"

#include <array>
#include <cstddef>
#include <string>

#include "common/numbers.h"
#include "common/text.h"
#include "geo/great_circle.h"
#include "geo/lat_lon.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr double kEquatorKilometres = 40075.16;
constexpr double kEquatorMiles = 24901.55;

/// The Q index of the K indices 0 to 6, and of all others.
constexpr std::array<float, 7> kQIndices = {0, 2, 3.5F, 4.5F, 5.5F, 6.5F, 7};
constexpr float kHighestQIndex = 8;

Position ParsePosition(const std::string& latitude, const std::string& longitude,
                       Diagnostics& diagnostics) {
  return {LatLonModule::ParseAngle(latitude, diagnostics),
          LatLonModule::ParseAngle(longitude, diagnostics)};
}

bool IsFilled(const std::string& text) {
  return !Trim(text).empty();
}

std::int16_t Bearing(const std::string& from_latitude, const std::string& from_longitude,
                     const std::string& to_latitude, const std::string& to_longitude,
                     Diagnostics& diagnostics) {
  const Position to = ParsePosition(to_latitude, to_longitude, diagnostics);
  if (LatLonModule::IsUndefined(to)) return -1;
  const Vector vector = LatLonModule::ComputeVector(from_latitude, from_longitude, to, "S",
                                                    /*distance_miles=*/true, diagnostics);
  return RoundToInteger(vector.azimuth);
}

}  // namespace

std::int16_t ComputeBearingFromQTH(const StationFields& fields, Diagnostics& diagnostics) {
  return diagnostics.Trap("IONCAPModule.ComputeBearingFromQTH", std::int16_t{-1}, [&] {
    return Bearing(fields.local_lat, fields.local_lon, fields.dx_lat, fields.dx_lon, diagnostics);
  });
}

std::int16_t ComputeBearingFromDX(const StationFields& fields, Diagnostics& diagnostics) {
  return diagnostics.Trap("IONCAPModule.ComputeBearingFromDX", std::int16_t{-1}, [&] {
    return Bearing(fields.dx_lat, fields.dx_lon, fields.local_lat, fields.local_lon, diagnostics);
  });
}

float ComputeDistance(const StationFields& fields, Diagnostics& diagnostics) {
  return diagnostics.Trap("IONCAPModule.ComputeDistance", 0.0F, [&] {
    diagnostics.DebugLog("IONCAPModule.ComputeDistance");
    if (!IsFilled(fields.local_lat) || !IsFilled(fields.local_lon) || !IsFilled(fields.dx_lat) ||
        !IsFilled(fields.dx_lon)) {
      return 0.0F;
    }
    diagnostics.DebugLog("   computing vector");
    const Position station = ParsePosition(fields.local_lat, fields.local_lon, diagnostics);
    const Position dx = ParsePosition(fields.dx_lat, fields.dx_lon, diagnostics);
    if (LatLonModule::IsUndefined(station) || LatLonModule::IsUndefined(dx)) return 0.0F;
    const bool miles = fields.distance_miles;
    const float distance = BeaconModule::ComputeVector(station, dx, miles, diagnostics).distance;
    if (fields.short_path) return distance;
    return StoreSingle((miles ? kEquatorMiles : kEquatorKilometres) - distance);
  });
}

float ComputeQindex(float k_index) {
  for (std::size_t k = 0; k < kQIndices.size(); ++k) {
    if (k_index == static_cast<float>(k)) return kQIndices[k];
  }
  return kHighestQIndex;
}

}  // namespace skyhop::IONCAPModule
