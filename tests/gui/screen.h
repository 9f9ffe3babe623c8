#pragma once

#include <wx/image.h>
#include <wx/window.h>

#include "ui/drawing/surface.h"

namespace skyhop::testing {

/// The screen's pixels of an area in a window's client coordinates.
[[nodiscard]] wxImage ScreenPart(const wxWindow& window, const Rectangle& area);

/// The number of pixels with this colour; each part of the colour may differ by `tolerance`.
[[nodiscard]] int CountPixels(const wxImage& image, Color color, int tolerance = 0);

}  // namespace skyhop::testing
