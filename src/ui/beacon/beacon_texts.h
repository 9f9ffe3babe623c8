#pragma once

#include <optional>
#include <string>

#include "ui/beacon/beacon_choice.h"

namespace skyhop {

/// The texts of the beacon window, except for the warning about the clock. `target` is the
/// transmission to listen for.
[[nodiscard]] BeaconTexts TextsAt(UtcTime now, const KnownBeacons& known,
                                  const BeaconChoice& choice,
                                  const std::optional<BeaconModule::Transmission>& target,
                                  bool has_transceiver);

/// The reason why there is no such transmission.
[[nodiscard]] std::string SilenceText(UtcTime now, const KnownBeacons& known,
                                      const BeaconModule::Selection& selection);

}  // namespace skyhop
