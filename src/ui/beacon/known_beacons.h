#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "beacon/beacon_files.h"
#include "beacon/directions.h"
#include "beacon/schedule.h"
#include "beacon/selection.h"
#include "common/diagnostics.h"
#include "ui/beacon/beacon_predictions.h"

namespace skyhop {

/// The beacons as seen from the user's station: the beacon files, the ways to the beacons and the
/// predicted levels. The station and the other inputs are those of the main window.
class KnownBeacons {
 public:
  /// A change in the main window takes effect when it is this old, because its fields change with
  /// each key that the user presses.
  static constexpr std::chrono::milliseconds kSettled{1500};

  struct Collaborators {
    const BeaconPredictions& predictions;
    /// Reads the inputs of the prediction window.
    std::function<PredictionForm()> read_form;
    Diagnostics& diagnostics;
    std::filesystem::path program_folder;
  };

  /// A beacon and the way to it.
  struct Known {
    const BeaconModule::Beacon* beacon = nullptr;  ///< null if its location is unknown
    std::optional<BeaconModule::Way> way;  ///< nothing if its location or the station's is unknown
  };

  explicit KnownBeacons(const Collaborators& collaborators) : with_(collaborators) {}

  /// Reads the beacon files again; with `custom`, the user's own schedule.
  void ReadFiles(bool custom);
  /// Takes the present inputs of the main window.
  void TakeInputs();
  /// Takes them when they are settled, and a changed unit of distance at once. `passed` is the time
  /// of Timekeeping.
  void WatchInputs(std::chrono::milliseconds passed);

  /// A number that changes with the files and the ways to the beacons.
  [[nodiscard]] int Revision() const { return revision_; }
  [[nodiscard]] const BeaconModule::BeaconFiles& Files() const { return files_; }
  [[nodiscard]] const std::optional<BeaconModule::Schedule>& Schedule() const { return schedule_; }
  [[nodiscard]] const ParameterSet& Inputs() const { return inputs_; }
  [[nodiscard]] bool Miles() const { return miles_; }

  /// The frequencies of the schedule in kHz; none without a schedule.
  [[nodiscard]] const std::vector<double>& Frequencies() const { return frequencies_; }
  /// The beacons of the schedule, in the order in which they begin on its first frequency.
  [[nodiscard]] const std::vector<std::string>& Calls() const { return calls_; }
  [[nodiscard]] Known Of(const std::string& call) const;
  [[nodiscard]] BeaconModule::BeaconFacts Facts(UtcTime now) const;
  /// The beacons of the schedule that a path leads to: their locations are known and differ from
  /// the station's.
  [[nodiscard]] std::vector<BeaconModule::Beacon> Predictable() const;

  /// The levels of a frequency in kHz on an earlier day, without `day` on the present one. Null if
  /// they are unknown.
  [[nodiscard]] const BeaconPredictions::Levels* Levels(
      const std::optional<std::chrono::sys_days>& day, const std::string& call,
      double frequency) const;
  /// The level in the hour of `now`.
  [[nodiscard]] std::optional<std::int16_t> Level(const std::string& call, double frequency,
                                                  UtcTime now) const;

 private:
  /// The present state of the main window.
  struct Typed {
    ParameterSet inputs;
    std::string latitude;  ///< also where it is no valid latitude
    std::string longitude;
    friend bool operator==(const Typed&, const Typed&) = default;
  };

  void Locate();

  Collaborators with_;
  BeaconModule::BeaconFiles files_;
  std::optional<BeaconModule::Schedule> schedule_;
  std::vector<double> frequencies_;
  std::vector<std::string> calls_;
  ParameterSet inputs_ = BeaconParameters({});
  bool miles_ = true;
  std::vector<std::optional<BeaconModule::Way>> ways_;  ///< to the beacons of the location file
  int revision_ = 0;
  std::optional<Typed> typed_;  ///< inputs that are not settled
  std::chrono::milliseconds typed_since_{};
};

}  // namespace skyhop
