#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "ui/shared/configuration.h"

namespace skyhop {

/// Index in `modes` of the mode that a transceiver or a peer calls `text`: the mode of that name in
/// any case, else the nearest one. Ignores a sideband or filter suffix ("CW-R" is CW); a sideband
/// alone is SSB. For a data mode without a name ("DATA-U", "PKTUSB") returns `current` if that is a
/// digital mode, else the first digital mode in `modes`. Returns nothing if there is none.
[[nodiscard]] std::optional<std::size_t> NearestMode(const std::string& text,
                                                     const std::vector<ModeSettings>& modes,
                                                     const std::string& current = {});

/// Converts a peer's frequency to MHz: below 1000 it is in MHz, else in kHz.
[[nodiscard]] double Megahertz(double frequency);

}  // namespace skyhop
