#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/diagnostics.h"

namespace skyhop {

/// A latitude or a longitude. Angles made here have 0 to 59 minutes and seconds and no negative
/// field but the sign; text that a user typed may hold any value of 16 bits.
struct Angle {
  std::int16_t degrees = 0;
  std::int16_t minutes = 0;
  std::int16_t seconds = 0;
  std::int16_t sign = 1;  ///< -1 is north or west, everything else south or east

  friend bool operator==(const Angle&, const Angle&) = default;
};

/// A place on the earth.
struct Position {
  Angle latitude;
  Angle longitude;

  friend bool operator==(const Position&, const Position&) = default;
};

namespace LatLonModule {

/// The result for a text that cannot be read as an angle: 360 degrees.
[[nodiscard]] constexpr Angle UndefinedAngle() {
  return {360, 0, 0, 1};
}

[[nodiscard]] constexpr bool IsUndefined(const Angle& angle) {
  return angle.degrees == 360;
}

/// True when either angle is undefined.
[[nodiscard]] constexpr bool IsUndefined(const Position& position) {
  return IsUndefined(position.latitude) || IsUndefined(position.longitude);
}

/// Degrees with minutes and seconds as their fraction, without the sign.
[[nodiscard]] double UnsignedDegrees(const Angle& angle);

/// The position's latitude as text without padding: 42 5' 0" N.
[[nodiscard]] std::string LatitudeString(const Position& position);

/// The position's longitude in the same form: 71 30' 0" W.
[[nodiscard]] std::string LongitudeString(const Position& position);

/// Reads an angle in any of the forms that users type. Case and blanks around it do not matter.
///
///  - With "N", "S" or "E" in front: the fixed columns of ParsePrefixedAngle.
///  - Otherwise exactly one of the letters N, S, E and W, at any place (a second occurrence of it
///    makes the number around it invalid), and the pieces
///    degrees minutes' seconds", of which "degrees", "degrees minutes'" and "minutes'" do as well.
///    Without a minutes mark only the degrees are read: W071 30.0 is 71 degrees west. Pieces are
///    rounded to whole numbers, halves to the even neighbour.
///
/// Yields the undefined angle for no letter, different letters, a seconds mark without a minutes
/// mark before it, a blank that comes only after the minutes mark, and for a piece that is not a
/// number of 16 bits; the last of these is also reported to the error log.
[[nodiscard]] Angle ParseAngle(std::string_view text, Diagnostics& diagnostics);

/// Reads an angle in fixed columns, blanks around it left out: the hemisphere letter in column 1,
/// the degrees in columns 2 to 4, decimal minutes in columns 6 to 11, as in N042 30.500.
///
/// The minutes are split by rounding them less one half, so an odd whole number of minutes gives
/// the minute before it and 60 seconds: N042 31.000 is 42 30' 60" N.
///
/// Yields the undefined angle for an empty text, for columns that are not numbers of 16 bits and
/// for negative minutes; -1 degrees (other fields 0) when column 1 is no hemisphere letter.
[[nodiscard]] Angle ParsePrefixedAngle(std::string_view text);

/// True for a text that ParseAngle reads as at most 90 degrees with less than 60 minutes and
/// seconds. Only the size is checked: negative pieces and the letters E and W pass.
[[nodiscard]] bool ValidLatitude(std::string_view text, Diagnostics& diagnostics);

/// The same with at most 180 degrees; the letters N and S pass.
[[nodiscard]] bool ValidLongitude(std::string_view text, Diagnostics& diagnostics);

/// The angle of a text that is a valid latitude or longitude; nothing for any other. Writes nothing
/// to the error log: the user may still be typing the text.
[[nodiscard]] std::optional<Angle> LatitudeIn(std::string_view text);
[[nodiscard]] std::optional<Angle> LongitudeIn(std::string_view text);

enum class Axis { kLatitude, kLongitude };

/// The angle of signed decimal degrees, north and east positive, to the nearest second. A value
/// that rounds to zero is north or east.
/// Yields the undefined angle for a latitude beyond 90 or a longitude beyond 180 degrees either
/// way and for values that are not finite.
[[nodiscard]] Angle AngleFromDecimalDegrees(double degrees, Axis axis);

}  // namespace LatLonModule
}  // namespace skyhop
