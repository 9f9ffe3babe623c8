#pragma once

#include <wx/bitmap.h>
#include <wx/window.h>

#include <functional>

#include "ui/drawing/chart_palette.h"
#include "ui/drawing/surface.h"

namespace skyhop {

/// The palette for a light or dark background.
[[nodiscard]] const ChartPalette& PaletteOn(const wxColour& background);

/// The palette for a canvas in `window`, for the desktop's present theme. The palette's background
/// is the colour around the canvas.
[[nodiscard]] ChartPalette CanvasPalette(const wxWindow& window);

/// The height of a canvas's labels, in the window's pixels.
[[nodiscard]] double CanvasTextSize(const wxWindow& window);

/// Paints a whole canvas into `bitmap`, in the full resolution of the screen. Creates `bitmap`
/// again if it does not fit the window. `paint` uses the window's pixels. The window must not be
/// empty.
void PaintCanvas(const wxWindow& window, wxBitmap& bitmap,
                 const std::function<void(Surface&)>& paint);

/// Paints the frame around a canvas that has the keyboard focus.
void PaintFocus(const wxWindow& window, wxDC& dc);

[[nodiscard]] inline Point ToPoint(const wxPoint& at) {
  return {static_cast<double>(at.x), static_cast<double>(at.y)};
}

}  // namespace skyhop
