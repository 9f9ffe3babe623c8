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

/// An antenna as a deck describes it.
struct DeckAntenna {
  double gain = 0;   ///< dBi of an isotropic one
  std::string file;  ///< of a pattern that the estimate ignores; empty if isotropic
};

/// The kind of a report.
enum class Method {
  kMuf = 26,               ///< MUF, FOT, HPF and LUF by the hour
  kSystem = 20,            ///< the reception of each frequency by the hour
  kSystemByDistance = 30,  ///< the same; the estimate makes no difference
};

/// The contents of a deck.
struct Deck {
  CircuitParameters circuit;
  Method method = Method::kMuf;
  /// MHz, at most 11. 0 stands for the FOT of the hour in the first place, elsewhere for none.
  std::vector<double> frequencies;
  int year = 0;  ///< only printed, as are the names and antennas
  std::string transmitter_name;
  std::string receiver_name;
  DeckAntenna transmitter_antenna;
  DeckAntenna receiver_antenna;
  bool power_from_antenna = false;  ///< an ANTENNA card contained the transmitter's power
  double multipath_power = 0;       ///< tolerance, dB
  double multipath_delay = 0;       ///< tolerance, ms
  HourRange hours;
  std::vector<std::string> lines;  ///< the cards up to the last one that was read, as written
};

/// Power, in kW, that stands for a written power of 0: the field has steps of 10 W, so that up to
/// 5 W are written as 0.
inline constexpr double kLeastPower = 0.005;

/// Reads a deck of IONCAP, ICEPAC or VOACAP. Lines end in LF or CR LF.
///
/// The cards CIRCUIT, SYSTEM, MONTH, SUNSPOT, TIME and METHOD come once each and in any order,
/// ANTENNA cards as many as there are, then EXECUTE and perhaps QUIT. The methods 20 and 30 need a
/// FREQUENCY card too; LABEL, LINEMAX, COEFFS and FPROB may come. An ANTENNA card of ICEPAC and
/// VOACAP names a file in brackets and, for the transmitter, the power; in other decks the SYSTEM
/// card has the power. The estimate uses isotropic antennas, with the written gain if the file is
/// "default/isotrope", otherwise with 0 dBi. It ignores the geomagnetic index of ICEPAC. A written
/// take-off angle of 0 means 3 degrees. Blank lines and all text behind QUIT are ignored.
///
/// Throws Error 13 for a card that cannot be read, that comes twice or that is missing.
[[nodiscard]] Deck ReadDeck(std::string_view text);

}  // namespace skyhop::estimate
