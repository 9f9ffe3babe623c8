#include "geo/dx_grid.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::DXGridModule {
namespace {

constexpr const char* kUndefined = "undefined";

/// Absorbs the rounding of positions on a boundary.
constexpr double kMargin = 0.001;

bool IsOneOf(std::string_view text, char first, char last) {
  return text.size() == 1 && UpperCase(text[0]) >= first && UpperCase(text[0]) <= last;
}

int LetterIndex(char letter) {
  return UpperCase(letter) - 'A';
}

int DigitIndex(char digit) {
  return digit - '0';
}

std::int16_t Short(int value) {
  return static_cast<std::int16_t>(value);
}

std::int16_t SignOf(int value) {
  return Short((value > 0) - (value < 0));
}

Angle CenterLongitude(std::string_view locator) {
  const int west_edge = LetterIndex(locator[0]) * 20 - 180 + DigitIndex(locator[2]) * 2;
  if (locator.size() == 4) return {Short(std::abs(west_edge + 1)), 0, 0, SignOf(west_edge)};
  const int minutes = LetterIndex(locator[4]) * 5;
  if (west_edge >= 0) {
    const int center = minutes + 2;
    return {Short(west_edge + center / 60), Short(center % 60), 30, 1};
  }
  return {Short(std::abs(west_edge + (minutes + 60) / 60)), Short((120 - (minutes + 3)) % 60), 30,
          -1};
}

Angle CenterLatitude(std::string_view locator) {
  // The latitude of the south edge, negative in the north.
  int degrees = 90 - LetterIndex(locator[1]) * 10 - DigitIndex(locator[3]);
  const bool south = degrees > 0;
  if (south) --degrees;
  if (locator.size() == 4) return {Short(std::abs(degrees)), 30, 0, SignOf(degrees)};
  const double from_south_edge = LetterIndex(locator[5]) * 2.5 + 1.25;
  const double center = south ? 60 - from_south_edge : from_south_edge;
  std::int16_t minutes = RoundToInteger(center - 0.5);
  std::int16_t seconds = RoundToInteger((center - minutes) * 60);
  if (seconds >= 60) {
    seconds = Short(seconds - 60);
    ++minutes;
  }
  return {Short(std::abs(degrees)), minutes, seconds, Short(south ? 1 : -1)};
}

/// The place of a value in its field, square and subsquare, counted from the south or west.
struct Cell {
  int field = 0;
  int square = 0;
  int subsquare = 0;
};

/// The index of the step of `size` that holds a remainder. The margin cannot lift a remainder
/// beyond the last step.
int StepOf(double remainder, double size, int count) {
  int step = 0;
  while (step < count - 1 && remainder + kMargin >= (step + 1) * size) ++step;
  return step;
}

/// `degrees` north of the equator or east of Greenwich when `positive`, else south or west of it;
/// `field_size` is 10 for a latitude, 20 for a longitude.
Cell FindCell(double degrees, bool positive, int field_size) {
  Cell cell;
  double remainder = 0;  // degrees from the field's south or west edge
  if (positive) {
    const int fields = static_cast<int>(std::floor(degrees / field_size));
    cell.field = 9 + fields;
    remainder = degrees - fields * field_size;
  } else {
    const int fields = static_cast<int>(std::ceil(degrees / field_size));
    cell.field = 9 - fields;
    remainder = fields * field_size - degrees;
  }
  const double square_size = field_size / 10.0;
  cell.square = StepOf(remainder, square_size, 10);
  const double minutes = (remainder - cell.square * square_size) * 60;
  cell.subsquare = StepOf(minutes, square_size * 60 / 24, 24);
  return cell;
}

char Character(char first, int index) {
  return static_cast<char>(first + index);
}

}  // namespace

std::string formatgrid(std::string_view text) {
  const std::string_view trimmed = Trim(text);
  const std::string_view rest = trimmed.substr(std::min<std::size_t>(4, trimmed.size()));
  return UpperCase(trimmed.substr(0, 4)) + LowerCase(rest);
}

bool IsDigit(std::string_view text) {
  return IsOneOf(text, '0', '9');
}

bool IsPrimaryGridChar(std::string_view text) {
  return IsOneOf(text, 'A', 'R');
}

bool IsSecondaryGridChar(std::string_view text) {
  return IsOneOf(text, 'A', 'X');
}

bool IsGridSquare(std::string_view text) {
  if (text.size() != 4 && text.size() != 6) return false;
  return IsPrimaryGridChar(text.substr(0, 1)) && IsPrimaryGridChar(text.substr(1, 1)) &&
         IsDigit(text.substr(2, 1)) && IsDigit(text.substr(3, 1)) &&
         (text.size() == 4 ||
          (IsSecondaryGridChar(text.substr(4, 1)) && IsSecondaryGridChar(text.substr(5, 1))));
}

Position GetGridCenterLocation(std::string_view locator) {
  if (!IsGridSquare(locator)) {
    return {LatLonModule::UndefinedAngle(), LatLonModule::UndefinedAngle()};
  }
  return {CenterLatitude(locator), CenterLongitude(locator)};
}

std::string GetGridSquare(const Position& position, Diagnostics& diagnostics) {
  return diagnostics.Trap("DXGridModule.GetGridSquare", std::string(kUndefined), [&] {
    diagnostics.DebugLog("DXGridModule.GetGridSquare");
    const double lat = LatLonModule::UnsignedDegrees(position.latitude);
    const double lon = LatLonModule::UnsignedDegrees(position.longitude);
    if (lat < 0 || lat > 90 || lon < 0 || lon > 180) return std::string(kUndefined);
    const Cell x = FindCell(lon, position.longitude.sign != -1 || lon == 0, 20);
    const Cell y = FindCell(lat, position.latitude.sign == -1 || lat == 0, 10);
    return std::string{Character('A', x.field),     Character('A', y.field),
                       Character('0', x.square),    Character('0', y.square),
                       Character('a', x.subsquare), Character('a', y.subsquare)};
  });
}

}  // namespace skyhop::DXGridModule
