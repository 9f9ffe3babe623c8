#pragma once

#include <filesystem>
#include <memory>

#include "common/pause.h"
#include "platform/platform.h"
#include "spaceweather/background_fetcher.h"
#include "ui/spaceweather/current_conditions_window.h"
#include "ui/spaceweather/solar_forecast_window.h"
#include "ui/spaceweather/space_weather_service.h"

namespace skyhop {

/// All parts of the program that concern solar data, created in the order of their dependencies.
/// The prediction window sends its commands to `service`; `forecast_window` and `conditions_window`
/// receive the events of their windows.
struct SpaceWeatherParts {
  /// `pause` lets the windows repaint themselves during a download.
  struct Collaborators {
    PredictionView& view;
    ForecastView& forecast_view;
    ConditionsView& conditions_view;
    const Configuration& configuration;
    UserMessages& messages;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
    const Clock& clock;
    Pause& pause;
    std::filesystem::path program_folder;
  };

  explicit SpaceWeatherParts(const Collaborators& with,
                             std::unique_ptr<UrlFetcher> url_fetcher = platform::MakeUrlFetcher())
      : fetcher(std::move(url_fetcher)),
        background(fetcher, with.pause),
        files(background, with.diagnostics),
        host(with.configuration),
        procedure(host, files, with.messages, with.diagnostics, with.program_folder),
        origins(with.settings, with.clock),
        forecast(procedure, with.messages, with.diagnostics, with.clock),
        sunspot_number(procedure, host, origins, with.messages, with.diagnostics, with.clock),
        timer(with.view),
        forecast_window(
            {with.forecast_view, forecast, timer, with.settings, with.diagnostics, with.clock}),
        conditions_window({with.conditions_view, with.settings, with.diagnostics}),
        conditions(procedure, host, conditions_window, origins, with.messages, with.diagnostics),
        service({host, forecast, sunspot_number, conditions, origins, forecast_window,
                 conditions_window, timer, with.view, with.diagnostics, with.clock}) {}

  std::shared_ptr<UrlFetcher> fetcher;
  BackgroundFetcher background;
  Common::FileDownload files;
  WindowDownloadHost host;
  DownloadProcedure procedure;
  ValueOrigins origins;
  SolarForecastModule::Forecast forecast;
  SolarForecastModule::SunspotNumber sunspot_number;
  ForecastTimer timer;
  SolarForecast forecast_window;
  CurrentConditions conditions_window;
  CurrentConditionsModule::Conditions conditions;
  SpaceWeatherService service;
};

}  // namespace skyhop
