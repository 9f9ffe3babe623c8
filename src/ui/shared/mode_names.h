#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "ui/shared/configuration.h"

namespace skyhop {

/// Index in `modes` of the mode that a transceiver or a peer means by `text`: the mode of that name
/// in any case, else the nearest one. A sideband or filter suffix does not count ("CW-R" is CW), a
/// sideband alone is SSB. For a data mode without a name ("DATA-U", "PKTUSB") it is `current` when
/// that is a digital mode, else the first digital mode that `modes` has. Nothing when there is
/// none.
[[nodiscard]] std::optional<std::size_t> NearestMode(const std::string& text,
                                                     const std::vector<ModeSettings>& modes,
                                                     const std::string& current = {});

/// A frequency in MHz from one of a peer: below 1000 it is in MHz, else in kHz.
[[nodiscard]] double Megahertz(double frequency);

}  // namespace skyhop
