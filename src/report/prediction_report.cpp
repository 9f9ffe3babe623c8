#include "report/prediction_report.h"

#include <nlohmann/json.hpp>
#include <optional>

#include "bands/bands.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {
namespace {

std::string RightAligned(const std::string& text, std::size_t width) {
  return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

}  // namespace

const char* EngineWord(EngineChoice engine) {
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

namespace {

constexpr std::size_t kFrequencyWidth = 7;
constexpr std::size_t kBandWidth = 4;

bool AllHoursReached(const PredictionReport& report) {
  for (std::size_t hour = 0; hour < kReportHours; ++hour) {
    if (!Reached(report.day, hour).value_or(true)) return false;
  }
  return true;
}

std::string LevelText(std::optional<int> level, bool reached) {
  if (!reached) return "x";
  if (!level) return "-";
  return *level > 0 ? std::to_string(*level) : ".";
}

std::string Legend(const PredictionReport& report) {
  if (report.day.HasSnr()) {
    const auto above = [](std::size_t level) {
      return " on more than " + std::to_string(IONCAPModule::kReliabilityLimits.at(level - 1));
    };
    return "Frequencies in MHz. Bands: 4 reliable" + above(4) + " % of the days, 3" + above(3) +
           ",\n2" + above(2) + ", 1" + above(1) + "; \".\" closed; \"-\" not predicted.\n";
  }
  std::string legend =
      "Frequencies in MHz. Bands: 3 open on 90 % of the days or more, 2 on half of them or "
      "more,\n1 on 10 % or more; \".\" closed.\n";
  if (!AllHoursReached(report)) {
    legend += "\"!\" no frequency reaches the required reliability, so no band is open (\"x\").\n";
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
  for (const ReportColumn& column : kReportColumns) {
    text += RightAligned(column.title, kFrequencyWidth);
  }
  text += "  ";
  for (std::size_t band = 0; band < kBandCount; ++band) {
    text += RightAligned(BandNumber(band), kBandWidth);
  }
  text += " m\n";
  for (std::size_t hour = 0; hour < kReportHours; ++hour) {
    text += " " + PaddedNumber(static_cast<int>(hour), 2);
    for (const ReportColumn& column : kReportColumns) {
      const std::optional<float> value = ReportFrequency(report.day, column, hour);
      text += RightAligned(value ? FixedText(*value, 2) : "-", kFrequencyWidth);
    }
    const bool reached = Reached(report.day, hour).value_or(true);
    text += reached ? "  " : "! ";
    for (std::size_t band = 0; band < kBandCount; ++band) {
      text += RightAligned(LevelText(OpenLevel(report.day, band, hour), reached), kBandWidth);
    }
    text += "\n";
  }
  return text + "\n" + Legend(report) + "\n" + Provenance(report);
}

std::string JsonReport(const PredictionReport& report) {
  using Json = nlohmann::ordered_json;
  // Convert through text: a single-precision value as a double would show meaningless decimals.
  const auto number = [](float value) { return LeadingNumber(NumberText(value)); };
  Json json;
  json["summary"] = report.summary;
  json["date"] = report.date;
  json["engine"] = {{"choice", EngineWord(report.day.engine)},
                    {"name", report.heading.engine},
                    {"version", report.heading.version},
                    {"fallback", report.fallback}};
  if (report.fallback) json["engine"]["fallback_reason"] = report.fallback_reason;
  json["ssn"] = LeadingNumber(report.sunspot_number);
  json["hours"] = Json::array();
  for (std::size_t hour = 0; hour < kReportHours; ++hour) {
    Json entry;
    entry["hour"] = hour;
    for (const ReportColumn& column : kReportColumns) {
      const std::optional<float> value = ReportFrequency(report.day, column, hour);
      entry[column.name] = value ? Json(number(*value)) : Json(nullptr);
    }
    const std::optional<bool> reached = Reached(report.day, hour);
    entry["reached"] = reached ? Json(*reached) : Json(nullptr);
    entry["bands"] = Json::array();
    for (std::size_t band = 0; band < kBandCount; ++band) {
      const std::optional<int> level = OpenLevel(report.day, band, hour);
      Json line = {{"band", kBandNames.at(band)}, {"open", level ? Json(*level) : Json(nullptr)}};
      // The SNR decks do not contain a frequency for 160 m.
      if (report.day.HasSnr() && band > 0) {
        const ResultsTable& table = report.day.table;
        const auto put = [&](const char* name, BandQuantity quantity, const Json& value) {
          line[name] = table.Known(quantity, band, hour) ? value : Json(nullptr);
        };
        put("snr", BandQuantity::kSnr, number(table.snr[band][hour]));
        put("reliability", BandQuantity::kReliability, number(table.reliability[band][hour]));
        put("mode", BandQuantity::kMode, std::string(Trim(table.mode[band][hour])));
        put("signal_dbw", BandQuantity::kSignalPower, table.signal_power[band][hour]);
      }
      entry["bands"].push_back(std::move(line));
    }
    json["hours"].push_back(std::move(entry));
  }
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace skyhop
