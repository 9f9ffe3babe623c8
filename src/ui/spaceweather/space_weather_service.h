#pragma once

#include <string>

#include "common/clock.h"
#include "common/diagnostics.h"
#include "spaceweather/current_conditions.h"
#include "spaceweather/solar_forecast.h"
#include "spaceweather/sunspot_number.h"
#include "spaceweather/value_origins.h"
#include "ui/shared/program_services.h"
#include "ui/spaceweather/forecast_timer.h"
#include "ui/spaceweather/window_download_host.h"

namespace skyhop {

/// The window that shows the forecast.
class ForecastWindow {
 public:
  virtual ~ForecastWindow() = default;
  virtual void Show() = 0;
  [[nodiscard]] virtual bool Visible() const = 0;
  /// Call when the forecast or its displayed part has changed.
  virtual void UpdateSolarGraphs() = 0;
  /// The program ends.
  virtual void Form_Unload() = 0;
};

/// The window that shows the current conditions bulletin.
class ConditionsWindow : public CurrentConditionsModule::BulletinDisplay {
 public:
  virtual void Show() = 0;
  /// The program ends.
  virtual void Form_Unload() = 0;
};

/// The commands and the timer of the prediction window that concern solar data.
///
/// A download is synchronous: a command returns when its file has arrived or the download has
/// failed.
class SpaceWeatherService : public SpaceWeather {
 public:
  struct Collaborators {
    WindowDownloadHost& host;
    SolarForecastModule::Forecast& forecast;
    SolarForecastModule::SunspotNumber& sunspot_number;
    CurrentConditionsModule::Conditions& conditions;
    ValueOrigins& origins;
    ForecastWindow& forecast_window;
    ConditionsWindow& conditions_window;
    ForecastTimer& timer;
    const PredictionView& view;
    Diagnostics& diagnostics;
    const Clock& clock;
  };

  explicit SpaceWeatherService(Collaborators collaborators) : with_(collaborators) {}

  [[nodiscard]] bool Available() const override { return true; }
  void Attach(DownloadWindow* window) override;
  void Terminate() override;
  void DownloadSSN() override;
  [[nodiscard]] bool SunspotNumberFailed() const override {
    return !with_.origins.LastFailure(SolarValue::kSunspotNumber).empty();
  }
  void ShowForecast() override;
  void SolarForecastTimer_Tick() override;
  void UpdateCurrentConditions() override;
  void ShowCurrentConditions() override;
  [[nodiscard]] std::string OriginOf(TextField field) const override;
  [[nodiscard]] std::string LastGiven(Address url) const override;

 private:
  [[nodiscard]] bool ForecastIsDue() const;
  [[nodiscard]] std::string LastForecast() const;

  Collaborators with_;
};

}  // namespace skyhop
