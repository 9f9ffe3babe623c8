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
#include "engine/circuit_run.h"
#include "engine/prediction_inputs.h"
#include "engine/results_table.h"

namespace skyhop {

/// The parameter set of the beacons' predictions: a beacon, which is left undefined, transmits to
/// your station by the short path. The date is left empty.
[[nodiscard]] ParameterSet BeaconParameters(const PredictionForm& form);

/// How open the frequencies of the beacons are predicted to be from each beacon to your station,
/// for all hours of the day: one run of the selected engine for each beacon, one after another in
/// the background. A prediction of the user's comes first. What was predicted holds for the hour,
/// and is better than nothing for another one.
class BeaconPredictions {
 public:
  using Time = CircuitRun::Time;

  /// The power of a beacon, watts.
  static constexpr const char* kPower = "100";
  /// Hours of a day.
  static constexpr std::size_t kHours = 24;
  /// How open a frequency is in each hour from 0 UTC on, see IONCAPModule::FreqOpen; nothing
  /// for an hour that the results lack.
  using Levels = std::array<std::optional<std::int16_t>, kHours>;
  /// Until a run that finds the engines' folders in use tries again.
  static constexpr std::chrono::seconds kBusyPause{1};

  struct Collaborators {
    RunLocker& locker;
    EngineLauncher& launcher;
    const EngineHost& host;
    Pause& pause;
    Diagnostics& diagnostics;
    const Clock& clock;
    std::filesystem::path program_folder;
  };

  explicit BeaconPredictions(const Collaborators& collaborators);

  /// Sets what is to be predicted: beacons on frequencies in kHz, by these inputs at this moment.
  /// What is predicted already and still holds is kept.
  void Want(const ParameterSet& inputs, const std::vector<BeaconModule::Beacon>& beacons,
            const std::vector<double>& frequencies, UtcTime now);

  /// Goes on with the runs. Returns whether something new is known. A run begins in another poll
  /// than the one before it ends in, so that other programs get at the engines' folders.
  bool Poll(Time now);

  /// Whether an engine runs: Want() may have to end it, which can take seconds.
  [[nodiscard]] bool Running() const { return run_.Running(); }
  /// Whether Poll() may have to end an engine.
  [[nodiscard]] bool MustEnd(Time now) const { return run_.MustBeEnded(now); }

  /// Ends the run in progress: the user predicts, or the window is hidden. The next poll begins it
  /// again.
  void Yield() { run_.End(); }
  /// Forgets everything. The next Want() predicts all again.
  void Forget();

  [[nodiscard]] bool Working() const { return !queue_.empty(); }
  /// Why there are no predictions, or not all; empty when nothing is wrong.
  [[nodiscard]] const std::string& Problem() const { return problem_; }

  /// Null while it is not known, and for a frequency that the engine does not predict.
  [[nodiscard]] const Levels* Of(const std::string& call, double frequency) const;
  /// What was predicted last on an earlier day, as far as that is the day before.
  [[nodiscard]] const Levels* Before(std::chrono::sys_days day, const std::string& call,
                                     double frequency) const;

 private:
  struct Wanted {
    ParameterSet inputs;
    std::vector<BeaconModule::Beacon> beacons;
    std::vector<double> frequencies;
    UtcTime hour;
  };

  struct Prediction {
    Levels levels;
    UtcTime hour;  ///< in which it was made
  };
  using Predictions = std::map<std::pair<std::string, double>, Prediction>;

  void Begin(Time now);
  void KeepDay(UtcTime now);
  [[nodiscard]] ParameterSet SetFor(const BeaconModule::Beacon& beacon) const;
  void Finish(const CircuitRun::Outcome& outcome);
  void Take(const std::string& results);
  [[nodiscard]] std::optional<Levels> LevelsOf(double frequency) const;
  void GiveUp(const std::string& problem);

  Collaborators with_;
  ResultsTable table_;
  CircuitRun run_;

  std::optional<Wanted> wanted_;
  std::vector<BeaconModule::Beacon> queue_;  ///< still to be predicted, the last one first
  Predictions predictions_;
  Predictions before_;  ///< the last ones of the day before
  std::chrono::sys_days day_before_{};
  std::optional<Time> busy_;  ///< when the engines' folders were last found in use
  std::string problem_;
};

}  // namespace skyhop
