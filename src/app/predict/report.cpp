#include "app/predict/report.h"

#include <nlohmann/json.hpp>
#include <optional>

#include "common/numbers.h"
#include "common/text.h"
#include "ui/prediction/bands.h"

namespace skyhop {
namespace {

constexpr int kHoursOfDay = 24;

/// Name in the table, in the CSV header and in JSON, and the row of the results table.
struct Column {
  const char* title;
  const char* name;
  std::size_t row;
  /// Whether the results with SNR and reliability have it too.
  bool in_snr_mode;
};
constexpr Column kColumns[] = {{"FOT", "fot", rows::kMuf90, true},
                               {"MUF", "muf", rows::kMuf50, true},
                               {"HPF", "hpf", rows::kMuf10, false},
                               {"LUF", "luf", rows::kLuf, false}};

bool IsSnrMode(const PredictionReport& report) {
  return report.engine == EngineChoice::kVoaCapSnr;
}

std::optional<double> Frequency(const PredictionReport& report, const Column& column,
                                std::size_t hour) {
  if (IsSnrMode(report) && !column.in_snr_mode) return std::nullopt;
  return static_cast<double>(report.table.frequencies[column.row][hour]);
}

int OpenLevel(const PredictionReport& report, std::size_t band, std::size_t hour) {
  return report.chart.FreqOpen(kBandLineFrequencies.at(band), static_cast<std::int16_t>(hour));
}

std::string RightAligned(const std::string& text, std::size_t width) {
  return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

const char* EngineName(EngineChoice engine) {
  switch (engine) {
    case EngineChoice::kIonCap:
      return "ioncap";
    case EngineChoice::kIcePac:
      return "icepac";
    case EngineChoice::kVoaCap:
      return "voacap";
    case EngineChoice::kVoaCapSnr:
      return "voacap-snr";
    case EngineChoice::kNone:
      break;
  }
  return "";
}

/// "20M" as "20".
std::string BandNumber(std::size_t band) {
  const std::string_view name = kBandNames.at(band);
  return std::string(name.substr(0, name.size() - 1));
}

constexpr std::size_t kFrequencyWidth = 7;
constexpr std::size_t kBandWidth = 4;

/// Engines print minus the MUF where no frequency reaches the required reliability.
bool LufIsMissing(const PredictionReport& report) {
  for (std::size_t hour = 0; hour < kHoursOfDay; ++hour) {
    const float luf = report.table.Luf(hour);
    if (luf > 0 && luf == report.table.Muf50(hour)) return true;
  }
  return false;
}

std::string Legend(const PredictionReport& report) {
  if (IsSnrMode(report)) {
    return "Frequencies in MHz. Bands: 4 reliable on more than 80 % of the days, 3 on more than "
           "60,\n2 on more than 40, 1 on more than 20; \".\" closed.\n";
  }
  std::string legend =
      "Frequencies in MHz. Bands: 3 open on 90 % of the days or more, 2 on half of them or "
      "more,\n1 on 10 % or more; \".\" closed.\n";
  if (LufIsMissing(report)) {
    legend +=
        "Where the LUF equals the MUF, no frequency reaches the required reliability at that "
        "hour.\n";
  }
  return legend;
}

std::string Provenance(const PredictionReport& report) {
  std::string engine = report.heading.engine.empty() ? "unnamed" : report.heading.engine;
  std::string text = "Engine: " + engine;
  if (!report.heading.version.empty()) text += ", version " + report.heading.version;
  text += "\nSSN: " + report.sunspot_number;
  if (report.sunspot_number_derived) text += ", from a solar flux of " + report.solar_flux;
  return text + "\n";
}

}  // namespace

std::string TableReport(const PredictionReport& report) {
  std::string text = report.summary + "\n\nUTC";
  for (const Column& column : kColumns) text += RightAligned(column.title, kFrequencyWidth);
  text += "  ";
  for (std::size_t band = 0; band < kBandCount; ++band) {
    text += RightAligned(BandNumber(band), kBandWidth);
  }
  text += " m\n";
  for (int hour = 0; hour < kHoursOfDay; ++hour) {
    const auto index = static_cast<std::size_t>(hour);
    text += " " + PaddedNumber(hour, 2);
    for (const Column& column : kColumns) {
      const std::optional<double> value = Frequency(report, column, index);
      text += RightAligned(value ? FixedText(*value, 2) : "-", kFrequencyWidth);
    }
    text += "  ";
    for (std::size_t band = 0; band < kBandCount; ++band) {
      const int level = OpenLevel(report, band, index);
      text += RightAligned(level > 0 ? std::to_string(level) : ".", kBandWidth);
    }
    text += "\n";
  }
  return text + "\n" + Legend(report) + "\n" + Provenance(report);
}

std::string CsvReport(const PredictionReport& report) {
  std::string text = "hour_utc";
  for (const Column& column : kColumns) text += std::string(",") + column.name + "_mhz";
  for (std::size_t band = 0; band < kBandCount; ++band) {
    text += ",open_" + BandNumber(band) + "m";
  }
  text += "\n";
  for (int hour = 0; hour < kHoursOfDay; ++hour) {
    const auto index = static_cast<std::size_t>(hour);
    text += std::to_string(hour);
    for (const Column& column : kColumns) {
      const std::optional<double> value = Frequency(report, column, index);
      text += "," + (value ? FixedText(*value, 2) : std::string());
    }
    for (std::size_t band = 0; band < kBandCount; ++band) {
      text += "," + std::to_string(OpenLevel(report, band, index));
    }
    text += "\n";
  }
  return text;
}

std::string JsonReport(const PredictionReport& report) {
  using Json = nlohmann::ordered_json;
  // Single-precision values carry no more than these decimals.
  const auto number = [](float value) { return LeadingNumber(NumberText(value)); };
  Json json;
  json["summary"] = report.summary;
  json["date"] = report.date;
  json["engine"] = {{"choice", EngineName(report.engine)},
                    {"name", report.heading.engine},
                    {"version", report.heading.version}};
  json["ssn"] = LeadingNumber(report.sunspot_number);
  json["hours"] = Json::array();
  for (std::size_t hour = 0; hour < kHoursOfDay; ++hour) {
    Json entry;
    entry["hour"] = hour;
    for (const Column& column : kColumns) {
      entry[column.name] = IsSnrMode(report) && !column.in_snr_mode
                               ? Json(nullptr)
                               : Json(number(report.table.frequencies[column.row][hour]));
    }
    entry["bands"] = Json::array();
    for (std::size_t band = 0; band < kBandCount; ++band) {
      Json line = {{"band", kBandNames.at(band)}, {"open", OpenLevel(report, band, hour)}};
      // 160 m is not among the frequencies that the SNR decks ask for.
      if (IsSnrMode(report) && band > 0) {
        line["snr"] = number(report.table.snr[band][hour]);
        line["reliability"] = number(report.table.reliability[band][hour]);
        line["mode"] = std::string(Trim(report.table.mode[band][hour]));
        line["signal_dbw"] = report.table.signal_power[band][hour];
      }
      entry["bands"].push_back(std::move(line));
    }
    json["hours"].push_back(std::move(entry));
  }
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace skyhop
