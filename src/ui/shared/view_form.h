#pragma once

#include "engine/prediction_form.h"
#include "ui/shared/configuration.h"
#include "ui/shared/prediction_view.h"

namespace skyhop {

/// The form that the window's controls and the configuration hold now.
[[nodiscard]] PredictionForm FormOf(const PredictionView& view, const Configuration& configuration);

/// Shows a restored form in the window's controls. A mode that the configuration does not have any
/// more is no mode.
void ShowForm(const PredictionForm& form, PredictionView& view, const Configuration& configuration);

}  // namespace skyhop
