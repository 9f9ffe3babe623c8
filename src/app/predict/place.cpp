#include "app/predict/place.h"

#include <string_view>
#include <vector>

#include "common/text.h"
#include "geo/coordinate_text.h"
#include "geo/dx_grid.h"

namespace skyhop {
namespace {

using LatLonModule::Axis;

/// A place to cut a text between its latitude and its longitude.
struct Cut {
  std::size_t end;    ///< of the latitude
  std::size_t begin;  ///< of the longitude
};

constexpr std::string_view kHemispheres = "NSEWnsew";

/// The places at which the latitude may end. A comma may also be a decimal comma.
std::vector<Cut> CutsOf(std::string_view text) {
  std::vector<Cut> cuts;
  const std::size_t letter = text.find_first_of(kHemispheres);
  if (letter == 0) {
    // If letters precede the coordinates, the latitude ends before the next letter.
    const std::size_t second = text.find_first_of(kHemispheres, 1);
    if (second == std::string_view::npos) return cuts;
    return {{text.find_last_not_of(" \t,;", second - 1) + 1, second}};
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ',' || text[i] == ';') cuts.push_back({i, i + 1});
  }
  const std::size_t north_or_south = text.find_first_of("NSns");
  if (north_or_south != std::string_view::npos) {
    cuts.push_back({north_or_south + 1, north_or_south + 1});
    return cuts;
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ' ') cuts.push_back({i, i});
  }
  return cuts;
}

}  // namespace

std::optional<Position> ParsePlace(const std::string& text) {
  const std::string_view trimmed = Trim(text);
  if (DXGridModule::IsGridSquare(trimmed)) return DXGridModule::GetGridCenterLocation(trimmed);
  std::optional<Position> place;
  for (const Cut& cut : CutsOf(trimmed)) {
    const auto latitude = LatLonModule::ReadCoordinate(trimmed.substr(0, cut.end), Axis::kLatitude);
    const auto longitude =
        LatLonModule::ReadCoordinate(trimmed.substr(cut.begin), Axis::kLongitude);
    if (!latitude || !longitude) continue;
    const Position read{*latitude, *longitude};
    // Refuse a text with two readings: the user may have meant either.
    if (place && *place != read) return std::nullopt;
    place = read;
  }
  return place;
}

}  // namespace skyhop
