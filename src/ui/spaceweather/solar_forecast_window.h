#pragma once

#include <array>
#include <string>

#include "common/clock.h"
#include "common/diagnostics.h"
#include "common/settings.h"
#include "spaceweather/solar_forecast.h"
#include "ui/spaceweather/forecast_chart.h"
#include "ui/spaceweather/forecast_timer.h"
#include "ui/spaceweather/forecast_view.h"
#include "ui/spaceweather/space_weather_service.h"

namespace skyhop {

/// The rules of the forecast window `SolarForecast`: one method for each of its events. While the
/// window is open, the prediction window's timer refreshes the forecast. Closing hides the window.
class SolarForecast : public ForecastWindow {
 public:
  struct Collaborators {
    ForecastView& view;
    const SolarForecastModule::Forecast& forecast;
    ForecastTimer& timer;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
    const Clock& clock;
  };

  explicit SolarForecast(Collaborators collaborators) : with_(collaborators) {}

  /// Loads the window when it is shown for the first time.
  void Show() override;
  [[nodiscard]] bool Visible() const override { return with_.view.Visible(); }
  void UpdateSolarGraphs() override;
  void Form_Unload() override;

  void Form_Load();
  void Form_Activate();
  /// The user closes the window.
  void Form_QueryUnload();

  // The view already shows the new state.
  void FluxCheck_Click(bool checked) { Check_Click(ForecastCheck::kFluxCheck, checked); }
  void ACheck_Click(bool checked) { Check_Click(ForecastCheck::kACheck, checked); }
  void Kcheck_Click(bool checked) { Check_Click(ForecastCheck::kKcheck, checked); }
  void Check_Click(ForecastCheck check, bool checked);

  /// The pointer is at a place of the canvas.
  void Pointer_Move(Point at);
  void Pointer_Leave();
  /// Moves the mark by `days` within the forecast, later for positive values. If no day is marked,
  /// starts before the first day or after the last one. For the keyboard.
  void Step(int days);
  /// The text of the marked day for a tool tip; empty if none is marked.
  [[nodiscard]] std::string PointedText() const;

  void SetPalette(const ChartPalette& palette);
  /// Draws the graphs on a canvas; all sizes are in pixels.
  void Paint(Surface& surface, double width, double height, double text_size);

 private:
  [[nodiscard]] ForecastChart Chart() const;
  [[nodiscard]] std::string StatusText() const;
  [[nodiscard]] bool& Shown(ForecastCheck check);
  void Point_At(std::size_t slot);
  void SavePosition();

  Collaborators with_;
  bool loaded_ = false;
  ForecastChartOptions options_;
};

}  // namespace skyhop
