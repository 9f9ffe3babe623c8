#include "report/provenance.h"

#include "common/dates.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {
namespace {

using IONCAPModule::ResultsHeading;

constexpr const char* kSeparator = " \xC2\xB7 ";

}  // namespace

bool IsEstimate(const std::string& named) {
  return IONCAPModule::NamesEstimate(named);
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

std::string Provenance(const ResultsHeading& heading, EngineChoice engine,
                       const AskedPrediction& asked, UtcTime computed) {
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

}  // namespace skyhop
