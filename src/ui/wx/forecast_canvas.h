#pragma once

#include "ui/spaceweather/solar_forecast_window.h"
#include "ui/wx/painted_canvas.h"

namespace skyhop {

/// Shows the graphs of the forecast, passes pointer and keys on.
class ForecastCanvas : public PaintedCanvas {
 public:
  explicit ForecastCanvas(wxWindow* parent);

  /// Who paints and gets the events from now on; must outlive the canvas.
  void Attach(SolarForecast& controller);

 private:
  void OnKeyDown(wxKeyEvent& event);

  SolarForecast* controller_ = nullptr;
};

}  // namespace skyhop
