#include "app/predict/inputs.h"

#include <vector>

#include "app/predict/place.h"
#include "common/dates.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "engine/engine_search.h"
#include "ui/shared/configuration.h"

namespace skyhop {
namespace {

constexpr const char* kSection = "Configuration";

void RestoreConfiguration(PredictionProgram& program) {
  program.parameters.Initialize();
  PlainPanel& panel = program.panel;
  const auto automatic = static_cast<int>(AutomaticEngine(*program.host, program.folder));
  program.automatic_engine =
      Trim(program.settings.GetStringSetting(kProductName, kSection, "Engine", "")).empty();
  panel.SetChoice(PanelChoice::kEngineButton,
                  program.settings.GetIntegerSetting(kProductName, kSection, "Engine",
                                                     std::to_string(automatic)));
  panel.SetChecked(
      PanelCheck::kDistanceMiles,
      program.settings.GetBooleanSetting(kProductName, kSection, "DistanceMiles", "True"));
  panel.SetChoice(PanelChoice::kPath, path_option::kShort);
  for (const Station station : {Station::kLocal, Station::kDX}) {
    panel.SetAntenna(station, StoredAntenna(program.settings, station));
  }
}

/// What the command line says of an antenna over what is stored. Returns what is wrong with it.
std::string SetAntenna(const std::optional<std::string>& given,
                       const std::optional<std::string>& azimuth, Station station,
                       PlainPanel& panel) {
  Antenna antenna = panel.AntennaOf(station);
  if (given) {
    antenna = {};
    (WholeNumberText(*given) ? antenna.gain : antenna.file) = *given;
  }
  if (azimuth) antenna.azimuth = *azimuth;
  panel.SetAntenna(station, antenna);
  return AntennaProblem(antenna);
}

/// The same for both stations.
std::string SetAntennas(const PredictOptions& options, PlainPanel& panel) {
  const std::string problem = SetAntenna(options.antenna, options.azimuth, Station::kLocal, panel);
  return problem.empty() ? SetAntenna(options.dx_antenna, options.dx_azimuth, Station::kDX, panel)
                         : problem;
}

void OverrideChoices(const PredictOptions& options, PlainPanel& panel) {
  const auto choose = [&](const auto& given, PanelChoice choice) {
    if (given) panel.SetChoice(choice, static_cast<int>(*given));
  };
  choose(options.path, PanelChoice::kPath);
  choose(options.direction, PanelChoice::kPredictSignals);
  choose(options.noise, PanelChoice::kLocalNoiseLevel);
  choose(options.dx_noise, PanelChoice::kDXNoiseLevel);
  choose(options.dx_power, PanelChoice::kDXPwr);
}

void OverrideEngine(const PredictOptions& options, PredictionProgram& program) {
  if (!options.engine) return;
  program.automatic_engine = *options.engine == EngineChoice::kNone;
  const EngineChoice engine =
      program.automatic_engine ? AutomaticEngine(*program.host, program.folder) : *options.engine;
  program.panel.SetChoice(PanelChoice::kEngineButton, static_cast<int>(engine));
}

void OverrideTexts(const PredictOptions& options, PlainPanel& panel) {
  const auto set = [&](const std::optional<std::string>& given, PanelText text) {
    if (given) panel.SetText(text, *given);
  };
  // Of flux and sunspot number the one that was given counts, not the stored other one.
  if (options.sfi && !options.ssn) panel.SetText(PanelText::kSSN, "");
  if (options.ssn && !options.sfi && !Trim(*options.ssn).empty()) {
    panel.SetText(PanelText::kFlux, "");
  }
  set(options.sfi, PanelText::kFlux);
  set(options.ssn, PanelText::kSSN);
  set(options.k_index, PanelText::kKindex);
  set(options.power, PanelText::kLocalPwr);
  set(options.takeoff, PanelText::kLocalTakeOff);
  set(options.snr, PanelText::kSNR);
  set(options.availability, PanelText::kAvail);
}

/// Puts one station into its fields. Returns what is wrong with it.
std::string SetStation(const std::optional<std::string>& place, const char* option,
                       PanelText latitude, PanelText longitude, PredictionProgram& program) {
  if (place) {
    const std::optional<Position> position = ParsePlace(*place);
    if (!position) {
      return std::string(option) + ": \"" + place->substr(0, 80) +
             "\" is not a place; write a grid square (IO91wm), decimal degrees (51.5,-0.12) or "
             "coordinates (51 30 N, 0 7 W)";
    }
    program.panel.SetText(latitude, LatLonModule::LatitudeString(*position));
    program.panel.SetText(longitude, LatLonModule::LongitudeString(*position));
  }
  if (!LatLonModule::ValidLatitude(program.panel.Text(latitude), program.diagnostics) ||
      !LatLonModule::ValidLongitude(program.panel.Text(longitude), program.diagnostics)) {
    return std::string(option) + " is missing" +
           (latitude == PanelText::kLocalLat ? ": your station is not in the settings" : "");
  }
  return {};
}

/// Returns what is wrong with the choice of the engine.
std::string CheckEngine(const PlainPanel& panel) {
  const int engine = panel.Choice(PanelChoice::kEngineButton);
  if (engine >= 0 && engine <= static_cast<int>(EngineChoice::kVoaCapSnr)) return {};
  return "the stored engine " + std::to_string(engine) +
         " does not exist; choose one with --engine";
}

/// The required SNR of the stored mode; where there is no such mode any more, the stored one of no
/// mode.
std::string StoredSnr(PredictionProgram& program) {
  Configuration configuration(program.settings, program.diagnostics);
  configuration.Load();
  const std::vector<ModeSettings>& modes = configuration.Modes();
  const auto mode = static_cast<std::size_t>(program.panel.Choice(PanelChoice::kModeSNRCombo));
  if (mode < modes.size()) return modes[mode].snr;
  std::string snr = program.settings.GetStringSetting(kProductName, kSection, "SNR", "24");
  program.messages.Note("the stored mode is none of the modes in the settings; using " + snr +
                        " dB");
  return snr;
}

/// The required SNR: the given one, else the stored mode's, else the stored one.
void SetSnr(const PredictOptions& options, PredictionProgram& program) {
  if (!options.snr && program.panel.Choice(PanelChoice::kModeSNRCombo) >= 0) {
    program.panel.SetText(PanelText::kSNR, StoredSnr(program));
  }
  program.parameters.SetPredictionSNR(program.panel.Text(PanelText::kSNR));
}

void HandToEngine(const PredictOptions& options, PredictionProgram& program) {
  PlainPanel& panel = program.panel;
  IONCAPModule::Parameters& parameters = program.parameters;
  const bool from =
      panel.Choice(PanelChoice::kPredictSignals) == direction_option::kFromTheDXStation;
  // The transmitter's power and the noise at the receiver.
  parameters.SetPredictionPower(from ? parameters.DXPower() : panel.Text(PanelText::kLocalPwr));
  parameters.SetPredictionNoise(from ? parameters.LocalNoiseIndex() : parameters.DXNoiseIndex());
  parameters.SetPredictionTakeoff(panel.Text(PanelText::kLocalTakeOff));
  SetSnr(options, program);
  parameters.SetDate(options.date ? *options.date : DateText(UtcDate(program.GetClock().UtcNow())));

  const std::string local_latitude = panel.Text(PanelText::kLocalLat);
  const std::string local_longitude = panel.Text(PanelText::kLocalLon);
  const std::string dx_latitude = panel.Text(PanelText::kDXLat);
  const std::string dx_longitude = panel.Text(PanelText::kDXLon);
  parameters.SetReceiverLatitude(from ? local_latitude : dx_latitude);
  parameters.SetReceiverLongitude(from ? local_longitude : dx_longitude);
  parameters.SetTransmitterLatitude(from ? dx_latitude : local_latitude);
  parameters.SetTransmitterLongitude(from ? dx_longitude : local_longitude);
  parameters.SetPath(panel.Choice(PanelChoice::kPath) == path_option::kShort ? "Short Path"
                                                                             : "Long Path");
  parameters.SetPrefix();
}

}  // namespace

std::string HandInputs(const PredictOptions& options, PredictionProgram& program) {
  RestoreConfiguration(program);
  OverrideChoices(options, program.panel);
  OverrideEngine(options, program);
  OverrideTexts(options, program.panel);
  std::string problem = CheckEngine(program.panel);
  if (problem.empty()) problem = SetAntennas(options, program.panel);
  if (!problem.empty()) return problem;
  problem = SetStation(options.from, "--from", PanelText::kLocalLat, PanelText::kLocalLon, program);
  if (problem.empty()) {
    problem = SetStation(options.to, "--to", PanelText::kDXLat, PanelText::kDXLon, program);
  }
  if (problem.empty()) HandToEngine(options, program);
  return problem;
}

}  // namespace skyhop
