// Marks of heard beacons, and the day that shows them.

#include <algorithm>

#include "common/dates.h"
#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"
#include "ui/beacon/beacon_window.h"

namespace skyhop {
namespace {

using BeaconModule::Selection;

constexpr const char* kCaption = "Skyhop Beacons";
constexpr const char* kDegreeSign = "\xC2\xB0";

}  // namespace

void BeaconWindow::Mark(bool heard) {
  const UtcTime now = with_.clock.UtcNow();
  const auto target = Target(now);
  if (!target) {
    return SetStatus("There is nothing to mark: " + SilenceText(now));
  }
  const double frequency = schedule_->Table().frequencies[target->frequency];
  try {
    log_.Mark(
        {target->begin, target->call, frequency, heard, std::string(Trim(with_.view.Note()))});
    with_.view.SetNote({});
    SetStatus(target->call + " on " + NumberText(frequency) + " kHz is marked as " +
              (heard ? "heard" : "not heard"));
  } catch (const Error& error) {
    with_.messages.Show(std::string("The mark could not be saved: ") + error.what(), kCaption);
  }
}

void BeaconWindow::Export() {
  const std::chrono::sys_days day = ShownDay();
  const std::vector<BeaconModule::HeardMark> marks = log_.On(day);
  const std::string date = TimeStamp(day).substr(0, 10);
  const auto file = with_.view.AskFile("beacons-" + date + ".csv");
  if (!file) return;
  try {
    WriteFileAtOnce(PathFromText(*file), BeaconModule::HeardCsv(marks, files_.locations));
    SetStatus(std::to_string(marks.size()) + " marks exported to " + *file);
  } catch (const Error& error) {
    with_.messages.Show(std::string("The marks could not be exported: ") + error.what(), kCaption);
  }
}

void BeaconWindow::StepDay(int days) {
  const auto today = std::chrono::floor<std::chrono::days>(with_.clock.UtcNow());
  shown_day_ = shown_day_.value_or(today) + std::chrono::days(days);
  if (*shown_day_ >= today) shown_day_.reset();
  with_.view.Enable(BeaconButton::kLater, shown_day_.has_value());
}

std::chrono::sys_days BeaconWindow::ShownDay() const {
  return shown_day_.value_or(std::chrono::floor<std::chrono::days>(with_.clock.UtcNow()));
}

void BeaconWindow::SetPalette(const ChartPalette& palette) {
  palette_ = palette;
  with_.view.Refresh();
}

void BeaconWindow::Paint(Surface& surface, double width, double height, double text_size) {
  with_.diagnostics.Trap("BeaconMonitor.Paint",
                         [&] { PaintDayChart(Day(), width, height, text_size, surface); });
}

/// What is selected, for a heading.
std::string BeaconWindow::SelectedText() const {
  switch (selection_.by) {
    case Selection::By::kBand:
      if (!schedule_) break;
      return NumberText(schedule_->Table().frequencies.at(selection_.frequency)) + " kHz";
    case Selection::By::kCall:
      return selection_.call;
    case Selection::By::kOctant:
      return "beacons to the " + std::string(BeaconModule::kOctantNames.at(
                                     static_cast<std::size_t>(selection_.octant)));
  }
  return "no schedule";
}

DayChart BeaconWindow::Day() const {
  DayChart day;
  day.palette = palette_;
  day.title = DateText(ShownDay()) + " UTC, " + SelectedText();
  day.empty_text = selection_.by == Selection::By::kOctant ? "no beacon is in this direction"
                                                           : "there are no beacons";
  if (!shown_day_) {
    const UtcTime now = with_.clock.UtcNow();
    const auto since = now - std::chrono::floor<std::chrono::days>(now);
    day.hour = std::chrono::duration<double, std::ratio<3600>>(since).count();
  }
  if (!schedule_) return day;
  const std::vector<BeaconModule::HeardMark> marks = log_.On(ShownDay());
  const BeaconModule::BeaconFacts facts = Facts(with_.clock.UtcNow());
  const std::size_t frequencies = schedule_->Table().frequencies.size();
  for (const std::string& call : Calls()) {
    if (selection_.by == Selection::By::kCall && call != selection_.call) continue;
    if (selection_.by == Selection::By::kOctant && facts.octant(call) != selection_.octant)
      continue;
    for (std::size_t frequency = 0; frequency < frequencies; ++frequency) {
      if (selection_.by == Selection::By::kBand && frequency != selection_.frequency) continue;
      day.rows.push_back(DayRowOf(call, frequency, marks));
    }
  }
  return day;
}

DayRow BeaconWindow::DayRowOf(const std::string& call, std::size_t frequency,
                              const std::vector<BeaconModule::HeardMark>& marks) const {
  const double kilohertz = schedule_->Table().frequencies[frequency];
  DayRow row;
  row.label = call + " " + NumberText(kilohertz);
  if (selection_.by == Selection::By::kBand) {
    const Known known = KnownOf(call);
    row.label = call;
    if (known.way) row.label += " " + std::to_string(known.way->short_bearing) + kDegreeSign;
  }
  const BeaconPredictions::Levels* const levels =
      shown_day_ ? with_.predictions.Before(*shown_day_, call, kilohertz)
                 : with_.predictions.Of(call, kilohertz);
  if (levels != nullptr) row.levels = *levels;
  const UtcTime midnight = ShownDay();
  for (const BeaconModule::HeardMark& mark : marks) {
    if (mark.call != call || mark.frequency != kilohertz) continue;
    const std::chrono::duration<double, std::ratio<3600>> hours = mark.begin - midnight;
    row.marks.push_back({hours.count(), mark.heard});
  }
  const auto& target = painted_.second;
  row.now = target && target->call == call && target->frequency == frequency;
  return row;
}

}  // namespace skyhop
