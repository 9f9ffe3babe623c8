#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "geo/lat_lon.h"

namespace skyhop::LatLonModule {

/// Reads a latitude or a longitude in any form that people write, to the nearest second:
///
///  - degrees, degrees and minutes, or degrees, minutes and seconds, separated by blanks or by the
///    marks for degrees, minutes and seconds (33 54 S, 33 54' 0" S); only the last number may
///    have decimals, behind a point or a comma (33.9 S, 33 54,5 S);
///  - the hemisphere letter in front, behind, or behind the degrees (S 33 54, 33S54);
///  - instead of the letter a sign, north and east positive (-33.9). A single number needs neither.
///
/// Yields nothing for any other text, such as one with a letter of the other axis, with both letter
/// and sign, with several numbers but neither, with 60 minutes or seconds, or beyond 90 degrees of
/// latitude or 180 of longitude.
///
/// ParseAngle is the program's own reading of a text in its own form. This function is for texts
/// that a person has typed: ParseAngle ignores minutes without a mark and rounds decimals.
[[nodiscard]] std::optional<Angle> ReadCoordinate(std::string_view text, Axis axis);

/// The canonical text of an angle: LatitudeString's or LongitudeString's.
[[nodiscard]] std::string CoordinateText(const Angle& angle, Axis axis);

/// How to write such a coordinate, for messages: two or three examples.
[[nodiscard]] std::string_view CoordinateExamples(Axis axis);

}  // namespace skyhop::LatLonModule
