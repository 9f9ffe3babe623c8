#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "ui/drawing/surface.h"

namespace skyhop {

/// Upper bound of the width of a line of UTF-8 text in the usual sans-serif fonts, in pixels. The
/// estimate depends on no installed font, so a picture has the same layout on every machine.
[[nodiscard]] double TextWidth(std::string_view text, double size, FontWeight weight);

/// Length in bytes of the longest start of `text` that is at most `width` pixels wide. The start
/// ends between words if possible, never within a UTF-8 character, and has at least one character.
[[nodiscard]] std::size_t FittingLength(std::string_view text, double width, double size,
                                        FontWeight weight);

/// A time of day in hours as "13:05", to the nearest minute.
[[nodiscard]] std::string ClockText(double hours);

/// `text` or, if it is wider than `width`, its start with an ellipsis.
[[nodiscard]] std::string Shortened(std::string_view text, double width, double size,
                                    FontWeight weight);

/// Moves `places`, in ascending order, apart until neighbours have at least the distance `spacing`
/// and all are in [`low`, `high`], with the least sum of squared moves. The spacing shrinks if the
/// room is too small.
void SpreadApart(std::span<double> places, double spacing, double low, double high);

}  // namespace skyhop
