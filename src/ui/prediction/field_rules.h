#pragma once

#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "geo/lat_lon.h"
#include "ui/shared/controls.h"

namespace skyhop {

/// Whether a typed character may enter the field. Control characters always may.
[[nodiscard]] bool AcceptsKey(TextField field, char32_t key);

/// The axis of a coordinate's field; nothing for the other fields.
[[nodiscard]] std::optional<LatLonModule::Axis> AxisOf(TextField field);

/// The message about a text of the field, null for a text that the field accepts. Empty texts are
/// accepted, except for a date: a prediction reports them.
[[nodiscard]] const char* FieldProblem(TextField field, const std::string& text,
                                       Diagnostics& diagnostics);

/// The message about a coordinate that cannot be understood.
[[nodiscard]] const char* IllegalCoordinate(LatLonModule::Axis axis);

/// Whether a text is a latitude, or a longitude, with the letters of its axis and no negative part.
[[nodiscard]] bool LatitudeAcceptable(const std::string& text, Diagnostics& diagnostics);
[[nodiscard]] bool LongitudeAcceptable(const std::string& text, Diagnostics& diagnostics);

/// Whether the prediction itself reports what is wrong with a text.
[[nodiscard]] bool IsJudgedByPrediction(TextField field, const std::string& text);

}  // namespace skyhop
