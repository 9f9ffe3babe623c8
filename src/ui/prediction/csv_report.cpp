#include "ui/prediction/csv_report.h"

#include "common/numbers.h"
#include "ui/prediction/bands.h"

namespace skyhop {

std::optional<float> ReportFrequency(const PredictedDay& day, const ReportColumn& column,
                                     std::size_t hour) {
  if (day.HasSnr() && !column.in_snr_mode) return std::nullopt;
  return day.table.frequencies.at(column.row).at(hour);
}

int OpenLevel(const PredictedDay& day, std::size_t band, std::size_t hour) {
  return day.chart.FreqOpen(kBandLineFrequencies.at(band), static_cast<std::int16_t>(hour));
}

std::string BandNumber(std::size_t band) {
  const std::string_view name = kBandNames.at(band);
  return std::string(name.substr(0, name.size() - 1));
}

std::string CsvReport(const PredictedDay& day) {
  std::string text = "hour_utc";
  for (const ReportColumn& column : kReportColumns) {
    text += std::string(",") + column.name + "_mhz";
  }
  for (std::size_t band = 0; band < kBandCount; ++band) {
    text += ",open_" + BandNumber(band) + "m";
  }
  text += "\n";
  for (std::size_t hour = 0; hour < kReportHours; ++hour) {
    text += std::to_string(hour);
    for (const ReportColumn& column : kReportColumns) {
      const std::optional<float> value = ReportFrequency(day, column, hour);
      text += "," + (value ? FixedText(*value, 2) : std::string());
    }
    for (std::size_t band = 0; band < kBandCount; ++band) {
      text += "," + std::to_string(OpenLevel(day, band, hour));
    }
    text += "\n";
  }
  return text;
}

}  // namespace skyhop
