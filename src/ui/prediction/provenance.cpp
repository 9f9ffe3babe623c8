#include "ui/prediction/provenance.h"

#include <chrono>
#include <cmath>
#include <optional>
#include <vector>

#include "common/dates.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {
namespace {

using IONCAPModule::ResultsHeading;

constexpr const char* kEstimateEngine = "SKYHOP ESTIMATE ENGINE";
constexpr const char* kSeparator = " \xC2\xB7 ";
constexpr double kWattsPerKilowatt = 1000;

std::string Note(const ResultsHeading& heading, EngineChoice engine, const AskedPrediction& asked,
                 UtcTime computed) {
  std::string text = EngineName(heading.engine, engine);
  if (!heading.version.empty()) text += " " + heading.version;
  text += kSeparator + std::string("sunspot number ") + NumberText(asked.sunspot_number);
  if (asked.from_flux) text += " (from flux " + std::string(Trim(asked.solar_flux)) + ")";
  const HourMinute time = UtcHourMinute(computed);
  text += kSeparator + std::string("computed ") + DateText(UtcDate(computed)) + " " +
          PaddedNumber(time.hour, 2) + ":" + PaddedNumber(time.minute, 2) + " UTC";
  if (asked.by_peer) text += kSeparator + std::string("requested by a peer");
  return text;
}

/// The month of an English name of three letters.
std::optional<std::chrono::month> MonthOf(const std::string& name) {
  for (unsigned number = 1; number <= 12; ++number) {
    if (EqualsIgnoringCase(name, MonthName(std::chrono::month(number)))) {
      return std::chrono::month(number);
    }
  }
  return std::nullopt;
}

std::string DateDifference(const ResultsHeading& heading, const AskedPrediction& asked) {
  const auto date = ParseDate(asked.date);
  if (!date) return {};
  const std::optional<std::chrono::month> month = MonthOf(heading.month);
  const std::optional<double> year = WholeNumberText(heading.year);
  const bool other_month = month && *month != date->month();
  const bool other_year = year && *year != static_cast<int>(date->year());
  if (!other_month && !other_year) return {};
  std::string told;
  std::string wanted;
  const auto add = [](std::string& text, const std::string& part) {
    text += (text.empty() ? "" : " ") + part;
  };
  if (month) {
    add(told, MonthName(*month));
    add(wanted, MonthName(date->month()));
  }
  if (year) {
    add(told, NumberText(*year));
    add(wanted, std::to_string(static_cast<int>(date->year())));
  }
  return told + ", not " + wanted;
}

/// Half of the last digit that a number text shows.
double HalfDigit(const std::string& text) {
  const std::size_t point = text.find('.');
  const std::size_t decimals = point == std::string::npos ? 0 : text.size() - point - 1;
  return 0.5 * std::pow(10.0, -static_cast<double>(decimals));
}

/// Half of the last digit of each script card that is asked about.
struct CardRounding {
  double sunspot_number;
  double kilowatts;
};

CardRounding RoundingOf(EngineChoice engine) {
  if (engine == EngineChoice::kIonCap) return {0.005, 0.005};
  return {0.05, 0.00005};
}

/// The number that a heading shows, when it is not `asked` in any rounding.
std::optional<double> OtherNumber(const std::string& shown, double asked, double card_rounding) {
  const std::string text(Trim(shown));
  const std::optional<double> number = WholeNumberText(text);
  if (!number) return std::nullopt;
  // Single precision and decimal fractions cost a little more.
  const double slack = 1e-6 * std::fmax(1.0, std::fabs(asked));
  if (std::fabs(*number - asked) <= HalfDigit(text) + card_rounding + slack) return std::nullopt;
  return number;
}

std::string Difference(const ResultsHeading& heading, EngineChoice engine,
                       const AskedPrediction& asked) {
  std::vector<std::string> parts;
  if (std::string date = DateDifference(heading, asked); !date.empty()) {
    parts.push_back(std::move(date));
  }
  const CardRounding rounding = RoundingOf(engine);
  if (const auto other =
          OtherNumber(heading.sunspot_number, static_cast<double>(asked.sunspot_number),
                      rounding.sunspot_number)) {
    parts.push_back("sunspot number " + NumberText(*other) + ", not " +
                    NumberText(asked.sunspot_number));
  }
  // Those of IONCAP carry whole watts.
  const double watts = engine == EngineChoice::kIonCap ? std::nearbyint(asked.power) : asked.power;
  if (const auto other =
          OtherNumber(heading.power, watts / kWattsPerKilowatt, rounding.kilowatts)) {
    parts.push_back(NumberText(static_cast<float>(*other * kWattsPerKilowatt)) + " W, not " +
                    NumberText(watts) + " W");
  }
  std::string text;
  for (const std::string& part : parts) {
    text += (text.empty() ? "Results are for " : "; for ") + part;
  }
  return text;
}

}  // namespace

bool IsEstimate(const std::string& named) {
  return EqualsIgnoringCase(named, kEstimateEngine);
}

std::string EngineName(const std::string& named, EngineChoice engine) {
  if (IsEstimate(named)) return "Built-in estimate engine";
  if (!named.empty()) return named;
  switch (engine) {
    case EngineChoice::kIonCap:
      return "IONCAP";
    case EngineChoice::kIcePac:
      return "ICEPAC";
    case EngineChoice::kVoaCap:
    case EngineChoice::kVoaCapSnr:
      return "VOACAP";
    case EngineChoice::kNone:
      break;
  }
  return "Unnamed engine";
}

Provenance ProvenanceOf(const ResultsHeading& heading, EngineChoice engine,
                        const AskedPrediction& asked, UtcTime computed) {
  return {Note(heading, engine, asked, computed), Difference(heading, engine, asked)};
}

}  // namespace skyhop
