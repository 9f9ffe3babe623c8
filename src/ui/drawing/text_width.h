#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "ui/drawing/surface.h"

namespace skyhop {

/// Width in pixels that a line of UTF-8 text takes at most in the usual sans-serif fonts. A
/// guess that depends on no font, so that a picture is laid out alike wherever it is drawn.
[[nodiscard]] double TextWidth(std::string_view text, double size, FontWeight weight);

/// The longest start of `text` that is at most `width` pixels wide, cut between words if it can be,
/// in bytes. Never cuts a UTF-8 character; at least one character.
[[nodiscard]] std::size_t FittingLength(std::string_view text, double width, double size,
                                        FontWeight weight);

/// A time of day in hours as "13:05", to the nearest minute.
[[nodiscard]] std::string ClockText(double hours);

/// `text` or, when that is wider than `width`, its start with an ellipsis.
[[nodiscard]] std::string Shortened(std::string_view text, double width, double size,
                                    FontWeight weight);

/// Moves `places`, in ascending order, apart until neighbours have at least the distance `spacing`
/// and all are in [`low`, `high`], with the least sum of squared moves. The spacing shrinks if the
/// room is too small.
void SpreadApart(std::span<double> places, double spacing, double low, double high);

}  // namespace skyhop
