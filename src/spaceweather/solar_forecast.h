#pragma once

#include <optional>
#include <string>

#include "common/clock.h"
#include "spaceweather/download_procedure.h"
#include "spaceweather/forecast_table.h"

namespace skyhop::SolarForecastModule {

/// The caption of the forecast's window. ": " and the time of issue follow it.
inline constexpr const char* kForecastCaption = "Forecast: Solar and Geomagnetic Parameters";

/// The forecast of solar flux and A index for the coming 31 days.
class Forecast {
 public:
  /// All must outlive this object.
  Forecast(DownloadProcedure& procedure, UserMessages& messages, Diagnostics& diagnostics,
           const Clock& clock)
      : procedure_(&procedure), messages_(&messages), diagnostics_(&diagnostics), clock_(&clock) {}

  /// Fetches the forecast into the table. Clears the table when the fetch begins, restores it when
  /// the user cancels, and reports failures to the user.
  void DownloadSolarForecast();

  /// The time of the last successful download, in UTC; a time long ago if there was none.
  void SetLastForecast(UtcTime time) { last_forecast_ = time; }
  [[nodiscard]] UtcTime GetLastForecast() const { return last_forecast_; }

  /// Tells the user about a failure and logs it.
  void SolarForecastError(const std::string& message);

  [[nodiscard]] const ForecastTable& Table() const { return table_; }
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  /// When the table was filled; nothing before that and once it was cleared for a new attempt.
  [[nodiscard]] const std::optional<UtcTime>& FilledAt() const { return filled_at_; }
  /// The address that it came from.
  [[nodiscard]] const std::string& Source() const { return source_; }
  /// Why there is no forecast; empty after a success.
  [[nodiscard]] const std::string& Failure() const { return failure_; }

 private:
  void ClearValidity();
  [[nodiscard]] bool LoadSolarHistory(const std::string& content, const std::string& url,
                                      int today);

  DownloadProcedure* procedure_;
  UserMessages* messages_;
  Diagnostics* diagnostics_;
  const Clock* clock_;
  ForecastTable table_;
  std::string caption_ = kForecastCaption;
  UtcTime last_forecast_{};
  std::optional<UtcTime> filled_at_;
  std::string source_;
  std::string failure_;
};

}  // namespace skyhop::SolarForecastModule
