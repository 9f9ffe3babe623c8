// From the Predict command to the start of an engine.

#include "common/dates.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "engine/engine_search.h"
#include "geo/coordinate_text.h"
#include "ui/prediction/ion_cap.h"
#include "ui/shared/raised.h"

namespace skyhop {
namespace {

constexpr const char* kInvalidPower =
    "Invalid power specified in the 'Your Stations' panel on the Main window's Parameters tab";
constexpr const char* kInvalidTakeoff =
    "Invalid Takeoff specified in the 'Your Stations' panel on the Main window's Parameters tab";

/// Whether the engine interface refuses a text that is there. The validation before a run reports
/// a missing one.
bool Refused(const std::string& text, bool in_range) {
  return !Trim(text).empty() && !(BeginsWithNumber(text) && in_range);
}

}  // namespace

void IonCap::PathsButton_Click() {
  with_.diagnostics.Trap("IonCap.PathsButton_Click", [&] {
    with_.diagnostics.DebugLog("IonCap.PathsButton_Click");
    if (RefuseSecondRun()) return;
    const Raised starting(starting_);
    if (Trim(with_.view.Text(TextField::kDXLat)).empty() ||
        Trim(with_.view.Text(TextField::kDXLon)).empty()) {
      with_.messages.Show("DX station latitude or longitude not specified", kProductName);
      return;
    }
    if (!HandPowerTakeoffAndNoise()) return;
    HandFrequencyDependentSettings();
    // A refused SNR was not handed on; the validation is to find it.
    const std::string snr = parameters_.Set().snr;
    const std::string shown_snr = with_.view.Text(TextField::kSNR);
    const bool snr_refused = StateOf(TextField::kSNR).refused == shown_snr;
    if (snr_refused) parameters_.SetPredictionSNR(shown_snr);
    with_.view.Select(OptionGroup::kDDEOption, requested_by_peer_ ? dde_option::kRequestedByPeer
                                                                  : dde_option::kRequestedHere);
    InitiateForecast();
    if (snr_refused) parameters_.SetPredictionSNR(snr);
  });
  PredictForWaitingPeer();
}

void IonCap::PredictSPToCmd_Click() {
  Predict("IonCap.PredictSPToCmd_Click", path_option::kShort, direction_option::kToTheDXStation);
}

void IonCap::PredictLPToCmd_Click() {
  Predict("IonCap.PredictLPToCmd_Click", path_option::kLong, direction_option::kToTheDXStation);
}

void IonCap::PredictSPFromCmd_Click() {
  Predict("IonCap.PredictSPFromCmd_Click", path_option::kShort,
          direction_option::kFromTheDXStation);
}

void IonCap::PredictLPFromCmd_Click() {
  Predict("IonCap.PredictLPFromCmd_Click", path_option::kLong, direction_option::kFromTheDXStation);
}

void IonCap::Predict(const char* name, int path, int direction) {
  with_.diagnostics.Trap(name, [&] {
    with_.diagnostics.DebugLog(name);
    if (RefuseSecondRun()) return;
    with_.view.Select(OptionGroup::kPath, path);
    with_.view.Select(OptionGroup::kPredictSignals, direction);
    UpdateStationLabels();
    UpdateConditions();
    InputsChanged();
    PathsButton_Click();
  });
}

/// Nothing of a prediction that is running may change, not even what its results are labelled with,
/// and nothing of one that is being started: while it shows its messages, peers go on sending.
bool IonCap::RefuseSecondRun() {
  if (!Running() && !starting_) return false;
  with_.diagnostics.DebugLog("   previous computation still running");
  return true;
}

bool IonCap::HandPowerTakeoffAndNoise() {
  const PredictionForm form = Form();
  const ParameterSet given = IONCAPModule::ParametersOf(form);
  const char* problem = nullptr;
  if (!IONCAPModule::SunspotNumberFitsCard(given.sunspot_number)) {
    problem = IONCAPModule::kSunspotNumberTooLarge;
  }
  if (Refused(given.takeoff, IONCAPModule::TakeoffInRange(given.takeoff))) {
    problem = kInvalidTakeoff;
  }
  if (!IONCAPModule::PowerFitsCard(given.power)) problem = IONCAPModule::kPowerTooLarge;
  if (Refused(given.power, IONCAPModule::PowerInRange(given.power))) problem = kInvalidPower;
  if (problem != nullptr) {
    with_.messages.Show(problem, kProductName);
    return false;
  }
  parameters_.SetTransmitterAndNoise(form);
  return true;
}

/// The band whose settings take the place of the window's in a prediction; nothing when none do.
std::optional<std::size_t> IonCap::BandInForce() {
  if (!with_.configuration.FreqDependentEnabled()) return std::nullopt;
  const std::optional<double> kilohertz = with_.peers.TransceiverFrequency();
  if (!kilohertz || !(*kilohertz > 0)) return std::nullopt;
  const std::int16_t band =
      with_.bands.GetbandIndex(with_.bands.GetBandNameForFreq(*kilohertz / 1000));
  if (band < 0) return std::nullopt;
  return static_cast<std::size_t>(band);
}

void IonCap::HandFrequencyDependentSettings() {
  settings_name_.clear();
  const std::optional<std::size_t> band = BandInForce();
  if (!band) return;
  const BandSettings& settings = with_.configuration.Band(*band);
  const bool power = !Trim(settings.power).empty();
  const bool takeoff = !Trim(settings.takeoff).empty();
  if (power) parameters_.SetPredictionPower(settings.power);
  if (takeoff) parameters_.SetPredictionTakeoff(settings.takeoff);
  if (power || takeoff) settings_name_ = kBandNames.at(*band);
}

void IonCap::InitiateForecast() {
  const bool answered = with_.diagnostics.Trap("IonCap.InitiateForecast", false, [&] {
    with_.diagnostics.DebugLog("IonCap.InitiateForecast");
    if ((Running() && RefuseSecondRun()) || !StationsCanBePredicted()) return true;
    parameters_.SetCircuit(Form());
    StartRun();
    // The bars of a chart stay with it when there is no new prediction.
    if (Running() || !with_.chart.HasResult()) UpdateSolarBars();
    with_.diagnostics.DebugLog("IonCap.InitiateForecast: complete");
    return true;
  });
  if (!answered) with_.diagnostics.Trap("IonCap.InitiateForecast", [&] { GiveUpStart(); });
}

/// Something has failed on the way; the log has it. No engine may go on for a window that does not
/// wait for it.
void IonCap::GiveUpStart() {
  if (Running()) run_.Abort();
  (void)LeaveRun();
  Fail("The prediction was not started" + with_.diagnostics.CaptionHint());
}

bool IonCap::StationsCanBePredicted() {
  // The DX station first: of several invalid coordinates its own are reported.
  for (const TextField field :
       {TextField::kDXLat, TextField::kDXLon, TextField::kLocalLat, TextField::kLocalLon}) {
    const bool is_latitude = field == TextField::kDXLat || field == TextField::kLocalLat;
    const std::string text = Understood(field);
    const bool valid = is_latitude ? LatLonModule::ValidLatitude(text, with_.diagnostics)
                                   : LatLonModule::ValidLongitude(text, with_.diagnostics);
    if (valid && StateOf(field).refused != text) continue;
    const std::string name = is_latitude ? "latitude" : "longitude";
    with_.diagnostics.DebugLog(std::string("   invalid ").append(name).append(": ").append(text));
    with_.view.MarkRefused(field, true);
    const bool is_dx = field == TextField::kDXLat || field == TextField::kDXLon;
    const auto axis = is_latitude ? LatLonModule::Axis::kLatitude : LatLonModule::Axis::kLongitude;
    std::string reason = is_dx ? "The DX station's " : "Your Station's ";
    reason += name;
    if (Trim(text).empty()) {
      reason += " is missing";
    } else {
      reason.append(" \"").append(text).append("\" is not valid. Write it like ");
      reason += LatLonModule::CoordinateExamples(axis);
    }
    Fail(reason);
    return false;
  }
  return true;
}

void IonCap::StartRun() {
  std::unique_ptr<RunLock> lock = with_.locker.Lock();
  if (!lock) {
    Fail("The prediction was not started: another program is predicting in " +
         PathText(with_.program_folder));
    return;
  }
  if (run_.ForecastPaths()) {
    RunStarted(std::move(lock));
  } else if (run_.ParametersRefused()) {
    Fail("The prediction was not started: the parameters need correction");
  } else {
    const EngineFinding engine = FindEngine(
        with_.host, with_.program_folder, static_cast<EngineChoice>(with_.configuration.Engine()));
    Fail(engine.exists ? "The prediction was not started" + with_.diagnostics.CaptionHint()
                       : "The engine is missing: there is no " + PathText(engine.executable) +
                             ". The Configuration window offers others.");
  }
}

void IonCap::RunStarted(std::unique_ptr<RunLock> lock) {
  PredictionRun& run = running_.emplace();
  run.lock = std::move(lock);
  run.engine = static_cast<EngineChoice>(with_.configuration.Engine());
  run.started = with_.clock.UtcNow();
  run.summary = Summary();
  run.tables_shown = with_.engine.results.TablesShown();
  run.asked = Asked();
  run.finding = run_.Job().Asked().finding;
  run.inputs = CurrentInputs();
  run.title = TitleOfRun();
  SaveStations();
  EnablePredicting(false);
  with_.view.StartTimer(WindowTimer::kExecuteTimer, kPollInterval);
  with_.view.Enable(Button::kShowFilesCmd, true);
  if (run_.Job().Process() != 0) {
    with_.view.StartTimer(WindowTimer::kEngineWatch, kWatchInterval);
  }
  ShowEngine(run.engine);
  ShowProgress();
}

AskedPrediction IonCap::Asked() const {
  AskedPrediction asked;
  asked.sunspot_number = run_.Job().Asked().asked.sunspot_number;
  asked.solar_flux = parameters_.Set().flux;
  asked.from_flux = IONCAPModule::DerivesSunspotNumber(parameters_.Set());
  asked.by_peer = with_.view.Selected(OptionGroup::kDDEOption) == dde_option::kRequestedByPeer;
  return asked;
}

std::string IonCap::Summary() const {
  return SummaryLine(parameters_.Set(), with_.configuration.DistanceMiles(), settings_name_,
                     with_.diagnostics);
}

}  // namespace skyhop
