#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "beacon/beacon_files.h"
#include "beacon/clock_watch.h"
#include "beacon/directions.h"
#include "beacon/follower.h"
#include "beacon/heard_log.h"
#include "beacon/schedule.h"
#include "beacon/selection.h"
#include "common/clock.h"
#include "common/diagnostics.h"
#include "common/settings.h"
#include "common/user_messages.h"
#include "ui/beacon/beacon_day_chart.h"
#include "ui/beacon/beacon_predictions.h"
#include "ui/beacon/beacon_view.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// The rules of the beacon window `BeaconMonitor`: one method for each of its events. While the
/// window is open, a timer that is set anew for each second and each slot keeps it right; nothing
/// is counted, every tick asks the clock. Following begins when the user checks the box and ends
/// when the window closes: a program that starts must not tune a transceiver that is in use.
class BeaconWindow : public BeaconMonitor {
 public:
  /// All must outlive the controller.
  struct Collaborators {
    BeaconView& view;
    BeaconPredictions& predictions;
    BeaconModule::BeaconPeers& peers;
    /// Reads the inputs of the prediction window.
    std::function<PredictionForm()> read_form;
    UserMessages& messages;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
    const Clock& clock;
    const Timekeeping& timekeeping;
    std::filesystem::path program_folder;
  };

  /// How long what is typed into the main window has to stand still before it counts here.
  static constexpr std::chrono::milliseconds kSettled{1500};
  /// How long the window says what came of a button.
  static constexpr std::chrono::seconds kStatusShown{10};

  explicit BeaconWindow(const Collaborators& collaborators);

  [[nodiscard]] bool Available() const override { return true; }
  /// Loads the window when it is shown for the first time.
  void Show() override;
  void Form_Unload() override;

  void Form_Load();
  /// The user closes the window.
  void Form_QueryUnload();
  void Timer_Tick();

  // The view holds the new state already.
  void SelectBy_Click(int index);
  void Choice_Click(int index);
  void Check_Click(BeaconCheck check, bool checked);
  void Button_Click(BeaconButton button);

  void SetPalette(const ChartPalette& palette);
  /// Draws the day on a canvas of that size in pixels.
  void Paint(Surface& surface, double width, double height, double text_size);

 private:
  /// What is known of a beacon's place from here.
  struct Known {
    const BeaconModule::Beacon* beacon = nullptr;  ///< null when its location is not known
    std::optional<BeaconModule::Way> way;
  };

  [[nodiscard]] bool& Flag(BeaconCheck check);
  void RestoreOptions();
  void SaveOption(BeaconCheck check);
  void SaveSelection();

  void ReadFiles();
  void WatchInputs();
  void TakeInputs();
  void LocateStation();
  void UpdateChoices();
  [[nodiscard]] Known KnownOf(const std::string& call) const;
  [[nodiscard]] BeaconModule::BeaconFacts Facts(UtcTime now) const;
  [[nodiscard]] std::optional<std::int16_t> Level(const std::string& call, double frequency,
                                                  UtcTime now) const;
  [[nodiscard]] const std::optional<BeaconModule::Transmission>& Target(UtcTime now);

  void Update();
  void PredictLevels(UtcTime now);
  [[nodiscard]] BandRow RowOf(std::size_t frequency, UtcTime now) const;
  [[nodiscard]] std::string ClockText(UtcTime now) const;
  [[nodiscard]] std::string WayText(int bearing, int distance) const;
  [[nodiscard]] std::string ThereText(const BeaconModule::Beacon& beacon, UtcTime now) const;
  [[nodiscard]] std::string TargetText(
      UtcTime now, const std::optional<BeaconModule::Transmission>& target) const;
  [[nodiscard]] std::string SilenceText(UtcTime now) const;
  [[nodiscard]] std::string ProblemText() const;
  [[nodiscard]] std::string StatusText() const;
  void SetStatus(const std::string& text);
  void Follow(const std::optional<BeaconModule::Transmission>& target);
  void SetTimer();
  void RefreshDay(UtcTime now, const std::optional<BeaconModule::Transmission>& target);

  void Mark(bool heard);
  void Export();
  void StepDay(int days);
  [[nodiscard]] std::chrono::sys_days ShownDay() const;
  [[nodiscard]] std::string SelectedText() const;
  [[nodiscard]] DayChart Day() const;
  /// The beacons of the schedule, in its order, each once.
  [[nodiscard]] std::vector<std::string> Calls() const;
  [[nodiscard]] DayRow DayRowOf(const std::string& call, std::size_t frequency,
                                const std::vector<BeaconModule::HeardMark>& marks) const;

  Collaborators with_;
  bool loaded_ = false;
  bool shown_ = false;

  BeaconModule::BeaconFiles files_;
  std::optional<BeaconModule::Schedule> schedule_;
  BeaconModule::HeardLog log_;
  BeaconModule::ClockWatch clock_watch_;
  BeaconModule::Follower follower_;
  BeaconModule::Selection selection_;
  // What the user chose; the schedule may have neither.
  double wanted_frequency_ = 0;  ///< kHz
  std::string wanted_call_;
  bool follow_ = false;
  BeaconModule::FollowOptions options_;  ///< `retune` has no part in it
  bool custom_ = false;

  ParameterSet inputs_ = BeaconParameters({});
  /// What the main window has instead of them.
  struct Typed {
    ParameterSet inputs;
    std::string latitude;  ///< as it stands there
    std::string longitude;
    friend bool operator==(const Typed&, const Typed&) = default;
  };
  std::optional<Typed> typed_;
  std::chrono::milliseconds typed_since_{};
  bool miles_ = true;
  std::vector<std::optional<BeaconModule::Way>> ways_;  ///< to the beacons of the file

  /// What to listen for in a slot. Levels that come in do not change it before the slot is over:
  /// the user has heard one beacon and must not mark another.
  struct SlotTarget {
    BeaconModule::Slot slot;
    BeaconModule::Selection selection;
    std::optional<BeaconModule::Transmission> target;
  };
  std::optional<SlotTarget> slot_target_;

  std::optional<std::chrono::sys_days> shown_day_;  ///< nothing is today
  std::string status_;
  std::chrono::milliseconds status_since_{};
  /// What the canvas shows besides the marks.
  std::pair<UtcTime, std::optional<BeaconModule::Transmission>> painted_;
  ChartPalette palette_ = kLightPalette;
};

}  // namespace skyhop
