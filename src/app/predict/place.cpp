#include "app/predict/place.h"

#include <string_view>

#include "common/numbers.h"
#include "common/text.h"
#include "geo/dx_grid.h"

namespace skyhop {
namespace {

std::optional<Position> DecimalPlace(std::string_view text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  const std::optional<double> latitude = WholeNumberText(text.substr(0, comma));
  const std::optional<double> longitude = WholeNumberText(text.substr(comma + 1));
  if (!latitude || !longitude) return std::nullopt;
  const Position position{
      LatLonModule::AngleFromDecimalDegrees(*latitude, LatLonModule::Axis::kLatitude),
      LatLonModule::AngleFromDecimalDegrees(*longitude, LatLonModule::Axis::kLongitude)};
  if (LatLonModule::IsUndefined(position)) return std::nullopt;
  return position;
}

/// One coordinate with its hemisphere letter at the end: decimal degrees, or whole degrees, minutes
/// and seconds. A letter in front would bring in the parser's other forms, some of which drop the
/// minutes, and it rounds decimals; on a command line either goes unnoticed.
std::optional<Angle> Coordinate(std::string_view text, std::string_view letters,
                                LatLonModule::Axis axis, Diagnostics& diagnostics) {
  if (text.size() < 2) return std::nullopt;
  const char letter = UpperCase(text.back());
  if (letters.find(letter) == std::string_view::npos) return std::nullopt;
  const std::string_view number = text.substr(0, text.size() - 1);
  constexpr std::string_view pieces = "0123456789'\" \t";
  if (const std::optional<double> degrees = WholeNumberText(number); degrees && *degrees >= 0) {
    const bool positive = letter == 'N' || letter == 'E';
    return LatLonModule::AngleFromDecimalDegrees(positive ? *degrees : -*degrees, axis);
  }
  const bool valid =
      number.find_first_not_of(pieces) == std::string_view::npos &&
      (axis == LatLonModule::Axis::kLatitude ? LatLonModule::ValidLatitude(text, diagnostics)
                                             : LatLonModule::ValidLongitude(text, diagnostics));
  if (!valid) return std::nullopt;
  return LatLonModule::ParseAngle(text, diagnostics);
}

std::optional<Position> TextPlace(std::string_view text, Diagnostics& diagnostics) {
  const std::size_t letter = text.find_first_of("NSns");
  if (letter == std::string_view::npos) return std::nullopt;
  const std::string_view latitude = Trim(text.substr(0, letter + 1));
  std::string_view longitude = Trim(text.substr(letter + 1));
  if (!longitude.empty() && longitude.front() == ',') longitude = Trim(longitude.substr(1));
  const auto north = Coordinate(latitude, "NS", LatLonModule::Axis::kLatitude, diagnostics);
  const auto east = Coordinate(longitude, "EW", LatLonModule::Axis::kLongitude, diagnostics);
  if (!north || !east) return std::nullopt;
  const Position position{*north, *east};
  if (LatLonModule::IsUndefined(position)) return std::nullopt;
  return position;
}

}  // namespace

std::optional<Position> ParsePlace(const std::string& text, Diagnostics& diagnostics) {
  const std::string_view trimmed = Trim(text);
  if (DXGridModule::IsGridSquare(trimmed)) return DXGridModule::GetGridCenterLocation(trimmed);
  if (const std::optional<Position> decimal = DecimalPlace(trimmed)) return decimal;
  return TextPlace(trimmed, diagnostics);
}

}  // namespace skyhop
