#include "spaceweather/solar_forecast.h"

#include <tuple>
#include <utility>

#include "common/dates.h"
#include "spaceweather/forecast_parser.h"
#include "spaceweather/line_text.h"

namespace skyhop::SolarForecastModule {

void Forecast::DownloadSolarForecast() {
  diagnostics_->Trap("SolarForecastModule.DownloadSolarForecast", [&] {
    int today = 0;
    const auto before = std::pair(table_, filled_at_);
    procedure_->Run({
        .kind = DownloadKind::kForecast,
        .file_name = "SolarForecast.txt",
        .status = "downloading forecast",
        .url_line = "SolarForecastModule.DownloadSolarForecast, theurl = ",
        .missing_url = "No 'Predicted SFI and A-index' URL specified in the Configuration "
                       "window's 'Prediction URLs' panel",
        .failed = "unable to download solar forecast from ",
        .missing_file = "SolarForecastModule.DownloadSolarForecast: downloading solar forecast "
                        "from ",
        .empty_file = "SolarForecastModule.DownloadSolarForecast: downloaded solar forecast from ",
        .complete_line = "SolarForecastModule.DownloadSolarForecast complete",
        .report = [&](const std::string& message) { SolarForecastError(message); },
        .on_failure = [&](const std::string& message) { failure_ = message; },
        .before_fetch =
            [&] {
              today = static_cast<int>(static_cast<unsigned>(UtcDate(clock_->UtcNow()).day()));
              ClearValidity();
            },
        .on_cancel = [&] { std::tie(table_, filled_at_) = before; },
        .parse = [&](const std::string& content,
                     const std::string& url) { return LoadSolarHistory(content, url, today); },
    });
  });
}

void Forecast::ClearValidity() {
  for (std::size_t day = kFirstDaySlot; day >= 1; --day) {
    ForecastSlot& slot = table_.at(day);
    slot.valid = false;
    // Otherwise a file without flux values would show those of an earlier file under its own dates.
    for (const std::size_t column : kFluxColumns) slot.columns.at(column) = -1;
  }
  filled_at_.reset();
}

bool Forecast::LoadSolarHistory(const std::string& content, const std::string& url, int today) {
  diagnostics_->DebugLog(
      "SolarForecastModule.LoadSolarHistory: loading data from SolarHistory file");
  const std::string text = LineText(content);
  caption_ = kForecastCaption;
  if (const auto issued = IssuedText(text)) caption_ += ": " + *issued;
  const std::string problem = ParseForecast(text, today, table_);
  if (!problem.empty()) {
    failure_ = "SolarForecastModule.DownloadSolarForecast: downloaded solar forecast from " + url +
               " " + problem;
    SolarForecastError(failure_);
    return false;
  }
  last_forecast_ = clock_->UtcNow();
  filled_at_ = last_forecast_;
  source_ = url;
  failure_.clear();
  return true;
}

void Forecast::SolarForecastError(const std::string& message) {
  messages_->Show(message, "Skyhop Solar forecast");
  diagnostics_->DebugLog("SolarForecastModule.SolarForecastError: " + message);
}

}  // namespace skyhop::SolarForecastModule
