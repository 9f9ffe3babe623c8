#pragma once

#include <string>

#include "estimate/deck.h"

namespace skyhop::estimate {

/// Computes what the deck asks for and writes the report of method 26 in the columns that programs
/// read the engines' reports by: after a heading and the deck a line with the headers GMT (hour),
/// LMT (local mean time at the transmitter), FOT, HPF, ESMUF, MUF and LUF (MHz), a blank line, a
/// line per hour and a closing line. A LUF that does not exist is printed as minus the MUF;
/// sporadic E is not computed, so that ESMUF is 0. Lines end in LF.
[[nodiscard]] std::string MufReport(const Deck& deck);

}  // namespace skyhop::estimate
