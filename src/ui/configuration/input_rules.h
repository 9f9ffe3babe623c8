#pragma once

#include <string>
#include <vector>

#include "ui/shared/configuration.h"

namespace skyhop {

// The rules for input in the configuration window. Each function returns the reason for a refusal,
// as the start of a sentence without its full stop, or an empty text.

/// `band` is the band's name for the message. Both values may be empty, which selects the
/// prediction window's values. A take-off angle is 0 to 90 degrees, a power 0 W or more.
[[nodiscard]] std::string Refusal(const BandSettings& settings, const std::string& band);

/// Checks the mode for `row` of `modes`: its name must differ from those of the other rows and be
/// storable in the settings, and its required SNR must be -30 to 99 dB.
[[nodiscard]] std::string Refusal(const ModeSettings& mode, const std::vector<ModeSettings>& modes,
                                  std::size_t row);

}  // namespace skyhop
