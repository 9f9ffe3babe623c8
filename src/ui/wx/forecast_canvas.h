#pragma once

#include "ui/spaceweather/solar_forecast_window.h"
#include "ui/wx/painted_canvas.h"

namespace skyhop {

/// Shows the graphs of the forecast and passes pointer and key events on.
class ForecastCanvas : public PaintedCanvas {
 public:
  explicit ForecastCanvas(wxWindow* parent);

  /// Sets the controller, which paints and receives the events; it must outlive the canvas.
  void Attach(SolarForecast& controller);

 private:
  void OnKeyDown(wxKeyEvent& event);

  SolarForecast* controller_ = nullptr;
};

}  // namespace skyhop
