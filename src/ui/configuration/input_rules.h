#pragma once

#include <string>
#include <vector>

#include "ui/shared/configuration.h"

namespace skyhop {

// What the configuration window accepts. Each function returns why an input is refused, as the
// start of a sentence without its full stop, or an empty text.

/// `band` is the band's name for the message. Both values may be empty: the window's own count
/// then. A take-off angle is 0 to 90 degrees, a power 0 W or more.
[[nodiscard]] std::string Refusal(const BandSettings& settings, const std::string& band);

/// The mode that is to stand in `row` of `modes`: a name that no other row has and that the
/// settings can store, and a required SNR of -30 to 99 dB.
[[nodiscard]] std::string Refusal(const ModeSettings& mode, const std::vector<ModeSettings>& modes,
                                  std::size_t row);

}  // namespace skyhop
