#pragma once

#include <array>
#include <string>

#include "engine/point_snr.h"

namespace skyhop {

/// A path's line of the display; texts with their units, empty while the engine works.
struct SnrRow {
  std::string path;
  std::string snr;
  std::string margin;  ///< above what is required, with its sign
  std::string reliability;
  std::string mode;
  std::string signal;
  std::string problem;   ///< in the place of all these
  bool reached = false;  ///< the SNR is at least the required one

  friend bool operator==(const SnrRow&, const SnrRow&) = default;
};

/// What the window shows of the point prediction.
struct SnrDisplay {
  bool active = false;
  /// What is predicted, or why nothing is.
  std::string headline;
  bool old = false;            ///< inputs have changed since
  std::string engine;          ///< who computed it; empty until that is known
  bool estimate = false;       ///< that is the built-in estimate
  std::array<SnrRow, 2> rows;  ///< short and long path

  friend bool operator==(const SnrDisplay&, const SnrDisplay&) = default;
};

/// The words for a point prediction as far as it has come. `circuit` says where it goes: "to
/// IO91wm", "from IO91wm".
[[nodiscard]] SnrDisplay DisplayOf(const IONCAPModule::PointReception& reception,
                                   const std::string& circuit);

}  // namespace skyhop
