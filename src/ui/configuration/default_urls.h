#pragma once

#include "engine/prediction_panel.h"

namespace skyhop {

/// The address of a fresh installation for one of `kURL0` to `kURL3`, `kSSNURL`, `kSFIURL`,
/// `kWWVURL`; empty for any other text.
[[nodiscard]] const char* DefaultUrl(PanelText url);

}  // namespace skyhop
