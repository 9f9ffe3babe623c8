#include "ui/wx/beacon_canvas.h"

#include <wx/dcclient.h>

#include "ui/wx/canvas_paint.h"

namespace skyhop {

BeaconCanvas::BeaconCanvas(wxWindow* parent) {
  // The style has to be set before the window exists: nothing is erased, everything is painted.
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, "BeaconDay");
  SetMinSize(FromDIP(wxSize(480, 200)));
  Bind(wxEVT_PAINT, &BeaconCanvas::OnPaint, this);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    Repaint();
    event.Skip();
  });
  Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
    FollowTheme();
    event.Skip();
  });
}

void BeaconCanvas::Attach(BeaconWindow& controller) {
  controller_ = &controller;
  FollowTheme();
}

void BeaconCanvas::FollowTheme() {
  if (controller_ != nullptr) controller_->SetPalette(CanvasPalette(*this));
}

void BeaconCanvas::Repaint() {
  valid_ = false;
  Refresh(false);
}

void BeaconCanvas::OnPaint(wxPaintEvent&) {
  wxPaintDC dc(this);
  const wxSize size = GetClientSize();
  if (controller_ == nullptr || size.x < 1 || size.y < 1) return;
  if (!valid_ || bitmap_.GetScaleFactor() != GetContentScaleFactor()) {
    PaintCanvas(*this, bitmap_, [&](Surface& surface) {
      controller_->Paint(surface, size.x, size.y, CanvasTextSize(*this));
    });
    valid_ = true;
  }
  dc.DrawBitmap(bitmap_, 0, 0);
}

}  // namespace skyhop
