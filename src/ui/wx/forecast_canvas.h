#pragma once

#include <wx/bitmap.h>
#include <wx/window.h>

#include "ui/forecast/solar_forecast_window.h"

namespace skyhop {

/// Shows the graphs of the forecast, passes pointer and keys on.
class ForecastCanvas : public wxWindow {
 public:
  explicit ForecastCanvas(wxWindow* parent);

  /// Who paints and gets the events from now on; must outlive the canvas.
  void Attach(SolarForecast& controller);
  /// What is shown has changed.
  void Repaint();

 private:
  void OnPaint(wxPaintEvent& event);
  void OnKeyDown(wxKeyEvent& event);
  void FollowTheme();

  SolarForecast* controller_ = nullptr;
  wxBitmap bitmap_;
  bool valid_ = false;
};

}  // namespace skyhop
