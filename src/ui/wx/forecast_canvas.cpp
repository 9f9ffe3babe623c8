#include "ui/wx/forecast_canvas.h"

#include <wx/dcclient.h>

#include "ui/wx/canvas_paint.h"

namespace skyhop {

ForecastCanvas::ForecastCanvas(wxWindow* parent) {
  // The style has to be set before the window exists: nothing is erased, everything is painted.
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS, "SolarGraphs");
  SetMinSize(FromDIP(wxSize(480, 260)));

  Bind(wxEVT_PAINT, &ForecastCanvas::OnPaint, this);
  Bind(wxEVT_KEY_DOWN, &ForecastCanvas::OnKeyDown, this);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    Repaint();
    event.Skip();
  });
  Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
    if (controller_ != nullptr) controller_->Pointer_Move(ToPoint(event.GetPosition()));
  });
  Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) {
    if (controller_ != nullptr) controller_->Pointer_Leave();
  });
  Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) { SetFocus(); });
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

void ForecastCanvas::Attach(SolarForecast& controller) {
  controller_ = &controller;
  FollowTheme();
}

void ForecastCanvas::FollowTheme() {
  if (controller_ != nullptr) controller_->SetPalette(CanvasPalette(*this));
}

void ForecastCanvas::Repaint() {
  valid_ = false;
  Refresh(false);
}

void ForecastCanvas::OnPaint(wxPaintEvent&) {
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
  if (HasFocus()) PaintFocus(*this, dc);
}

void ForecastCanvas::OnKeyDown(wxKeyEvent& event) {
  // One more than there are days reaches the other end from anywhere.
  constexpr int all = static_cast<int>(SolarForecastModule::kFirstDaySlot) + 1;
  if (controller_ == nullptr) return;
  switch (event.GetKeyCode()) {
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT:
      return controller_->Step(-1);
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT:
      return controller_->Step(1);
    case WXK_HOME:
      return controller_->Step(-all);
    case WXK_END:
      return controller_->Step(all);
    case WXK_TAB:
      Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                                 : wxNavigationKeyEvent::IsForward);
      return;
    default:
      event.Skip();
  }
}

}  // namespace skyhop
