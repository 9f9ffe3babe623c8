#pragma once

#include <string>

#include "estimate/deck.h"

namespace skyhop::estimate {

/// Computes what the deck asks for and writes the report in the columns that programs read the
/// engines' reports by, after a heading and the deck. Lines end in LF.
///
/// Method 26: a line with the headers GMT (hour), LMT (local mean time at the transmitter), FOT,
/// HPF, ESMUF, MUF and LUF (MHz), a blank line and a line per hour. A LUF that does not exist is
/// printed as minus the MUF; sporadic E is not computed, so that ESMUF is 0.
///
/// Methods 20 and 30: per hour a block of lines and a blank line. A line has twelve columns of
/// five characters, for the MUF and for the frequencies of the deck, and a tag in column 68: FREQ
/// (MHz, the hour before it), MODE, TANGLE (take-off angle, degrees), MUFday (fraction of the
/// days), LOSS (dB, with the antennas), S DBW, N DBW, SNR (dB in 1 Hz), REL (fraction of the days),
/// TGAIN and RGAIN (dBi). Columns of no frequency hold a "-".
[[nodiscard]] std::string Report(const Deck& deck);

}  // namespace skyhop::estimate
