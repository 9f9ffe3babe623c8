#include "spaceweather/sunspot_number.h"

#include <cmath>

#include "common/dates.h"
#include "common/numbers.h"
#include "common/text.h"
#include "spaceweather/line_text.h"

namespace skyhop::SolarForecastModule {
namespace {

constexpr std::string_view kPredictedSsn = "\"predicted_ssn\":";

/// "2026-11".
std::string MonthKey(std::chrono::year_month month) {
  return PaddedNumber(static_cast<int>(month.year()), 4) + "-" +
         PaddedNumber(static_cast<int>(static_cast<unsigned>(month.month())), 2);
}

/// Without the blanks and line ends of a JSON file that is broken into lines.
std::string Trimmed(std::string_view text) {
  return std::string(Trim(ReplaceAll(ReplaceAll(text, "\n", " "), "\r", " ")));
}

}  // namespace

SunspotNumberReading FindSunspotNumber(std::string_view text, std::chrono::year_month month) {
  const std::string object = "{\"time-tag\": \"" + MonthKey(month);
  SunspotNumberReading reading;
  const std::size_t found = text.find(object);
  reading.month_found = found != std::string_view::npos;
  if (!reading.month_found) return reading;

  const std::size_t name = text.find(kPredictedSsn, found + object.size());
  if (name == std::string_view::npos) return reading;
  const std::size_t start = name + kPredictedSsn.size();
  // A file without a comma here is incomplete. The closing brace ends the last member of an object.
  reading.ended = text.find(',', start) != std::string_view::npos;
  if (!reading.ended) return reading;
  const std::size_t end = text.find_first_of(",}", start);
  std::string value = Trimmed(text.substr(start, end - start));
  const std::optional<double> number = WholeNumberText(value);
  if (!number || !std::isfinite(*number)) return reading;
  if (LeadingNumber(value) < 0) value = "0";
  reading.value = std::move(value);
  return reading;
}

void SunspotNumber::DownloadSSN() {
  diagnostics_->Trap("SolarForecastModule.DownloadSSN", [&] {
    const std::chrono::year_month_day date = UtcDate(clock_->UtcNow());
    const std::chrono::year_month month(date.year(), date.month());
    procedure_->Run({
        .kind = DownloadKind::kSunspotNumber,
        .file_name = "SSN.txt",
        .status = "downloading SSN",
        .url_line = "SolarForecastModule.DownloadDownloadSSN, theurl = ",
        .missing_url = "No 'Predicted Sunspot Numbers' URL specified in the Configuration "
                       "window's 'Prediction URLs' panel",
        .failed = "unable to download sunspot number from ",
        // These names differ slightly from the procedure's name. Support searches logs for them.
        .missing_file = "SolarForecastModule.DownloadSSB: downloading sunspot number from ",
        .empty_file = "SolarForecastModule.DownloadSSSN: downloaded sunspot number from ",
        .complete_line = "SolarForecastModule.DownloadSSN complete",
        .report = [&](const std::string& message) { SSNError(message); },
        .on_failure =
            [&](const std::string& message) {
              origins_->Failed(SolarValue::kSunspotNumber, message);
            },
        .before_fetch = [] {},
        .parse =
            [&](const std::string& content, const std::string& url) {
              UseFile(content, url, month);
              return true;
            },
    });
  });
}

void SunspotNumber::UseFile(const std::string& content, const std::string& url,
                            std::chrono::year_month month) {
  const SunspotNumberReading reading = FindSunspotNumber(LineText(content), month);
  const std::string setting_zero = "\n\n" + url + "\n\nsetting SSN to 0";
  if (!reading.month_found) {
    GiveUp("   no match on desired month; giving up",
           "Can't obtain timely Smoothed Sunspot Number (SSN) from " + setting_zero);
  } else if (!reading.value) {
    GiveUp(reading.ended ? "   not a number" : "   no terminal ,",
           "Incorrect Smoothed Sunspot Number (SSN) format in " + setting_zero);
  } else {
    host_->PutValue(SolarValue::kSunspotNumber, *reading.value);
    origins_->Downloaded(SolarValue::kSunspotNumber, *reading.value, url);
  }
}

void SunspotNumber::GiveUp(const char* debug_line, const std::string& message) {
  diagnostics_->DebugLog(debug_line);
  origins_->Failed(SolarValue::kSunspotNumber, message);
  messages_->Show(message, "Skyhop SSN download");
  host_->PutValue(SolarValue::kSunspotNumber, "0");
}

void SunspotNumber::SSNError(const std::string& message) {
  messages_->Show(message, "Skyhop Sunspot Number");
  // All solar data share the prefix.
  diagnostics_->DebugLog("SolarForecastModule.SolarForecastError: " + message);
}

}  // namespace skyhop::SolarForecastModule
