#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "estimate/circuit.h"

namespace skyhop::estimate {

/// Hours UTC, 1 to 24, that a report covers.
struct HourRange {
  int first = 1;
  int last = 24;
  int step = 1;
};

/// What a deck asks for.
struct Deck {
  CircuitParameters circuit;
  int year = 0;  ///< only printed
  HourRange hours;
  std::vector<std::string> lines;  ///< the cards up to the last one that was read, as written
};

/// Power, in kW, that stands for a written power of 0: the field has steps of 10 W, so that up to
/// 5 W are written as 0.
inline constexpr double kLeastPower = 0.005;

/// Reads an IONCAP deck for method 26 (MUF, FOT, HPF and LUF by the hour). Lines end in LF or CR
/// LF.
///
/// The cards CIRCUIT, SYSTEM, MONTH, SUNSPOT, TIME and METHOD come once each and in any order,
/// ANTENNA cards as many as there are, then EXECUTE and perhaps QUIT. Antennas are checked for
/// being readable, but the estimate is always made for isotropic ones. A written take-off angle of
/// 0 means 3 degrees. Blank lines count for nothing, and so does all behind QUIT.
///
/// Throws Error 13 for a card that cannot be read, that comes twice or that is missing.
[[nodiscard]] Deck ReadDeck(std::string_view text);

}  // namespace skyhop::estimate
