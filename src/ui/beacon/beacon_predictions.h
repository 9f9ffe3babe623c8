#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "beacon/beacon_location.h"
#include "common/clock.h"
#include "common/diagnostics.h"
#include "common/settings.h"
#include "engine/circuit_run.h"
#include "engine/ioncap_script.h"
#include "engine/its_script.h"
#include "engine/parameters.h"
#include "engine/plain_panel.h"
#include "ui/prediction/prediction_chart.h"

namespace skyhop {

/// What the predictions to the beacons depend on, as the prediction window has it.
struct BeaconInputs {
  std::string latitude;  ///< of your station
  std::string longitude;
  std::string flux;
  std::string sunspot_number;
  std::string k_index;
  std::string availability;
  std::string snr;
  std::string takeoff;
  std::int16_t noise = 0;  ///< at your station
  EngineChoice engine = EngineChoice::kNone;

  friend bool operator==(const BeaconInputs&, const BeaconInputs&) = default;
};

[[nodiscard]] BeaconInputs ReadBeaconInputs(const PredictionPanel& panel,
                                            const IONCAPModule::Parameters& parameters);

/// How open the frequencies of the beacons are predicted to be from each beacon to your station,
/// for all hours of the day: one run of the selected engine for each beacon, one after another in
/// the background. A prediction of the user's comes first. What was predicted holds for the hour.
class BeaconPredictions {
 public:
  using Time = CircuitRun::Time;

  /// The power of a beacon, watts.
  static constexpr const char* kPower = "100";
  /// Hours of a day.
  static constexpr std::size_t kHours = 24;
  /// How open a frequency is in each hour from 0 UTC on, see PredictionChart::FreqOpen.
  using Levels = std::array<std::int16_t, kHours>;

  /// All must outlive this object.
  struct Collaborators {
    RunLocker& locker;
    EngineLauncher& launcher;
    const EngineHost& host;
    Pause& pause;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
    const Clock& clock;
    std::filesystem::path program_folder;
  };

  explicit BeaconPredictions(const Collaborators& collaborators);

  /// Sets what is to be predicted: beacons on frequencies in kHz, by these inputs at this moment.
  /// What is predicted already and still holds is kept.
  void Want(const BeaconInputs& inputs, const std::vector<BeaconModule::Beacon>& beacons,
            const std::vector<double>& frequencies, UtcTime now);

  /// Goes on with the runs. Returns whether something new is known.
  bool Poll(Time now);

  /// Ends the run in progress, to give way to a prediction of the user's or because nobody looks
  /// any more. The next poll begins it anew.
  void Yield() { run_.Cancel(); }
  /// Forgets everything, so that what is wanted next is predicted anew.
  void Forget();

  [[nodiscard]] bool Working() const { return !queue_.empty(); }
  /// Why there are no predictions, or not all; empty when nothing is wrong.
  [[nodiscard]] const std::string& Problem() const { return problem_; }

  /// Nothing while it is not known.
  [[nodiscard]] const Levels* Of(const std::string& call, double frequency) const;

 private:
  /// Keeps messages that nobody has asked for from the user.
  class KeptMessages : public UserMessages {
   public:
    void Show(const std::string& text, const std::string& /*caption*/) override { last = text; }
    std::string last;
  };

  struct Wanted {
    BeaconInputs inputs;
    std::vector<BeaconModule::Beacon> beacons;
    std::vector<double> frequencies;
    UtcTime hour;
  };

  void Begin(Time now);
  [[nodiscard]] bool HandInputs(const BeaconModule::Beacon& beacon);
  [[nodiscard]] bool WriteDeck(const std::filesystem::path& file);
  void Take(const std::string& results);
  void GiveUp(const std::string& problem);

  Collaborators with_;
  KeptMessages messages_;
  PlainPanel panel_;
  IONCAPModule::Parameters parameters_;
  IONCAPModule::ScriptCards cards_;
  IONCAPModule::IonCapScript ioncap_script_;
  IONCAPModule::ItsScript its_script_;
  ResultsTable table_;
  IONCAPModule::PredictionChart chart_;
  CircuitRun run_;

  std::optional<Wanted> wanted_;
  std::vector<BeaconModule::Beacon> queue_;  ///< still to be predicted, the last one first
  std::map<std::pair<std::string, double>, Levels> levels_;
  std::string problem_;
};

}  // namespace skyhop
