#include "ui/wx/painted_canvas.h"

#include <wx/dcclient.h>

#include "ui/wx/canvas_paint.h"

namespace skyhop {

PaintedCanvas::PaintedCanvas(wxWindow* parent, const wxString& name, wxSize smallest, long style) {
  // Set the style before the window is created. The canvas paints its whole area, so the toolkit
  // need not erase it.
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, style, name);
  SetMinSize(FromDIP(smallest));
  Bind(wxEVT_PAINT, &PaintedCanvas::OnPaint, this);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    Repaint();
    event.Skip();
  });
  for (const auto& type : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS}) {
    Bind(type, [this](wxFocusEvent& event) {
      Refresh(false);
      event.Skip();
    });
  }
  Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
    FollowTheme();
    event.Skip();
  });
}

void PaintedCanvas::Attach(Painter painter) {
  painter_ = std::move(painter);
  FollowTheme();
}

void PaintedCanvas::FollowTheme() {
  if (painter_.set_palette) painter_.set_palette(CanvasPalette(*this));
}

void PaintedCanvas::Repaint() {
  valid_ = false;
  Refresh(false);
}

void PaintedCanvas::OnPaint(wxPaintEvent&) {
  wxPaintDC dc(this);
  const wxSize size = GetClientSize();
  if (!painter_.paint || size.x < 1 || size.y < 1) return;
  if (!valid_ || bitmap_.GetScaleFactor() != GetContentScaleFactor()) {
    PaintCanvas(*this, bitmap_, [&](Surface& surface) {
      painter_.paint(surface, size.x, size.y, CanvasTextSize(*this));
    });
    valid_ = true;
  }
  dc.DrawBitmap(bitmap_, 0, 0);
  if (HasFocus()) PaintFocus(*this, dc);
}

}  // namespace skyhop
