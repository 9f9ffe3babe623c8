#include "ui/beacon/beacon_window.h"

#include <algorithm>
#include <utility>

#include "common/text.h"
#include "ui/beacon/beacon_texts.h"

namespace skyhop {
namespace {

using BeaconModule::Transmission;
using std::chrono::milliseconds;

constexpr const char* kWindowName = "BeaconMonitor";

/// The time between two looks at the runs in the background.
constexpr milliseconds kPredictionPoll{100};

/// The longest time until a key that is held down repeats itself, with the usual settings.
constexpr milliseconds kKeyDelay{700};

// Work for the predictions delays the next tick by these times at most.
constexpr milliseconds kShortWork{500};  ///< to start an engine or to read its results
constexpr milliseconds kLongWork{2500};  ///< to end an engine that does not respond

template <class Words, class Control>
std::string Caption(const Words& words, Control control) {
  return std::string(words.at(static_cast<std::size_t>(control)).caption);
}

/// The part of the log line that follows the handler's name.
std::string Details(const BeaconEvent& event) {
  switch (event.kind) {
    case BeaconEvent::kSelectByClick:
    case BeaconEvent::kChoiceClick:
      return " " + std::to_string(event.index);
    case BeaconEvent::kCheckClick:
      return " " + Caption(kBeaconCheckWords, event.check) + " " + BooleanText(event.checked);
    case BeaconEvent::kButtonClick:
      return " " + Caption(kBeaconButtonWords, event.button);
    case BeaconEvent::kTimerTick:
    case BeaconEvent::kFormQueryUnload:
      break;
  }
  return {};
}

}  // namespace

const std::array<BeaconWindow::Handler, 6> BeaconWindow::kHandlers = {{
    {"BeaconMonitor.Timer_Tick", &BeaconWindow::Timer_Tick},
    {"BeaconMonitor.SelectBy_Click", &BeaconWindow::SelectBy_Click},
    {"BeaconMonitor.Choice_Click", &BeaconWindow::Choice_Click},
    {"BeaconMonitor.Check_Click", &BeaconWindow::Check_Click},
    {"BeaconMonitor.Button_Click", &BeaconWindow::Button_Click},
    {"BeaconMonitor.Form_QueryUnload", &BeaconWindow::Form_QueryUnload},
}};

BeaconWindow::BeaconWindow(const Collaborators& collaborators)
    : with_(collaborators),
      known_({with_.predictions, with_.read_form, with_.diagnostics, with_.program_folder}),
      choice_(with_.view, with_.settings, with_.diagnostics),
      day_({with_.view, known_, choice_, with_.messages, with_.clock, with_.diagnostics,
            with_.program_folder}),
      clock_watch_(with_.clock, with_.timekeeping),
      follower_(with_.peers) {}

void BeaconWindow::Handle(const BeaconEvent& event) {
  const bool tick = event.kind == BeaconEvent::kTimerTick;
  if (tick ? !shown_ : Repeats(event)) return;
  const Handler& handler = kHandlers.at(event.kind);
  with_.diagnostics.Trap(handler.name, [&] {
    if (!tick) with_.diagnostics.DebugLog(handler.name + Details(event));
    (this->*handler.run)(event);
  });
  if (tick) {
    // The next tick comes even if this one failed.
    with_.diagnostics.Trap(handler.name, [&] { SetTimer(); });
  } else {
    with_.view.Refresh();
    Handle({.kind = BeaconEvent::kTimerTick});
  }
}

/// Whether `event` is the repetition of a key that is held down. Not all systems mark these.
bool BeaconWindow::Repeats(const BeaconEvent& event) {
  if (!event.key_time) return false;
  const BeaconEvent last = std::exchange(last_key_, event);
  return last.key_time && last.button == event.button &&
         *event.key_time - *last.key_time < kKeyDelay;
}

void BeaconWindow::Show() {
  with_.diagnostics.Trap("BeaconMonitor.Show", [&] {
    with_.diagnostics.DebugLog("BeaconMonitor.Show");
    if (!loaded_) Form_Load();
    // The clock may have been set while the window was closed.
    if (!shown_) clock_watch_.Restart();
    shown_ = true;
    known_.TakeInputs();
    day_.ShowToday();
    with_.view.ShowWindow();
    Handle({.kind = BeaconEvent::kTimerTick});
  });
}

void BeaconWindow::Form_Load() {
  with_.diagnostics.Trap("BeaconMonitor.Form_Load", [&] {
    loaded_ = true;
    with_.view.CreateControls();
    choice_.Restore();
    with_.view.SetPlacement(RestoreWindowPosition(kWindowName, with_.view.Placement(),
                                                  with_.view.Monitors(), with_.settings));
    day_.Load();
    ReadFiles();
  });
}

void BeaconWindow::ReadFiles() {
  known_.ReadFiles(choice_.Checked(BeaconCheck::kCustomSchedule));
  choice_.Offer(known_);
}

void BeaconWindow::Form_QueryUnload(const BeaconEvent& /*event*/) {
  Close();
  if (choice_.Checked(BeaconCheck::kFollow)) {
    Handle({.kind = BeaconEvent::kCheckClick, .check = BeaconCheck::kFollow});
  }
  with_.view.SetChecked(BeaconCheck::kFollow, false);
  with_.view.HideWindow();
}

void BeaconWindow::Form_Unload() {
  // A window that was never shown has no place to save.
  if (loaded_) with_.diagnostics.Trap("BeaconMonitor.Form_Unload", [&] { Close(); });
}

void BeaconWindow::Close() {
  shown_ = false;
  with_.view.StopTimer();
  with_.predictions.Yield();
  SaveWindowPosition(kWindowName, with_.view.Placement(), with_.settings, with_.diagnostics);
}

void BeaconWindow::SelectBy_Click(const BeaconEvent& event) {
  choice_.SelectBy(event.index, known_);
}

void BeaconWindow::Choice_Click(const BeaconEvent& event) {
  choice_.Choose(event.index, known_);
}

void BeaconWindow::Check_Click(const BeaconEvent& event) {
  choice_.Check(event.check, event.checked);
  if (event.check == BeaconCheck::kCustomSchedule) ReadFiles();
  follower_.SetOptions(choice_.Following());
}

void BeaconWindow::Button_Click(const BeaconEvent& event) {
  SetStatus({});
  switch (event.button) {
    case BeaconButton::kHeard:
    case BeaconButton::kNotHeard: {
      const UtcTime now = with_.clock.UtcNow();
      const std::optional<Transmission> target = choice_.Target(known_, now);
      SetStatus(target
                    ? day_.Mark(*target, event.button == BeaconButton::kHeard)
                    : "There is nothing to mark: " + SilenceText(now, known_, choice_.Selected()));
      break;
    }
    case BeaconButton::kExport:
      SetStatus(day_.Export());
      break;
    case BeaconButton::kReload:
      with_.predictions.Forget();
      day_.Load();
      ReadFiles();
      break;
    case BeaconButton::kEarlier:
    case BeaconButton::kLater:
      day_.Step(event.button == BeaconButton::kLater ? 1 : -1);
      break;
  }
}

void BeaconWindow::Timer_Tick(const BeaconEvent& /*event*/) {
  const UtcTime now = with_.clock.UtcNow();
  const std::string clock_problem = clock_watch_.Look();
  known_.WatchInputs(with_.timekeeping.Passed());
  const std::optional<Transmission> target = choice_.Target(known_, now);
  // The transceiver is first because it must be on time.
  Follow(target);
  BeaconTexts texts = TextsAt(now, known_, choice_, target, with_.peers.HasTransceiver());
  texts.warning = clock_problem;
  with_.view.SetTexts(texts);
  PredictLevels(with_.clock.UtcNow());
  with_.view.SetStatus(StatusText());
  day_.Tick(now, target);
}

void BeaconWindow::SetStatus(const std::string& text) {
  status_ = text;
  status_since_ = with_.timekeeping.Passed();
}

std::string BeaconWindow::StatusText() const {
  const bool fresh = with_.timekeeping.Passed() - status_since_ < kStatusShown;
  if (!status_.empty() && fresh) return status_;
  if (with_.predictions.Working()) return "Predicting the paths to the beacons";
  return with_.predictions.Problem();
}

/// Starts the timer to the next slot or the next whole second, whichever is first.
void BeaconWindow::SetTimer() {
  const UtcTime now = with_.clock.UtcNow();
  UtcTime next = std::chrono::floor<std::chrono::seconds>(now) + std::chrono::seconds(1);
  if (known_.Schedule()) next = std::min(next, known_.Schedule()->At(now).end);
  milliseconds delay = std::max(next - now, milliseconds(1));
  if (with_.predictions.Working()) delay = std::min(delay, kPredictionPoll);
  with_.view.StartTimer(delay);
}

void BeaconWindow::Follow(const std::optional<Transmission>& target) {
  if (!target || !choice_.Checked(BeaconCheck::kFollow)) return;
  const KnownBeacons::Known known = known_.Of(target->call);
  std::optional<std::int16_t> bearing;
  if (known.way) bearing = static_cast<std::int16_t>(known.way->short_bearing);
  follower_.Follow(target, known_.Frequencies()[target->frequency], known.beacon, bearing);
}

/// Does work for the predictions that ends before the next slot. In a short slot, the work may take
/// the first half.
void BeaconWindow::PredictLevels(UtcTime now) {
  if (!known_.Schedule()) return;
  const milliseconds left = known_.Schedule()->At(now).end - now;
  const milliseconds half = known_.Schedule()->Table().slot / 2;
  const bool time_to_end = left >= std::min(kLongWork, half);
  if (left < std::min(kShortWork, half)) return;
  const BeaconPredictions::Time passed(with_.timekeeping.Passed());
  if (time_to_end || !with_.predictions.Running()) {
    with_.predictions.Want(known_.Inputs(), known_.Predictable(), known_.Frequencies(), now);
  }
  if (!time_to_end && with_.predictions.MustEnd(passed)) return;
  if (with_.predictions.Poll(passed)) with_.view.Refresh();
}

void BeaconWindow::Paint(Surface& surface, double width, double height, double text_size) {
  with_.diagnostics.Trap("BeaconMonitor.Paint",
                         [&] { day_.Paint(surface, width, height, text_size); });
}

}  // namespace skyhop
