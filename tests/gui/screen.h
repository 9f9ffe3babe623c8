#pragma once

#include <wx/image.h>
#include <wx/window.h>

#include "ui/drawing/surface.h"

namespace skyhop::testing {

/// What the screen shows of a window's area, in its client coordinates.
[[nodiscard]] wxImage ScreenPart(const wxWindow& window, const Rectangle& area);

/// How many pixels have this colour; each part may differ by `tolerance`.
[[nodiscard]] int CountPixels(const wxImage& image, Color color, int tolerance = 0);

}  // namespace skyhop::testing
