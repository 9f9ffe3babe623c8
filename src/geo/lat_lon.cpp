#include "geo/lat_lon.h"

#include <cmath>
#include <optional>

#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::LatLonModule {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr char kMinutesMark = '\'';
constexpr char kSecondsMark = '"';

std::string AngleText(const Angle& angle, char negative, char positive) {
  std::string text = std::to_string(angle.degrees) + ' ' + std::to_string(angle.minutes) +
                     kMinutesMark + ' ' + std::to_string(angle.seconds) + kSecondsMark + ' ';
  text += angle.sign == -1 ? negative : positive;
  return text;
}

/// Position of the hemisphere letter, the first one if it is repeated; nothing if the text has none
/// or different ones.
std::optional<std::size_t> FindHemisphere(std::string_view upper) {
  std::optional<std::size_t> found;
  for (const char letter : {'N', 'S', 'E', 'W'}) {
    const std::size_t at = upper.find(letter);
    if (at == kNone) continue;
    if (found) return std::nullopt;
    found = at;
  }
  return found;
}

struct Pieces {
  std::string_view degrees = "0";
  std::string_view minutes = "0";
  std::string_view seconds = "0";
};

/// Cuts a trimmed text without its hemisphere letter at the first blank and the first marks.
std::optional<Pieces> Split(std::string_view text) {
  const std::size_t blank = text.find_first_of(" \t");
  const std::size_t minutes_mark = text.find(kMinutesMark);
  const std::size_t seconds_mark = text.find(kSecondsMark);
  if (seconds_mark != kNone && (minutes_mark == kNone || seconds_mark < minutes_mark)) {
    return std::nullopt;
  }
  if (minutes_mark == kNone) return Pieces{.degrees = text.substr(0, blank)};
  if (blank == kNone) return Pieces{.minutes = text.substr(0, minutes_mark)};
  if (blank > minutes_mark) return std::nullopt;
  Pieces pieces{.degrees = text.substr(0, blank),
                .minutes = text.substr(blank + 1, minutes_mark - blank - 1)};
  if (seconds_mark != kNone) {
    pieces.seconds = text.substr(minutes_mark + 1, seconds_mark - minutes_mark - 1);
  }
  return pieces;
}

/// The columns from `begin`, counted from 0, as far as the text has them.
std::string_view Columns(std::string_view text, std::size_t begin, std::size_t count) {
  return begin < text.size() ? text.substr(begin, count) : std::string_view();
}

bool IsWithin(const Angle& angle, int limit) {
  return angle.degrees <= limit && angle.minutes < 60 && angle.seconds < 60 &&
         !(angle.degrees == limit && (angle.minutes > 0 || angle.seconds > 0));
}

/// Throws Error for pieces that are no numbers of 16 bits.
Angle AngleIn(std::string_view text) {
  std::string working = UpperCase(Trim(text));
  // A "W" in front is deliberately left to the free form.
  if (working.starts_with('N') || working.starts_with('S') || working.starts_with('E')) {
    return ParsePrefixedAngle(text);
  }
  const std::optional<std::size_t> hemisphere = FindHemisphere(working);
  if (!hemisphere) return UndefinedAngle();
  const char letter = working[*hemisphere];
  working[*hemisphere] = ' ';
  const std::optional<Pieces> pieces = Split(Trim(working));
  if (!pieces) return UndefinedAngle();
  const int sign = letter == 'N' || letter == 'W' ? -1 : 1;
  return {ToInteger(pieces->degrees), ToInteger(pieces->minutes), ToInteger(pieces->seconds),
          static_cast<std::int16_t>(sign)};
}

std::optional<Angle> ValidAngleIn(std::string_view text, int limit) {
  if (Trim(text).empty()) return std::nullopt;
  try {
    const Angle angle = AngleIn(text);
    if (IsWithin(angle, limit)) return angle;
  } catch (const Error&) {
    // Half-typed text, not an error.
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

double UnsignedDegrees(const Angle& angle) {
  return angle.degrees + angle.minutes / 60.0 + angle.seconds / 3600.0;
}

std::string LatitudeString(const Position& position) {
  return AngleText(position.latitude, 'N', 'S');
}

std::string LongitudeString(const Position& position) {
  return AngleText(position.longitude, 'W', 'E');
}

Angle ParseAngle(std::string_view text, Diagnostics& diagnostics) {
  return diagnostics.Trap("LatLonModule.ParseAngle", UndefinedAngle(),
                          [&] { return AngleIn(text); });
}

Angle ParsePrefixedAngle(std::string_view text) {
  const std::string working = UpperCase(Trim(text));
  if (working.empty()) return UndefinedAngle();
  Angle angle;
  switch (working.front()) {
    case 'N':
    case 'W':
      angle.sign = -1;
      break;
    case 'S':
    case 'E':
      angle.sign = 1;
      break;
    default:
      return {-1, 0, 0, 0};
  }
  try {
    angle.degrees = RoundToInteger(ToSingle(Columns(working, 1, 3)));
    const double minutes = ToSingle(Columns(working, 5, 6));
    if (minutes < 0) return UndefinedAngle();
    angle.minutes = RoundToInteger(minutes - 0.5);
    angle.seconds = RoundToInteger((minutes - angle.minutes) * 60);
  } catch (const Error&) {
    // Do not fill the error log with half-typed coordinates.
    return UndefinedAngle();
  }
  return angle;
}

bool ValidLatitude(std::string_view text, Diagnostics& diagnostics) {
  return !Trim(text).empty() && IsWithin(ParseAngle(text, diagnostics), 90);
}

bool ValidLongitude(std::string_view text, Diagnostics& diagnostics) {
  return !Trim(text).empty() && IsWithin(ParseAngle(text, diagnostics), 180);
}

std::optional<Angle> LatitudeIn(std::string_view text) {
  return ValidAngleIn(text, 90);
}

std::optional<Angle> LongitudeIn(std::string_view text) {
  return ValidAngleIn(text, 180);
}

Angle AngleFromDecimalDegrees(double degrees, Axis axis) {
  const bool is_latitude = axis == Axis::kLatitude;
  const double limit = is_latitude ? 90 : 180;
  if (!(std::abs(degrees) <= limit)) return UndefinedAngle();
  const auto seconds = static_cast<int>(std::lround(std::abs(degrees) * 3600));
  const bool north_or_east = degrees >= 0 || seconds == 0;
  return {static_cast<std::int16_t>(seconds / 3600), static_cast<std::int16_t>(seconds / 60 % 60),
          static_cast<std::int16_t>(seconds % 60),
          static_cast<std::int16_t>(north_or_east == is_latitude ? -1 : 1)};
}

}  // namespace skyhop::LatLonModule
