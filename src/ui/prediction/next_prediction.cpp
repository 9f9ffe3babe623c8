#include "ui/prediction/next_prediction.h"

#include <array>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "report/chart_title.h"

namespace skyhop {
namespace {

constexpr const char* kInvalidPower =
    "Invalid power specified in the 'Your Stations' panel on the Main window's Parameters tab";
constexpr const char* kInvalidTakeoff =
    "Invalid Takeoff specified in the 'Your Stations' panel on the Main window's Parameters tab";

/// Noise levels by their index, as words within a sentence.
constexpr std::array<const char*, 4> kNoises = {"industrial", "residential", "rural", "remote"};

/// Whether the engine interface refuses a text that is there. The validation before a run reports
/// a missing one.
bool Refused(const std::string& text, bool in_range) {
  return !Trim(text).empty() && !(BeginsWithNumber(text) && in_range);
}

/// The message about a set that no engine can take, null when there is none.
const char* ProblemOf(const ParameterSet& set) {
  if (Refused(set.power, IONCAPModule::PowerInRange(set.power))) return kInvalidPower;
  if (!IONCAPModule::PowerFitsCard(set.power)) return IONCAPModule::kPowerTooLarge;
  if (Refused(set.takeoff, IONCAPModule::TakeoffInRange(set.takeoff))) return kInvalidTakeoff;
  if (!IONCAPModule::SunspotNumberFitsCard(set.sunspot_number)) {
    return IONCAPModule::kSunspotNumberTooLarge;
  }
  return nullptr;
}

std::string Watts(const std::string& power) {
  return Trim(power).empty() ? "with unknown power" : std::string(Trim(power)) + " W";
}

}  // namespace

std::optional<PredictionInputs> NextPrediction::Inputs() const {
  if (!with_.stations.BothKnown()) return std::nullopt;
  PredictionInputs inputs;
  try {
    ParameterSet set = IONCAPModule::ParametersOf(with_.fields.Form());
    set.snr = with_.parameters.Set().snr;
    if (const std::optional<std::size_t> band = with_.transceiver.BandInForce()) {
      const BandSettings& settings = with_.transceiver.Settings(*band);
      if (!Trim(settings.power).empty()) set.power = settings.power;
      if (!Trim(settings.takeoff).empty()) set.takeoff = settings.takeoff;
    }
    inputs = IONCAPModule::InputsOf(set);
  } catch (const Error&) {
    // The prediction itself reports an invalid date and a number beyond its range.
    return std::nullopt;
  }
  // Inputs that the engine does not read make no difference.
  if (inputs.engine != EngineChoice::kIcePac) inputs.k_index = 0;
  if (inputs.engine == EngineChoice::kIonCap) {
    inputs.transmitter_antenna = {};
    inputs.receiver_antenna = {};
  }
  return inputs;
}

std::string NextPrediction::Title() const {
  return ChartTitle(with_.parameters.Set(), with_.fields.Form().distance_miles,
                    {with_.fields.Text(TextField::kLocalGrid),
                     with_.fields.Text(TextField::kDXGrid), with_.modes.Selected()},
                    with_.diagnostics);
}

std::string NextPrediction::Summary() const {
  return SummaryLine(with_.parameters.Set(), with_.fields.Form().distance_miles, settings_name_,
                     with_.diagnostics);
}

bool NextPrediction::HandOver() {
  const PredictionForm form = with_.fields.Form();
  if (const char* problem = ProblemOf(IONCAPModule::ParametersOf(form))) {
    with_.fields.Tell(problem);
    return false;
  }
  with_.parameters.SetTransmitterAndNoise(form);
  settings_name_.clear();
  const std::optional<std::size_t> band = with_.transceiver.BandInForce();
  if (!band) return true;
  const BandSettings& settings = with_.transceiver.Settings(*band);
  const bool power = !Trim(settings.power).empty();
  const bool takeoff = !Trim(settings.takeoff).empty();
  if (power) with_.parameters.SetPredictionPower(settings.power);
  if (takeoff) with_.parameters.SetPredictionTakeoff(settings.takeoff);
  if (power || takeoff) settings_name_ = kBandNames.at(*band);
  return true;
}

void NextPrediction::UpdateConditions() const {
  const ParameterSet set = IONCAPModule::ParametersOf(with_.fields.Form());
  const std::string noise = std::string(kNoises.at(static_cast<std::size_t>(set.noise))) + " noise";
  std::string power = Watts(set.power);
  if (const std::optional<std::size_t> band = with_.transceiver.BandInForce()) {
    const BandSettings& settings = with_.transceiver.Settings(*band);
    const std::string origin =
        " (as set for " + std::string(kBandLabelTexts.at(*band)) + ", in place of ";
    if (!Trim(settings.power).empty()) power = Watts(settings.power) + origin + power + ")";
    if (!Trim(settings.takeoff).empty()) {
      power += " from " + std::string(Trim(settings.takeoff)) + "\u00B0 up" + origin + set.takeoff +
               "\u00B0)";
    }
  }
  with_.view.SetLabel(
      Label::kConditions,
      set.to_dx ? "Your station transmits " + power + "; the DX station listens in " + noise
                : "The DX station transmits " + power + "; your station listens in " + noise);
}

}  // namespace skyhop
