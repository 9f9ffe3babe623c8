#pragma once

#include <wx/bitmap.h>
#include <wx/window.h>

#include <functional>

#include "ui/drawing/chart_palette.h"
#include "ui/drawing/surface.h"

namespace skyhop {

/// A window that shows one drawing, in the colours of the desktop's theme.
class PaintedCanvas : public wxWindow {
 public:
  struct Painter {
    std::function<void(const ChartPalette& palette)> set_palette;
    /// Draws the whole canvas, in the window's pixels.
    std::function<void(Surface& surface, double width, double height, double text_size)> paint;
  };

  /// Accepts the keyboard focus if `style` has wxWANTS_CHARS. `smallest` is in DIP.
  PaintedCanvas(wxWindow* parent, const wxString& name, wxSize smallest, long style = 0);

  /// Sets the painter from now on. The objects that its functions use must outlive the canvas.
  void Attach(Painter painter);
  /// Paints the canvas again because its content has changed.
  void Repaint();

  [[nodiscard]] bool AcceptsFocus() const override { return HasFlag(wxWANTS_CHARS); }

 private:
  void OnPaint(wxPaintEvent& event);
  void FollowTheme();

  Painter painter_;
  wxBitmap bitmap_;
  bool valid_ = false;
};

}  // namespace skyhop
