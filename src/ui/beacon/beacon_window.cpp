// Events of the beacon window.

#include "ui/beacon/beacon_window.h"

#include <algorithm>

#include "common/text.h"

namespace skyhop {
namespace {

using BeaconModule::Selection;
using std::chrono::milliseconds;

constexpr const char* kWindowName = "BeaconMonitor";

/// How often runs in the background are looked after.
constexpr milliseconds kPredictionPoll{100};

/// The name of a list's or check box's event in the debug log, with its value.
std::string EventText(const char* name, int value) {
  return std::string("BeaconMonitor.") + name + " " + std::to_string(value);
}

}  // namespace

BeaconWindow::BeaconWindow(const Collaborators& collaborators)
    : with_(collaborators),
      log_(with_.program_folder, with_.diagnostics),
      clock_watch_(with_.clock, with_.timekeeping),
      follower_(with_.peers) {}

void BeaconWindow::Show() {
  with_.diagnostics.Trap("BeaconMonitor.Show", [&] {
    with_.diagnostics.DebugLog("BeaconMonitor.Show");
    if (!loaded_) Form_Load();
    // Nobody looked while the window was closed.
    if (!shown_) clock_watch_.Restart();
    shown_ = true;
    TakeInputs();
    shown_day_.reset();
    with_.view.Enable(BeaconButton::kLater, false);
    with_.view.ShowWindow();
    Timer_Tick();
  });
}

void BeaconWindow::Form_Load() {
  with_.diagnostics.Trap("BeaconMonitor.Form_Load", [&] {
    loaded_ = true;
    RestoreOptions();
    with_.view.SetPlacement(RestoreWindowPosition(kWindowName, with_.view.Placement(),
                                                  with_.view.Monitors(), with_.settings));
    with_.diagnostics.Trap("HeardLog.Load", [&] { log_.Load(); });
    ReadFiles();
  });
}

void BeaconWindow::Form_QueryUnload() {
  with_.diagnostics.Trap("BeaconMonitor.Form_QueryUnload", [&] {
    with_.diagnostics.DebugLog("BeaconMonitor.Form_QueryUnload");
    shown_ = false;
    with_.view.StopTimer();
    with_.predictions.Yield();
    if (follow_) Check_Click(BeaconCheck::kFollow, false);
    with_.view.SetChecked(BeaconCheck::kFollow, false);
    SaveWindowPosition(kWindowName, with_.view.Placement(), with_.settings, with_.diagnostics);
    with_.view.HideWindow();
  });
}

void BeaconWindow::Form_Unload() {
  // A window that was never shown has no place of its own.
  if (!loaded_) return;
  with_.diagnostics.Trap("BeaconMonitor.Form_Unload", [&] {
    shown_ = false;
    with_.view.StopTimer();
    with_.predictions.Yield();
    SaveWindowPosition(kWindowName, with_.view.Placement(), with_.settings, with_.diagnostics);
  });
}

void BeaconWindow::Timer_Tick() {
  if (!shown_) return;
  with_.diagnostics.Trap("BeaconMonitor.Timer_Tick", [&] { Update(); });
  with_.diagnostics.Trap("BeaconMonitor.Timer_Tick", [&] { SetTimer(); });
}

/// To the next slot or the next whole second, whichever comes first.
void BeaconWindow::SetTimer() {
  const UtcTime now = with_.clock.UtcNow();
  UtcTime next = std::chrono::floor<std::chrono::seconds>(now) + std::chrono::seconds(1);
  if (schedule_) next = std::min(next, schedule_->At(now).end);
  milliseconds delay = std::max(next - now, milliseconds(1));
  if (with_.predictions.Working()) delay = std::min(delay, kPredictionPoll);
  with_.view.StartTimer(delay);
}

void BeaconWindow::SelectBy_Click(int index) {
  with_.diagnostics.Trap("BeaconMonitor.SelectBy_Click", [&] {
    with_.diagnostics.DebugLog(EventText("SelectBy_Click", index));
    selection_.by = static_cast<Selection::By>(index);
    UpdateChoices();
    SaveSelection();
    Timer_Tick();
  });
}

void BeaconWindow::Choice_Click(int index) {
  with_.diagnostics.Trap("BeaconMonitor.Choice_Click", [&] {
    with_.diagnostics.DebugLog(EventText("Choice_Click", index));
    if (index < 0) return;
    switch (selection_.by) {
      case Selection::By::kBand:
        if (!schedule_) return;
        wanted_frequency_ = schedule_->Table().frequencies.at(static_cast<std::size_t>(index));
        selection_.frequency = static_cast<std::size_t>(index);
        break;
      case Selection::By::kCall:
        wanted_call_ = Calls().at(static_cast<std::size_t>(index));
        selection_.call = wanted_call_;
        break;
      case Selection::By::kOctant:
        selection_.octant = static_cast<BeaconModule::Octant>(index);
        break;
    }
    SaveSelection();
    with_.view.Refresh();
    Timer_Tick();
  });
}

void BeaconWindow::Check_Click(BeaconCheck check, bool checked) {
  with_.diagnostics.Trap("BeaconMonitor.Check_Click", [&] {
    with_.diagnostics.DebugLog("BeaconMonitor.Check_Click " + std::string(Caption(check)) + " " +
                               BooleanText(checked));
    Flag(check) = checked;
    SaveOption(check);
    if (check == BeaconCheck::kCustomSchedule) ReadFiles();
    BeaconModule::FollowOptions options = options_;
    options.retune = true;
    follower_.SetOptions(follow_ ? options : BeaconModule::FollowOptions{});
    Timer_Tick();
  });
}

void BeaconWindow::Button_Click(BeaconButton button) {
  with_.diagnostics.Trap("BeaconMonitor.Button_Click", [&] {
    with_.diagnostics.DebugLog("BeaconMonitor.Button_Click " + std::string(Caption(button)));
    status_.clear();
    switch (button) {
      case BeaconButton::kHeard:
      case BeaconButton::kNotHeard:
        Mark(button == BeaconButton::kHeard);
        break;
      case BeaconButton::kExport:
        Export();
        break;
      case BeaconButton::kReload:
        with_.predictions.Forget();
        with_.diagnostics.Trap("HeardLog.Load", [&] { log_.Load(); });
        ReadFiles();
        break;
      case BeaconButton::kEarlier:
      case BeaconButton::kLater:
        StepDay(button == BeaconButton::kLater ? 1 : -1);
        break;
    }
    with_.view.Refresh();
    Timer_Tick();
  });
}

}  // namespace skyhop
