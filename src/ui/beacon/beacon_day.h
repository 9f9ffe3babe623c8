#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "beacon/heard_log.h"
#include "common/user_messages.h"
#include "ui/beacon/beacon_choice.h"
#include "ui/beacon/beacon_day_chart.h"

namespace skyhop {

/// The user's marks of heard beacons, and the chart of a day with marks and predicted levels.
class BeaconDay {
 public:
  struct Collaborators {
    BeaconView& view;
    const KnownBeacons& known;
    const BeaconChoice& choice;
    UserMessages& messages;
    const Clock& clock;
    Diagnostics& diagnostics;
    std::filesystem::path program_folder;
  };

  explicit BeaconDay(const Collaborators& collaborators)
      : with_(collaborators), log_(with_.program_folder, with_.diagnostics) {}

  /// Reads the marks from their file.
  void Load();
  /// Marks a transmission with the note in the view. Reports a failure in a message box. Returns
  /// the new status text, empty after a failure.
  [[nodiscard]] std::string Mark(const BeaconModule::Transmission& transmission, bool heard);
  /// Exports the marks of the shown day into a file that the user selects. The same results; empty
  /// also if the user cancels.
  [[nodiscard]] std::string Export();

  /// Shows another day, at most today.
  void Step(int days);
  void ShowToday();

  void SetPalette(const ChartPalette& palette);
  /// Draws the shown day on a canvas of that size in pixels.
  void Paint(Surface& surface, double width, double height, double text_size) const;
  /// Refreshes the canvas in each minute, for each target and when the beacons change.
  void Tick(UtcTime now, const std::optional<BeaconModule::Transmission>& target);

 private:
  /// The chart is painted again when one of these changes.
  struct Painted {
    UtcTime minute;
    int revision = 0;  ///< of `known`
    std::optional<BeaconModule::Transmission> target;
    friend bool operator==(const Painted&, const Painted&) = default;
  };

  [[nodiscard]] std::chrono::sys_days Today() const;
  [[nodiscard]] std::chrono::sys_days ShownDay() const { return shown_.value_or(Today()); }
  [[nodiscard]] DayChart Chart() const;
  [[nodiscard]] DayRow RowOf(const std::string& call, std::size_t frequency,
                             const std::vector<BeaconModule::HeardMark>& marks) const;

  Collaborators with_;
  BeaconModule::HeardLog log_;
  std::optional<std::chrono::sys_days> shown_;  ///< nothing for today
  ChartPalette palette_ = kLightPalette;
  Painted painted_;
};

}  // namespace skyhop
