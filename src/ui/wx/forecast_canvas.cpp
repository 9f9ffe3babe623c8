#include "ui/wx/forecast_canvas.h"

#include "ui/wx/canvas_paint.h"

namespace skyhop {

ForecastCanvas::ForecastCanvas(wxWindow* parent)
    : PaintedCanvas(parent, "SolarGraphs", wxSize(480, 260), wxWANTS_CHARS) {
  Bind(wxEVT_KEY_DOWN, &ForecastCanvas::OnKeyDown, this);
  Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
    if (controller_ != nullptr) controller_->Pointer_Move(ToPoint(event.GetPosition()));
  });
  Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) {
    if (controller_ != nullptr) controller_->Pointer_Leave();
  });
  Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) { SetFocus(); });
}

void ForecastCanvas::Attach(SolarForecast& controller) {
  controller_ = &controller;
  PaintedCanvas::Attach({std::bind_front(&SolarForecast::SetPalette, &controller),
                         std::bind_front(&SolarForecast::Paint, &controller)});
}

void ForecastCanvas::OnKeyDown(wxKeyEvent& event) {
  // One step more than there are days reaches the other end from anywhere.
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
