#include "report/csv_report.h"

#include "bands/bands.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {

std::optional<float> ReportFrequency(const PredictedDay& day, const ReportColumn& column,
                                     std::size_t hour) {
  const float value = day.table.frequencies.at(column.row).at(hour);
  if (day.HasSnr() && (!column.in_snr_mode || !(value > 0))) return std::nullopt;
  return value;
}

std::optional<int> OpenLevel(const PredictedDay& day, std::size_t band, std::size_t hour) {
  if (day.HasSnr() && !day.table.Known(BandQuantity::kReliability, band, hour)) {
    return std::nullopt;
  }
  // If no frequency reaches the required reliability, no band is open.
  if (!day.table.reached.at(hour)) return 0;
  return IONCAPModule::FreqOpen(day.table, day.engine, kBandLineFrequencies.at(band),
                                static_cast<std::int16_t>(hour), day.diagnostics);
}

std::optional<bool> Reached(const PredictedDay& day, std::size_t hour) {
  if (day.HasSnr()) return std::nullopt;
  return day.table.reached.at(hour);
}

std::string BandNumber(std::size_t band) {
  const std::string_view name = kBandNames.at(band);
  return std::string(name.substr(0, name.size() - 1));
}

namespace {

/// A predicted quantity of a band, beside its opening.
struct BandColumn {
  const char* name;
  BandQuantity quantity;
  std::string (*text)(const ResultsTable& table, std::size_t band, std::size_t hour);
};
constexpr std::array<BandColumn, 4> kBandColumns = {{
    {"reliability", BandQuantity::kReliability,
     [](const ResultsTable& table, std::size_t band, std::size_t hour) {
       return FixedText(100.0 * static_cast<double>(table.reliability[band][hour]), 0);
     }},
    {"snr_db", BandQuantity::kSnr,
     [](const ResultsTable& table, std::size_t band, std::size_t hour) {
       return NumberText(table.snr[band][hour]);
     }},
    {"mode", BandQuantity::kMode,
     [](const ResultsTable& table, std::size_t band, std::size_t hour) {
       return std::string(Trim(table.mode[band][hour]));
     }},
    {"signal_dbw", BandQuantity::kSignalPower,
     [](const ResultsTable& table, std::size_t band, std::size_t hour) {
       return std::to_string(table.signal_power[band][hour]);
     }},
}};

/// The engines do not predict these quantities for 160 m.
constexpr std::size_t kFirstBand = 1;

/// A text from a results file as a field.
std::string Quoted(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  return '"' + ReplaceAll(text, "\"", "\"\"") + '"';
}

/// The results of `cell` for each of these columns and bands, each after a comma.
template <class Cell>
std::string BandCells(const PredictedDay& day, const Cell& cell) {
  std::string text;
  if (!day.HasSnr()) return text;
  for (const BandColumn& column : kBandColumns) {
    for (std::size_t band = kFirstBand; band < kBandCount; ++band) {
      text += "," + cell(column, band);
    }
  }
  return text;
}

}  // namespace

std::string CsvReport(const PredictedDay& day, const IONCAPModule::ResultsHeading& heading) {
  const std::string engine = "," + Quoted(heading.engine) + "," + Quoted(heading.version) + "\n";
  std::string text = "hour_utc";
  for (const ReportColumn& column : kReportColumns) {
    text += std::string(",") + column.name + "_mhz";
  }
  for (std::size_t band = 0; band < kBandCount; ++band) {
    text += ",open_" + BandNumber(band) + "m";
  }
  text += BandCells(day, [](const BandColumn& column, std::size_t band) {
    return std::string(column.name) + "_" + BandNumber(band) + "m";
  });
  text += ",reached,engine,engine_version\n";
  for (std::size_t hour = 0; hour < kReportHours; ++hour) {
    text += std::to_string(hour);
    for (const ReportColumn& column : kReportColumns) {
      const std::optional<float> value = ReportFrequency(day, column, hour);
      text += "," + (value ? FixedText(*value, 2) : std::string());
    }
    for (std::size_t band = 0; band < kBandCount; ++band) {
      const std::optional<int> level = OpenLevel(day, band, hour);
      text += "," + (level ? std::to_string(*level) : std::string());
    }
    text += BandCells(day, [&](const BandColumn& column, std::size_t band) {
      const bool known = day.table.Known(column.quantity, band, hour);
      return known ? column.text(day.table, band, hour) : std::string();
    });
    const std::optional<bool> reached = Reached(day, hour);
    text += std::string(",") + (reached ? (*reached ? "1" : "0") : "") + engine;
  }
  return text;
}

}  // namespace skyhop
