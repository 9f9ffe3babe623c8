#pragma once

#include <optional>
#include <string>

#include "geo/lat_lon.h"

namespace skyhop {

/// Reads a place from the command line: a grid square, or a latitude and a longitude, each in a
/// form that LatLonModule::ReadCoordinate accepts, separated by a comma, a semicolon, a blank or
/// their hemisphere letters. Returns nothing for any other text, and for a text with two possible
/// readings.
[[nodiscard]] std::optional<Position> ParsePlace(const std::string& text);

}  // namespace skyhop
