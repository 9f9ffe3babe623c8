#pragma once

#include <string>
#include <string_view>

#include "common/diagnostics.h"
#include "geo/lat_lon.h"

/// Maidenhead locators. A locator has a field (two letters A to R, 20 degrees of longitude by 10 of
/// latitude), a square in it (two digits, 2 by 1 degrees) and, when it has six characters, a
/// subsquare (two letters A to X, 5 by 2.5 minutes); longitude comes first in each pair. Letters
/// may be of either case.
namespace skyhop::DXGridModule {

/// The text without blanks around it, the first four characters in capitals, the others in small
/// letters: FN42ab.
[[nodiscard]] std::string formatgrid(std::string_view text);

// True for a text of exactly one character: a digit, a letter A to R, a letter A to X.
[[nodiscard]] bool IsDigit(std::string_view text);
[[nodiscard]] bool IsPrimaryGridChar(std::string_view text);
[[nodiscard]] bool IsSecondaryGridChar(std::string_view text);

/// True for a locator of four or six characters without any blanks.
[[nodiscard]] bool IsGridSquare(std::string_view text);

/// The centre of a locator's area; both angles undefined when the text is no locator.
///
/// A four-character locator whose area begins at the prime meridian or touches the equator from
/// either side has a sign of 0 there, which counts as east and south: the latitude of JJ00 is 30
/// minutes south.
[[nodiscard]] Position GetGridCenterLocation(std::string_view locator);

/// The six-character locator of a position, or "undefined" when its latitude is beyond 90 or its
/// longitude beyond 180 degrees or one of them negative.
///
/// A position on a boundary, or closer to it than 0.001 degrees between squares and 0.001 minutes
/// between subsquares, belongs to the area north-east of it, unless that area is in another field.
/// Zero is north or east whatever its sign. The north pole and 180 degrees east get the letter "S",
/// one past the last field.
[[nodiscard]] std::string GetGridSquare(const Position& position, Diagnostics& diagnostics);

}  // namespace skyhop::DXGridModule
