#pragma once

#include <string>

#include "engine/point_snr.h"
#include "ui/shared/prediction_view.h"

namespace skyhop {

/// The words for a point prediction as far as it has come. `circuit` says where it goes: "to
/// IO91wm", "from IO91wm".
[[nodiscard]] SnrDisplay DisplayOf(const IONCAPModule::PointReception& reception,
                                   const std::string& circuit);

}  // namespace skyhop
