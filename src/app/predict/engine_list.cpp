#include "app/predict/engine_list.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

#include "common/files.h"
#include "common/text.h"
#include "report/prediction_report.h"

namespace skyhop {
namespace {

const char* KindWord(const EngineFinding& finding, bool estimate) {
  if (!finding.exists) return "missing";
  if (estimate) return "estimate";
  switch (finding.kind) {
    case EngineKind::kOwn:
      return "own";
    case EngineKind::kNative:
      return "native";
    case EngineKind::kWine:
      return "wine";
    case EngineKind::kEstimate:
      break;
  }
  return "estimate";
}

/// The text about a finding and its missing parts.
std::string Description(EngineChoice engine, const EngineFinding& finding, bool estimate) {
  if (estimate && finding.kind != EngineKind::kEstimate) {
    return "Uses the built-in estimate engine: " + PathText(finding.executable);
  }
  std::string text = FindingText(finding);
  const std::string missing = finding.can_run ? MissingParts(engine, finding) : std::string();
  if (!missing.empty()) text += (text.ends_with('.') ? " " : ". ") + missing;
  return text;
}

}  // namespace

std::string EngineList(const EngineHost& host, const std::filesystem::path& program_folder,
                       bool json) {
  const char* automatic = EngineWord(AutomaticEngine(host, program_folder));
  nlohmann::ordered_json list = {{"auto", automatic}, {"engines", nlohmann::ordered_json::array()}};
  std::string lines;
  for (const EngineChoice engine : {EngineChoice::kIonCap, EngineChoice::kIcePac,
                                    EngineChoice::kVoaCap, EngineChoice::kVoaCapSnr}) {
    const EngineFinding finding = FindEngine(host, program_folder, engine);
    const bool estimate = IsEstimate(finding, host);
    const std::string text = Description(engine, finding, estimate);
    std::string word = EngineWord(engine);
    list["engines"].push_back({{"choice", word},
                               {"kind", KindWord(finding, estimate)},
                               {"executable", PathText(finding.executable)},
                               {"can_run", finding.can_run},
                               {"found", text}});
    word.resize(12, ' ');
    lines += word + text + "\n";
  }
  if (json) {
    return list.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
  }
  return lines + "auto        " + automatic + "\n";
}

std::string AntennaNote(const Antenna& antenna, EngineChoice engine, const EngineFinding& finding,
                        bool estimate) {
  if (antenna.file.empty()) {
    const bool counts = Trim(antenna.gain).empty() || engine != EngineChoice::kIonCap;
    return counts ? std::string() : "gain has no effect: IONCAP's deck has no place for it";
  }
  const std::string file = antenna.file + " has no effect: ";
  if (engine == EngineChoice::kIonCap) return file + "IONCAP takes no antenna files";
  if (estimate) return file + "the built-in estimate engine takes no antenna files";
  const std::vector<std::string> files = ListAntennas(finding.data / "antennas");
  const bool there = std::any_of(files.begin(), files.end(), [&](const std::string& known) {
    return EqualsIgnoringCase(known, antenna.file);
  });
  if (there) return {};
  return antenna.file + " is missing: there is no such file in " +
         PathText(finding.data / "antennas");
}

}  // namespace skyhop
