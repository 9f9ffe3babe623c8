#include "app/predict/inputs.h"

#include <string_view>
#include <vector>

#include "common/dates.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "engine/engine_search.h"
#include "geo/coordinate_text.h"
#include "geo/dx_grid.h"
#include "ui/shared/configuration.h"

namespace skyhop {
namespace {

constexpr const char* kSection = "Configuration";

using LatLonModule::Axis;

/// A place to cut a text between its latitude and its longitude.
struct Cut {
  std::size_t end;    ///< of the latitude
  std::size_t begin;  ///< of the longitude
};

constexpr std::string_view kHemispheres = "NSEWnsew";

/// The places at which the latitude may end. A comma may also be a decimal comma.
std::vector<Cut> CutsOf(std::string_view text) {
  std::vector<Cut> cuts;
  const std::size_t letter = text.find_first_of(kHemispheres);
  if (letter == 0) {
    // If letters precede the coordinates, the latitude ends before the next letter.
    const std::size_t second = text.find_first_of(kHemispheres, 1);
    if (second == std::string_view::npos) return cuts;
    return {{text.find_last_not_of(" \t,;", second - 1) + 1, second}};
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ',' || text[i] == ';') cuts.push_back({i, i + 1});
  }
  const std::size_t north_or_south = text.find_first_of("NSns");
  if (north_or_south != std::string_view::npos) {
    cuts.push_back({north_or_south + 1, north_or_south + 1});
    return cuts;
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ' ') cuts.push_back({i, i});
  }
  return cuts;
}

/// Reads a place from the command line: a grid square, or a latitude and a longitude, each in a
/// form that LatLonModule::ReadCoordinate accepts, separated by a comma, a semicolon, a blank or
/// their hemisphere letters. Returns nothing for any other text, and for a text with two possible
/// readings.
std::optional<Position> ParsePlace(const std::string& text) {
  const std::string_view trimmed = Trim(text);
  if (DXGridModule::IsGridSquare(trimmed)) return DXGridModule::GetGridCenterLocation(trimmed);
  std::optional<Position> place;
  for (const Cut& cut : CutsOf(trimmed)) {
    const auto latitude = LatLonModule::ReadCoordinate(trimmed.substr(0, cut.end), Axis::kLatitude);
    const auto longitude =
        LatLonModule::ReadCoordinate(trimmed.substr(cut.begin), Axis::kLongitude);
    if (!latitude || !longitude) continue;
    const Position read{*latitude, *longitude};
    // Refuse a text with two readings: the user may have meant either.
    if (place && *place != read) return std::nullopt;
    place = read;
  }
  return place;
}

/// The stored inputs.
PredictionForm StoredForm(PredictionProgram& program) {
  PredictionForm form = program.engine.parameters.Initialize();
  const auto automatic = static_cast<int>(AutomaticEngine(*program.host, program.folder));
  program.automatic_engine =
      Trim(program.settings.GetStringSetting(kProductName, kSection, "Engine", "")).empty();
  form.engine = static_cast<EngineChoice>(program.settings.GetIntegerSetting(
      kProductName, kSection, "Engine", std::to_string(automatic)));
  form.distance_miles =
      program.settings.GetBooleanSetting(kProductName, kSection, "DistanceMiles", "True");
  form.local_antenna = StoredAntenna(program.settings, Station::kLocal);
  form.dx_antenna = StoredAntenna(program.settings, Station::kDX);
  return form;
}

/// Replaces what the command line gives of an antenna. Returns the antenna's problem.
std::string SetAntenna(const std::optional<std::string>& given,
                       const std::optional<std::string>& azimuth, Antenna& antenna) {
  if (given) {
    antenna = {};
    (WholeNumberText(*given) ? antenna.gain : antenna.file) = *given;
  }
  if (azimuth) antenna.azimuth = *azimuth;
  return AntennaProblem(antenna);
}

/// The same for both stations.
std::string SetAntennas(const PredictOptions& options, PredictionForm& form) {
  const std::string problem = SetAntenna(options.antenna, options.azimuth, form.local_antenna);
  return problem.empty() ? SetAntenna(options.dx_antenna, options.dx_azimuth, form.dx_antenna)
                         : problem;
}

void OverrideEngine(const PredictOptions& options, PredictionProgram& program) {
  if (!options.engine) return;
  program.automatic_engine = *options.engine == EngineChoice::kNone;
  program.form.engine =
      program.automatic_engine ? AutomaticEngine(*program.host, program.folder) : *options.engine;
}

void OverrideForm(const PredictOptions& options, PredictionForm& form) {
  const auto set = [](const auto& given, auto& member) {
    if (given) member = *given;
  };
  // A given flux replaces a stored sunspot number, and the other way round.
  if (options.sfi && !options.ssn) form.sunspot_number.clear();
  if (options.ssn && !options.sfi && !Trim(*options.ssn).empty()) form.flux.clear();
  set(options.path, form.path);
  set(options.direction, form.direction);
  set(options.noise, form.local_noise);
  set(options.dx_noise, form.dx_noise);
  set(options.dx_power, form.dx_power);
  set(options.sfi, form.flux);
  set(options.ssn, form.sunspot_number);
  set(options.k_index, form.k_index);
  set(options.power, form.local_power);
  set(options.takeoff, form.takeoff);
  set(options.availability, form.availability);
}

/// Puts one station into the form. Returns the station's problem; `missing` is the one of a place
/// that is neither given nor stored.
std::string SetStation(const std::optional<std::string>& place, const std::string& option,
                       const char* missing, std::string& latitude, std::string& longitude) {
  if (place) {
    const std::optional<Position> position = ParsePlace(*place);
    if (!position) {
      return option + ": \"" + place->substr(0, 80) +
             "\" is not a place; write a grid square (IO91wm), decimal degrees (51.5,-0.12) or "
             "coordinates (51 30 N, 0 7 W)";
    }
    latitude = LatLonModule::LatitudeString(*position);
    longitude = LatLonModule::LongitudeString(*position);
  }
  const bool valid = LatLonModule::LatitudeIn(latitude) && LatLonModule::LongitudeIn(longitude);
  return valid ? "" : option + missing;
}

/// Returns the problem of the chosen engine.
std::string CheckEngine(EngineChoice choice) {
  const int engine = static_cast<int>(choice);
  if (engine >= 0 && engine <= static_cast<int>(EngineChoice::kVoaCapSnr)) return {};
  return "the stored engine " + std::to_string(engine) +
         " does not exist; choose one with --engine";
}

/// The required SNR of the stored mode. Without such a mode in the settings, the stored SNR.
std::string StoredSnr(PredictionProgram& program) {
  Configuration configuration(program.settings, program.diagnostics);
  configuration.Load();
  const std::vector<ModeSettings>& modes = configuration.Modes();
  const auto mode = static_cast<std::size_t>(program.form.mode);
  if (mode < modes.size()) return modes[mode].snr;
  std::string snr = program.settings.GetStringSetting(kProductName, kSection, "SNR", "24");
  program.messages.Note("the stored mode is none of the modes in the settings; using " + snr +
                        " dB");
  return snr;
}

void CompleteForm(const PredictOptions& options, PredictionProgram& program) {
  PredictionForm& form = program.form;
  form.date = options.date ? *options.date : DateText(UtcDate(program.GetClock().UtcNow()));
  if (options.snr) {
    form.snr = *options.snr;
  } else if (form.mode >= 0) {
    form.snr = StoredSnr(program);
  }
}

}  // namespace

std::string HandInputs(const PredictOptions& options, PredictionProgram& program) {
  PredictionForm& form = program.form;
  form = StoredForm(program);
  OverrideForm(options, form);
  OverrideEngine(options, program);
  std::string problem = CheckEngine(form.engine);
  if (problem.empty()) problem = SetAntennas(options, form);
  if (problem.empty()) {
    problem = SetStation(options.from, "--from", " is missing: your station is not in the settings",
                         form.local_latitude, form.local_longitude);
  }
  if (problem.empty()) {
    problem = SetStation(options.to, "--to", " is missing", form.dx_latitude, form.dx_longitude);
  }
  if (!problem.empty()) return problem;
  CompleteForm(options, program);
  IONCAPModule::Parameters& parameters = program.engine.parameters;
  parameters.SetTransmitterAndNoise(form);
  parameters.SetPredictionSNR(form.snr);
  parameters.SetCircuit(form);
  return {};
}

}  // namespace skyhop
