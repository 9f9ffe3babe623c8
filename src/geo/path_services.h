#pragma once

#include <cstdint>
#include <string>

#include "common/diagnostics.h"

namespace skyhop {

/// The inputs that describe the path, as texts, and the configured unit of distance.
struct StationFields {
  std::string local_lat;
  std::string local_lon;
  std::string dx_lat;
  std::string dx_lon;
  bool short_path = true;
  bool distance_miles = true;  ///< statute miles, else kilometres
};

namespace IONCAPModule {

/// The short-path bearing from the user's station to the DX station in whole degrees, 0 to 360,
/// halves rounded to the even neighbour; -1 when one of the four coordinates cannot be read.
[[nodiscard]] std::int16_t ComputeBearingFromQTH(const StationFields& fields,
                                                 Diagnostics& diagnostics);

/// The same from the DX station back to the user's.
[[nodiscard]] std::int16_t ComputeBearingFromDX(const StationFields& fields,
                                                Diagnostics& diagnostics);

/// The distance of the two stations on the chosen path and in the configured unit. The short path
/// is a whole number; the long path is what remains of the earth's equator, 40075.16 km or 24901.55
/// miles. 0 when one of the four coordinates is blank or cannot be read.
[[nodiscard]] float ComputeDistance(const StationFields& fields, Diagnostics& diagnostics);

/// The Q index, the engines' measure of geomagnetic activity, for the whole K index 0 to 6; 8 for
/// any other value.
[[nodiscard]] float ComputeQindex(float k_index);

}  // namespace IONCAPModule
}  // namespace skyhop
