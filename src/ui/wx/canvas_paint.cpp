#include "ui/wx/canvas_paint.h"

#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "ui/wx/wx_surface.h"

namespace skyhop {
namespace {

/// The colour around the canvas.
wxColour SurroundingColour(const wxWindow& window) {
#ifdef __WXGTK__
  // Panels are transparent here, so the window's own colour is visible.
  return wxGetTopLevelParent(window.GetParent())->GetBackgroundColour();
#else
  return window.GetParent()->GetBackgroundColour();
#endif
}

}  // namespace

const ChartPalette& PaletteOn(const wxColour& background) {
  return background.GetLuminance() < 0.5 ? kDarkPalette : kLightPalette;
}

ChartPalette CanvasPalette(const wxWindow& window) {
  const wxColour desktop = SurroundingColour(window);
  ChartPalette palette = PaletteOn(desktop);
  palette.background = {desktop.Red(), desktop.Green(), desktop.Blue()};
  return palette;
}

double CanvasTextSize(const wxWindow& window) {
  // Smaller than the controls' text, so that the labels do not dominate the chart.
  return std::max(9.0, std::round(window.GetFont().GetPixelSize().GetHeight() * 0.86));
}

void PaintCanvas(const wxWindow& window, wxBitmap& bitmap,
                 const std::function<void(Surface&)>& paint) {
  const wxSize size = window.GetClientSize();
  const double scale = window.GetContentScaleFactor();
  if (!bitmap.IsOk() || bitmap.GetScaleFactor() != scale ||
      bitmap.GetSize() != wxSize(wxRound(size.x * scale), wxRound(size.y * scale))) {
    bitmap.CreateScaled(size.x, size.y, wxBITMAP_SCREEN_DEPTH, scale);
  }
  wxMemoryDC dc(bitmap);
  std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  if (!context) return;
  // The surface uses device pixels itself, to keep lines sharp.
  context->Scale(1 / scale, 1 / scale);
  WxSurface surface(std::move(context), size.x, size.y, scale, window.GetFont());
  paint(surface);
}

void PaintFocus(const wxWindow& window, wxDC& dc) {
  const wxColour color = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
  dc.SetPen(wxPen(color, window.FromDIP(1), wxPENSTYLE_SOLID));
  dc.SetBrush(*wxTRANSPARENT_BRUSH);
  dc.DrawRectangle(window.GetClientRect());
}

}  // namespace skyhop
