#pragma once

#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "geo/lat_lon.h"

namespace skyhop {

/// Reads a place as a user of the command line writes it: a grid square, "latitude,longitude" in
/// decimal degrees with north and east positive, or latitude and longitude in the program's own
/// text form, the hemisphere letter behind each. Nothing for any other text.
[[nodiscard]] std::optional<Position> ParsePlace(const std::string& text, Diagnostics& diagnostics);

}  // namespace skyhop
