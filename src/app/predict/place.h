#pragma once

#include <optional>
#include <string>

#include "geo/lat_lon.h"

namespace skyhop {

/// Reads a place as a user of the command line writes it: a grid square, or a latitude and a
/// longitude, each in a form that LatLonModule::ReadCoordinate understands, with a comma, a
/// semicolon, a blank or their hemisphere letters between them. Nothing for any other text,
/// and for one that can be read as two places.
[[nodiscard]] std::optional<Position> ParsePlace(const std::string& text);

}  // namespace skyhop
