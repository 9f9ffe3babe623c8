#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "common/clock.h"
#include "spaceweather/download_procedure.h"
#include "spaceweather/value_origins.h"

namespace skyhop::SolarForecastModule {

/// A month's entry in a file of predicted sunspot numbers.
struct SunspotNumberReading {
  bool month_found = false;
  bool ended = false;  ///< whether a comma follows the number, in its object or later
  /// As the file writes it, "0" for a negative one; nothing when there is no number.
  std::optional<std::string> value;
};

/// Looks a month up in a file of predicted sunspot numbers: JSON objects that begin with the member
/// "time-tag", one blank after its colon, and have the number as "predicted_ssn".
[[nodiscard]] SunspotNumberReading FindSunspotNumber(std::string_view text,
                                                     std::chrono::year_month month);

/// The smoothed sunspot number predicted for this month.
class SunspotNumber {
 public:
  /// All must outlive this object.
  SunspotNumber(DownloadProcedure& procedure, DownloadHost& host, ValueOrigins& origins,
                UserMessages& messages, Diagnostics& diagnostics, const Clock& clock)
      : procedure_(&procedure),
        host_(&host),
        origins_(&origins),
        messages_(&messages),
        diagnostics_(&diagnostics),
        clock_(&clock) {}

  /// Fetches the file and puts this month's number into its box: "0" if the file has none. Without
  /// a file the box stays unchanged. Reports failures to the user.
  void DownloadSSN();

  /// Tells the user about a failure and logs it.
  void SSNError(const std::string& message);

 private:
  void UseFile(const std::string& content, const std::string& url, std::chrono::year_month month);
  void GiveUp(const char* debug_line, const std::string& message);

  DownloadProcedure* procedure_;
  DownloadHost* host_;
  ValueOrigins* origins_;
  UserMessages* messages_;
  Diagnostics* diagnostics_;
  const Clock* clock_;
};

}  // namespace skyhop::SolarForecastModule
