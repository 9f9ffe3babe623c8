#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>

#include "beacon/clock_watch.h"
#include "beacon/follower.h"
#include "common/diagnostics.h"
#include "common/timekeeping.h"
#include "ui/beacon/beacon_day.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// The controller of the beacon window `BeaconMonitor`: it passes events to its parts and updates
/// them with the time. A timer runs to the next second or slot while the window is open. Each tick
/// reads the clock; it does not count ticks. Following ends when the window closes.
class BeaconWindow : public BeaconMonitor {
 public:
  /// The time for which the window shows the result of a button.
  static constexpr std::chrono::seconds kStatusShown{10};

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

  explicit BeaconWindow(const Collaborators& collaborators);

  [[nodiscard]] bool Available() const override { return true; }
  /// Loads the window when it is shown for the first time.
  void Show() override;
  void Form_Unload() override;

  /// Runs the handler of an event in the error trap, then updates the window. A key that is held
  /// down presses its button once.
  void Handle(const BeaconEvent& event);

  void SetPalette(const ChartPalette& palette) { day_.SetPalette(palette); }
  /// Draws the day on a canvas of that size in pixels.
  void Paint(Surface& surface, double width, double height, double text_size);

 private:
  struct Handler {
    const char* name;  ///< in the logs
    void (BeaconWindow::*run)(const BeaconEvent& event);
  };
  /// In the order of BeaconEvent::Kind.
  static const std::array<Handler, 6> kHandlers;

  void Timer_Tick(const BeaconEvent& event);
  void SelectBy_Click(const BeaconEvent& event);
  void Choice_Click(const BeaconEvent& event);
  void Check_Click(const BeaconEvent& event);
  void Button_Click(const BeaconEvent& event);
  void Form_QueryUnload(const BeaconEvent& event);

  void Form_Load();
  void ReadFiles();
  void Close();
  [[nodiscard]] bool Repeats(const BeaconEvent& event);
  void SetStatus(const std::string& text);
  [[nodiscard]] std::string StatusText() const;
  void SetTimer();
  void Follow(const std::optional<BeaconModule::Transmission>& target);
  void PredictLevels(UtcTime now);

  Collaborators with_;
  KnownBeacons known_;
  BeaconChoice choice_;
  BeaconDay day_;
  BeaconModule::ClockWatch clock_watch_;
  BeaconModule::Follower follower_;
  bool loaded_ = false;
  bool shown_ = false;
  BeaconEvent last_key_;
  std::string status_;  ///< the result of a button
  std::chrono::milliseconds status_since_{};
};

}  // namespace skyhop
