// Events, options and files of the beacon window.

#include "ui/beacon/beacon_window.h"

#include <algorithm>

#include "common/dates.h"
#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"

namespace skyhop {
namespace {

using BeaconModule::Selection;
using std::chrono::milliseconds;

constexpr const char* kWindowName = "BeaconMonitor";
constexpr const char* kCaption = "Skyhop Beacons";
constexpr const char* kSection = "Beacon";

/// How often runs in the background are looked after.
constexpr milliseconds kPredictionPoll{100};

constexpr const char* KeyOf(BeaconCheck check) {
  switch (check) {
    case BeaconCheck::kRotate:
      return "Rotate";
    case BeaconCheck::kLookUp:
      return "LookUp";
    case BeaconCheck::kSelectBearing:
      return "SelectBearing";
    case BeaconCheck::kCustomSchedule:
      return "CustomSchedule";
    case BeaconCheck::kFollow:
      break;
  }
  return "";
}

constexpr std::array<BeaconCheck, 4> kKeptChecks = {BeaconCheck::kRotate, BeaconCheck::kLookUp,
                                                    BeaconCheck::kSelectBearing,
                                                    BeaconCheck::kCustomSchedule};

}  // namespace

BeaconWindow::BeaconWindow(const Collaborators& collaborators)
    : with_(collaborators),
      log_(with_.program_folder, with_.diagnostics),
      clock_watch_(with_.clock, with_.timekeeping),
      follower_(with_.peers) {}

void BeaconWindow::Show() {
  with_.diagnostics.Trap("BeaconMonitor.Show", [&] {
    if (!loaded_) Form_Load();
    shown_ = true;
    day_offset_ = 0;
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
    shown_ = false;
    with_.view.StopTimer();
    with_.predictions.Stop();
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
    with_.predictions.Stop();
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
    selection_.by = static_cast<Selection::By>(index);
    UpdateChoices();
    SaveSelection();
    Timer_Tick();
  });
}

void BeaconWindow::Choice_Click(int index) {
  with_.diagnostics.Trap("BeaconMonitor.Choice_Click", [&] {
    if (index < 0) return;
    switch (selection_.by) {
      case Selection::By::kBand:
        selection_.frequency = static_cast<std::size_t>(index);
        break;
      case Selection::By::kCall:
        selection_.call = Calls().at(static_cast<std::size_t>(index));
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
    Flag(check) = checked;
    if (check != BeaconCheck::kFollow) SaveOption(KeyOf(check), BooleanText(checked));
    if (check == BeaconCheck::kCustomSchedule) ReadFiles();
    BeaconModule::FollowOptions options = options_;
    options.retune = true;
    follower_.SetOptions(follow_ ? options : BeaconModule::FollowOptions{});
    Timer_Tick();
  });
}

void BeaconWindow::Button_Click(BeaconButton button) {
  with_.diagnostics.Trap("BeaconMonitor.Button_Click", [&] {
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

bool& BeaconWindow::Flag(BeaconCheck check) {
  switch (check) {
    case BeaconCheck::kRotate:
      return options_.rotate;
    case BeaconCheck::kLookUp:
      return options_.look_up;
    case BeaconCheck::kSelectBearing:
      return options_.select_bearing;
    case BeaconCheck::kCustomSchedule:
      return custom_;
    case BeaconCheck::kFollow:
      break;
  }
  return follow_;
}

void BeaconWindow::RestoreOptions() {
  const Common::Settings& settings = with_.settings;
  for (const BeaconCheck check : kKeptChecks) {
    Flag(check) = settings.GetBooleanSetting(kProductName, kSection, KeyOf(check), "False");
    with_.view.SetChecked(check, Flag(check));
  }
  const auto number = [&](const char* key, int count) {
    const int value = settings.GetIntegerSetting(kProductName, kSection, key, "0");
    return value >= 0 && value < count ? value : 0;
  };
  selection_.by = static_cast<Selection::By>(number("SelectBy", int{kSelectByTexts.size()}));
  selection_.octant =
      static_cast<BeaconModule::Octant>(number("Octant", BeaconModule::kOctantCount));
  selection_.call = UpperCase(settings.GetStringSetting(kProductName, kSection, "Call", ""));
  wanted_frequency_ =
      LeadingNumber(settings.GetStringSetting(kProductName, kSection, "Frequency", "14100"));
  with_.view.SetSelectBy(static_cast<int>(selection_.by));
}

void BeaconWindow::SaveOption(const char* key, const std::string& value) {
  with_.diagnostics.Trap("BeaconMonitor.SaveOption", [&] {
    with_.settings.Store().SaveSetting(kProductName, kSection, key, value);
  });
}

void BeaconWindow::SaveSelection() {
  if (schedule_) wanted_frequency_ = schedule_->Table().frequencies.at(selection_.frequency);
  with_.diagnostics.Trap("BeaconMonitor.SaveSelection", [&] {
    const std::array<SettingEntry, 4> entries = {{
        {kSection, "SelectBy", std::to_string(static_cast<int>(selection_.by))},
        {kSection, "Frequency", NumberText(wanted_frequency_)},
        {kSection, "Call", selection_.call},
        {kSection, "Octant", std::to_string(static_cast<int>(selection_.octant))},
    }};
    with_.settings.Store().Save(kProductName, entries);
  });
}

void BeaconWindow::ReadFiles() {
  files_ = BeaconModule::ReadBeaconFiles(with_.program_folder, custom_, with_.diagnostics);
  schedule_.reset();
  selection_.frequency = 0;
  if (files_.schedule) {
    schedule_.emplace(*files_.schedule);
    const std::vector<double>& frequencies = schedule_->Table().frequencies;
    const auto found = std::find(frequencies.begin(), frequencies.end(), wanted_frequency_);
    if (found != frequencies.end()) {
      selection_.frequency = static_cast<std::size_t>(found - frequencies.begin());
    }
  }
  LocateStation();
  UpdateChoices();
}

void BeaconWindow::LocateStation() {
  inputs_ = ReadBeaconInputs(with_.panel, with_.parameters);
  miles_ = with_.panel.Checked(PanelCheck::kDistanceMiles);
  Diagnostics& log = with_.diagnostics;
  const bool valid = LatLonModule::ValidLatitude(inputs_.latitude, log) &&
                     LatLonModule::ValidLongitude(inputs_.longitude, log);
  station_ = {LatLonModule::UndefinedAngle(), LatLonModule::UndefinedAngle()};
  if (valid) {
    station_ = {LatLonModule::ParseAngle(inputs_.latitude, log),
                LatLonModule::ParseAngle(inputs_.longitude, log)};
  }
  ways_.clear();
  for (const BeaconModule::Beacon& beacon : files_.locations.beacons) {
    ways_.push_back(BeaconModule::WayTo(station_, beacon.position, miles_, log));
  }
  with_.view.Refresh();
}

std::vector<std::string> BeaconWindow::Calls() const {
  std::vector<std::string> calls;
  if (!schedule_) return calls;
  // Column by column: in the order in which the beacons come onto the first frequency.
  for (std::size_t column = 0; column < schedule_->Table().frequencies.size(); ++column) {
    for (const std::vector<std::string>& slot : schedule_->Table().slots) {
      const std::string& call = slot[column];
      const bool known = std::find(calls.begin(), calls.end(), call) != calls.end();
      if (!call.empty() && !known) calls.push_back(call);
    }
  }
  return calls;
}

void BeaconWindow::UpdateChoices() {
  std::vector<std::string> texts;
  std::size_t index = 0;
  switch (selection_.by) {
    case Selection::By::kBand:
      if (!schedule_) break;
      for (const double frequency : schedule_->Table().frequencies) {
        texts.push_back(NumberText(frequency) + " kHz");
      }
      index = selection_.frequency;
      break;
    case Selection::By::kCall: {
      texts = Calls();
      const auto found = std::find(texts.begin(), texts.end(), selection_.call);
      index = found == texts.end() ? 0 : static_cast<std::size_t>(found - texts.begin());
      if (!texts.empty()) selection_.call = texts[index];
      break;
    }
    case Selection::By::kOctant:
      texts.assign(BeaconModule::kOctantNames.begin(), BeaconModule::kOctantNames.end());
      index = static_cast<std::size_t>(selection_.octant);
      break;
  }
  with_.view.SetChoices(texts, texts.empty() ? -1 : static_cast<int>(index));
  with_.view.Refresh();
}

void BeaconWindow::Mark(bool heard) {
  const UtcTime now = with_.clock.UtcNow();
  const auto target = Target(now);
  if (!target) {
    status_ = "There is nothing to mark: " + SilenceText(now);
    return;
  }
  const double frequency = schedule_->Table().frequencies[target->frequency];
  status_ = target->call + " on " + NumberText(frequency) + " kHz is marked as " +
            (heard ? "heard" : "not heard");
  try {
    log_.Mark(
        {target->begin, target->call, frequency, heard, std::string(Trim(with_.view.Note()))});
    with_.view.SetNote({});
  } catch (const Error& error) {
    with_.messages.Show(std::string("The mark could not be saved: ") + error.what(), kCaption);
  }
}

void BeaconWindow::Export() {
  const std::chrono::year_month_day day = ShownDay();
  const std::vector<BeaconModule::HeardMark> marks = log_.On(day);
  const std::string date = TimeStamp(std::chrono::sys_days(day)).substr(0, 10);
  const auto file = with_.view.AskFile("beacons-" + date + ".csv");
  if (!file) return;
  try {
    WriteFileAtOnce(PathFromText(*file), BeaconModule::HeardCsv(marks, files_.locations));
    status_ = std::to_string(marks.size()) + " marks exported to " + *file;
  } catch (const Error& error) {
    with_.messages.Show(std::string("The marks could not be exported: ") + error.what(), kCaption);
  }
}

void BeaconWindow::StepDay(int days) {
  day_offset_ = std::min(0, day_offset_ + days);
  with_.view.Enable(BeaconButton::kLater, day_offset_ < 0);
}

std::chrono::year_month_day BeaconWindow::ShownDay() const {
  const auto today = std::chrono::floor<std::chrono::days>(with_.clock.UtcNow());
  return today + std::chrono::days(day_offset_);
}

}  // namespace skyhop
