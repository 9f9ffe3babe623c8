#pragma once

#include <string>

namespace skyhop {

/// The name under which a transceiver's or a peer's mode is in the list of modes: "USB" and "LSB"
/// are "SSB", "PSK" is "PSK31"; in capitals, without blanks around.
[[nodiscard]] std::string ListedMode(const std::string& text);

/// A frequency in MHz from one of a peer: below 1000 it is in MHz, else in kHz.
[[nodiscard]] double Megahertz(double frequency);

}  // namespace skyhop
