#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "engine/results_parser.h"
#include "engine/results_table.h"

namespace skyhop {

/// Hours of a report: 0 to 23 UTC.
inline constexpr std::size_t kReportHours = kHourCount - 1;

/// A finished prediction. Both referenced objects must outlive this object.
struct PredictedDay {
  const ResultsTable& table;
  Diagnostics& diagnostics;  ///< receives the reason if an opening cannot be computed
  EngineChoice engine = EngineChoice::kNone;

  /// Whether the results contain SNR and reliability by band.
  [[nodiscard]] bool HasSnr() const { return engine == EngineChoice::kVoaCapSnr; }
};

/// A frequency that reports contain for each hour.
struct ReportColumn {
  const char* title;  ///< for people
  const char* name;   ///< for programs
  std::size_t row;    ///< of the results table
  bool in_snr_mode;   ///< whether results with SNR and reliability contain it too
};
inline constexpr std::array<ReportColumn, 4> kReportColumns = {{
    {"FOT", "fot", rows::kMuf90, true},
    {"MUF", "muf", rows::kMuf50, true},
    {"HPF", "hpf", rows::kMuf10, false},
    {"LUF", "luf", rows::kLuf, false},
}};

/// The column's value in MHz; nothing if the engine does not predict it or its results lack it for
/// the hour.
[[nodiscard]] std::optional<float> ReportFrequency(const PredictedDay& day,
                                                   const ReportColumn& column, std::size_t hour);

/// How reliably a band is open, 0 to 4, see IONCAPModule::FreqOpen; nothing if the results lack the
/// band's reliability.
[[nodiscard]] std::optional<int> OpenLevel(const PredictedDay& day, std::size_t band,
                                           std::size_t hour);

/// Whether a frequency reaches the required reliability; nothing for results with SNR and
/// reliability by band, which do not contain this.
[[nodiscard]] std::optional<bool> Reached(const PredictedDay& day, std::size_t hour);

/// The band's wavelength in metres: "20" of "20M".
[[nodiscard]] std::string BandNumber(std::size_t band);

/// Comma-separated values with a header line. The columns are: hour; FOT, MUF, HPF and LUF in MHz;
/// how open each band is; if the results contain them, each band's reliability in percent, SNR in
/// dB, mode and signal power in dBW; whether a frequency reaches the required reliability (1 or 0);
/// the engine's name and version. A value that the engine does not predict, or that its results
/// lack, is empty.
[[nodiscard]] std::string CsvReport(const PredictedDay& day,
                                    const IONCAPModule::ResultsHeading& heading);

}  // namespace skyhop
