#include "ui/beacon/beacon_day.h"

#include "common/dates.h"
#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {
namespace {

using BeaconModule::Selection;
using Hours = std::chrono::duration<double, std::ratio<3600>>;

constexpr const char* kCaption = "Skyhop Beacons";

/// The selection in words, for the title.
std::string SelectedText(const Selection& selection, const std::vector<double>& frequencies) {
  switch (selection.by) {
    case Selection::By::kBand:
      if (frequencies.empty()) break;
      return NumberText(frequencies.at(selection.frequency)) + " kHz";
    case Selection::By::kCall:
      return selection.call;
    case Selection::By::kOctant:
      return "beacons to the " +
             std::string(BeaconModule::kOctantNames.at(static_cast<std::size_t>(selection.octant)));
  }
  return "no schedule";
}

}  // namespace

void BeaconDay::Load() {
  with_.diagnostics.Trap("HeardLog.Load", [&] { log_.Load(); });
}

std::string BeaconDay::Mark(const BeaconModule::Transmission& transmission, bool heard) {
  const double frequency = with_.known.Frequencies()[transmission.frequency];
  try {
    log_.Mark({transmission.begin, transmission.call, frequency, heard,
               std::string(Trim(with_.view.Note()))});
  } catch (const Error& error) {
    with_.messages.Show(std::string("The mark could not be saved: ") + error.what(), kCaption);
    return {};
  }
  with_.view.SetNote({});
  return transmission.call + " on " + NumberText(frequency) + " kHz is marked as " +
         (heard ? "heard" : "not heard");
}

std::string BeaconDay::Export() {
  const std::vector<BeaconModule::HeardMark> marks = log_.On(ShownDay());
  const auto file = with_.view.AskFile("beacons-" + TimeStamp(ShownDay()).substr(0, 10) + ".csv");
  if (!file) return {};
  try {
    WriteFileAtOnce(PathFromText(*file),
                    BeaconModule::HeardCsv(marks, with_.known.Files().locations));
  } catch (const Error& error) {
    with_.messages.Show(std::string("The marks could not be exported: ") + error.what(), kCaption);
    return {};
  }
  return std::to_string(marks.size()) + " marks exported to " + *file;
}

void BeaconDay::Step(int days) {
  shown_ = ShownDay() + std::chrono::days(days);
  if (*shown_ >= Today()) shown_.reset();
  with_.view.Enable(BeaconButton::kLater, shown_.has_value());
}

void BeaconDay::ShowToday() {
  shown_.reset();
  with_.view.Enable(BeaconButton::kLater, false);
}

std::chrono::sys_days BeaconDay::Today() const {
  return std::chrono::floor<std::chrono::days>(with_.clock.UtcNow());
}

void BeaconDay::SetPalette(const ChartPalette& palette) {
  palette_ = palette;
  with_.view.Refresh();
}

void BeaconDay::Paint(Surface& surface, double width, double height, double text_size) const {
  PaintDayChart(Chart(), width, height, text_size, surface);
}

void BeaconDay::Tick(UtcTime now, const std::optional<BeaconModule::Transmission>& target) {
  const Painted present{std::chrono::floor<std::chrono::minutes>(now), with_.known.Revision(),
                        target};
  if (present == painted_) return;
  painted_ = present;
  with_.view.Refresh();
}

DayChart BeaconDay::Chart() const {
  const Selection& selection = with_.choice.Selected();
  const std::vector<double>& frequencies = with_.known.Frequencies();
  DayChart day;
  day.palette = palette_;
  day.title = DateText(ShownDay()) + " UTC, " + SelectedText(selection, frequencies);
  day.empty_text = selection.by == Selection::By::kOctant ? "no beacon is in this direction"
                                                          : "there are no beacons";
  const UtcTime now = with_.clock.UtcNow();
  if (!shown_) day.hour = Hours(now - Today()).count();
  const std::vector<BeaconModule::HeardMark> marks = log_.On(ShownDay());
  const BeaconModule::BeaconFacts facts = with_.known.Facts(now);
  for (const std::string& call : with_.known.Calls()) {
    if (selection.by == Selection::By::kCall && call != selection.call) continue;
    if (selection.by == Selection::By::kOctant && facts.octant(call) != selection.octant) continue;
    for (std::size_t frequency = 0; frequency < frequencies.size(); ++frequency) {
      if (selection.by == Selection::By::kBand && frequency != selection.frequency) continue;
      day.rows.push_back(RowOf(call, frequency, marks));
    }
  }
  return day;
}

DayRow BeaconDay::RowOf(const std::string& call, std::size_t frequency,
                        const std::vector<BeaconModule::HeardMark>& marks) const {
  const double kilohertz = with_.known.Frequencies()[frequency];
  DayRow row;
  row.label = call + " " + NumberText(kilohertz);
  if (with_.choice.Selected().by == Selection::By::kBand) {
    row.label = call;
    const auto way = with_.known.Of(call).way;
    if (way) row.label += " " + std::to_string(way->short_bearing) + "\xC2\xB0";
  }
  const auto* const levels = with_.known.Levels(shown_, call, kilohertz);
  if (levels != nullptr) row.levels = *levels;
  for (const BeaconModule::HeardMark& mark : marks) {
    if (mark.call != call || mark.frequency != kilohertz) continue;
    row.marks.push_back({Hours(mark.begin - UtcTime(ShownDay())).count(), mark.heard});
  }
  const auto& target = painted_.target;
  row.now = target && target->call == call && target->frequency == frequency;
  return row;
}

}  // namespace skyhop
