#include "ui/spaceweather/space_weather_service.h"

#include <array>

namespace skyhop {
namespace {

/// A forecast older than this is fetched again, in minutes.
constexpr std::chrono::minutes kForecastLife{59};
/// Backdates the forecast by enough to force a download.
constexpr std::chrono::hours kLongAgo{3};
constexpr std::chrono::milliseconds kAtOnce{1};

constexpr std::array<SolarValue, kSolarValueCount> kValues = {
    SolarValue::kFlux, SolarValue::kKindex, SolarValue::kSunspotNumber};

}  // namespace

void SpaceWeatherService::Attach(DownloadWindow* window) {
  with_.host.Attach(window);
  if (window == nullptr) return;
  with_.diagnostics.Trap("SpaceWeather.Attach", [&] { with_.origins.Load(); });
}

void SpaceWeatherService::Terminate() {
  with_.forecast_window.Form_Unload();
  with_.conditions_window.Form_Unload();
}

void SpaceWeatherService::DownloadSSN() {
  with_.sunspot_number.DownloadSSN();
}

void SpaceWeatherService::ShowForecast() {
  with_.forecast.SetLastForecast(with_.clock.UtcNow() - kLongAgo);
  with_.forecast_window.Show();
  with_.timer.Restart(kAtOnce);
}

void SpaceWeatherService::SolarForecastTimer_Tick() {
  with_.timer.Disable();
  with_.timer.SetInterval(ForecastTimer::kInterval);
  if (with_.forecast_window.Visible()) with_.timer.Enable();
  if (!ForecastIsDue()) return;
  with_.forecast.DownloadSolarForecast();
  with_.forecast_window.UpdateSolarGraphs();
}

bool SpaceWeatherService::ForecastIsDue() const {
  const auto age = with_.clock.UtcNow() - with_.forecast.GetLastForecast();
  // If the clock was set back, the forecast would otherwise seem new for too long.
  return age < std::chrono::minutes(-1) ||
         std::chrono::floor<std::chrono::minutes>(age) > kForecastLife;
}

void SpaceWeatherService::UpdateCurrentConditions() {
  with_.conditions.Update();
}

void SpaceWeatherService::ShowCurrentConditions() {
  // Show the window first, because Update fills only a visible window.
  with_.conditions_window.Show();
  with_.conditions.Update();
}

std::string SpaceWeatherService::OriginOf(TextField field) const {
  for (const SolarValue value : kValues) {
    if (FieldOf(value) == field) return with_.origins.Describe(value, with_.view.Text(field));
  }
  return {};
}

std::string SpaceWeatherService::LastForecast() const {
  if (!with_.forecast.Failure().empty()) return "No forecast: " + with_.forecast.Failure();
  const std::optional<UtcTime>& filled = with_.forecast.FilledAt();
  if (!filled) return "Not used since the program was started";
  const std::string from = with_.forecast.Source() == with_.host.Url(DownloadKind::kForecast)
                               ? ""
                               : " from " + with_.forecast.Source();
  return "Forecast, " + AgeText(*filled, with_.clock.UtcNow()) + " (" + MomentText(*filled) + ")" +
         from;
}

std::string SpaceWeatherService::LastGiven(Address url) const {
  switch (url) {
    case Address::kSFIURL:
      return LastForecast();
    case Address::kSSNURL: {
      const std::string address = with_.host.Url(DownloadKind::kSunspotNumber);
      return "Sunspot number " + with_.origins.Last(SolarValue::kSunspotNumber, address) +
             with_.origins.LastFailure(SolarValue::kSunspotNumber);
    }
    case Address::kWWVURL: {
      const std::string address = with_.host.Url(DownloadKind::kCurrentConditions);
      // Both values are in the same file, so both have the same failure.
      std::string failure = with_.origins.LastFailure(SolarValue::kFlux);
      if (failure.empty()) failure = with_.origins.LastFailure(SolarValue::kKindex);
      return "Solar flux " + with_.origins.Last(SolarValue::kFlux, address) + "; K index " +
             with_.origins.Last(SolarValue::kKindex, address) + failure;
    }
    default:
      return {};
  }
}

}  // namespace skyhop
