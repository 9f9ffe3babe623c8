// What the beacon window shows.

#include <algorithm>

#include "common/dates.h"
#include "common/numbers.h"
#include "ui/beacon/beacon_window.h"
#include "ui/prediction/chart/solar_bars.h"

namespace skyhop {
namespace {

using BeaconModule::Beacon;
using BeaconModule::Selection;
using BeaconModule::Transmission;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr const char* kDegree = "\xC2\xB0";

// How long work for the predictions may keep the window from its next tick: starting an engine or
// reading what it wrote, and ending one that does not answer.
constexpr milliseconds kShortWork{500};
constexpr milliseconds kLongWork{2500};

/// "5 s", "1 min 25 s": whole seconds, the last one until it is over.
std::string DurationText(milliseconds duration) {
  const auto whole = std::chrono::ceil<seconds>(duration).count();
  const std::string left = std::to_string(whole % 60) + " s";
  return whole < 60 ? left : std::to_string(whole / 60) + " min " + left;
}

const char* SunText(SunState state) {
  switch (state) {
    case SunState::kDay:
      return "day";
    case SunState::kTwilight:
      return "twilight";
    case SunState::kNight:
      break;
  }
  return "night";
}

/// "Lohja, Finland", one of them or neither.
std::string PlaceText(const Beacon& beacon) {
  const bool both = !beacon.place.empty() && !beacon.country.empty();
  return beacon.place + (both ? ", " : "") + beacon.country;
}

}  // namespace

void BeaconWindow::Update() {
  const UtcTime now = with_.clock.UtcNow();
  const std::string clock_problem = clock_watch_.Look();
  WatchInputs();
  const auto target = Target(now);
  // Before anything else: the transceiver is to be on time.
  Follow(target);
  with_.view.SetClock(ClockText(now));
  std::vector<BandRow> rows;
  for (std::size_t i = 0; schedule_ && i < schedule_->Table().frequencies.size(); ++i) {
    rows.push_back(RowOf(i, now));
    rows.back().followed = target && target->frequency == i;
  }
  with_.view.SetRows(rows);
  with_.view.SetTarget(TargetText(now, target));
  with_.view.SetWarning(clock_problem);
  with_.view.SetProblem(ProblemText());
  PredictLevels(with_.clock.UtcNow());
  with_.view.SetStatus(StatusText());
  RefreshDay(now, target);
}

void BeaconWindow::PredictLevels(UtcTime now) {
  if (!schedule_) return;
  // The next slot is not to be late. One that is short has its first half for the predictions.
  const milliseconds left = schedule_->At(now).end - now;
  const milliseconds half = schedule_->Table().slot / 2;
  const bool time_to_end = left >= std::min(kLongWork, half);
  if (left < std::min(kShortWork, half)) return;
  const BeaconPredictions::Time passed(with_.timekeeping.Passed());
  std::vector<Beacon> beacons;
  for (const std::string& call : Calls()) {
    const Known known = KnownOf(call);
    // There is no path from a place to itself.
    const bool here = known.way && known.way->short_distance == 0;
    if (known.beacon != nullptr && !here) beacons.push_back(*known.beacon);
  }
  if (time_to_end || !with_.predictions.Running()) {
    with_.predictions.Want(inputs_, beacons, schedule_->Table().frequencies, now);
  }
  if (!time_to_end && with_.predictions.MustEnd(passed)) return;
  if (with_.predictions.Poll(passed)) with_.view.Refresh();
}

void BeaconWindow::RefreshDay(UtcTime now, const std::optional<Transmission>& target) {
  std::pair<UtcTime, std::optional<Transmission>> shown = {
      std::chrono::floor<std::chrono::minutes>(now), target};
  if (shown == painted_) return;
  painted_ = std::move(shown);
  with_.view.Refresh();
}

BeaconWindow::Known BeaconWindow::KnownOf(const std::string& call) const {
  const std::vector<Beacon>& beacons = files_.locations.beacons;
  const Beacon* const beacon = files_.locations.Find(call);
  if (beacon == nullptr) return {};
  return {beacon, ways_.at(static_cast<std::size_t>(beacon - beacons.data()))};
}

BeaconModule::BeaconFacts BeaconWindow::Facts(UtcTime now) const {
  BeaconModule::BeaconFacts facts;
  facts.octant = [this](const std::string& call) -> std::optional<BeaconModule::Octant> {
    const Known known = KnownOf(call);
    if (!known.way) return std::nullopt;
    return BeaconModule::OctantOf(known.way->azimuth);
  };
  facts.on_air = [this](const std::string& call) {
    const Beacon* const beacon = files_.locations.Find(call);
    return beacon == nullptr || beacon->on_air;
  };
  facts.open_level = [this, now](const std::string& call, std::size_t frequency) {
    return int{Level(call, schedule_->Table().frequencies[frequency], now).value_or(0)};
  };
  return facts;
}

std::optional<std::int16_t> BeaconWindow::Level(const std::string& call, double frequency,
                                                UtcTime now) const {
  const BeaconPredictions::Levels* const levels = with_.predictions.Of(call, frequency);
  if (levels == nullptr) return std::nullopt;
  return levels->at(static_cast<std::size_t>(UtcHourMinute(now).hour));
}

const std::optional<Transmission>& BeaconWindow::Target(UtcTime now) {
  BeaconModule::Slot slot;
  if (schedule_) slot = schedule_->At(now);
  const bool same =
      slot_target_ && slot_target_->slot == slot && slot_target_->selection == selection_;
  if (!same) {
    slot_target_ = {slot, selection_, std::nullopt};
    if (schedule_) {
      slot_target_->target = BeaconModule::TargetAt(*schedule_, selection_, now, Facts(now));
    }
  }
  return slot_target_->target;
}

void BeaconWindow::Follow(const std::optional<Transmission>& target) {
  if (!target || !follow_) return;
  const Known known = KnownOf(target->call);
  std::optional<std::int16_t> bearing;
  if (known.way) bearing = static_cast<std::int16_t>(known.way->short_bearing);
  follower_.Follow(target, schedule_->Table().frequencies[target->frequency], known.beacon,
                   bearing);
}

std::string BeaconWindow::ClockText(UtcTime now) const {
  std::string text = TimeStamp(now).substr(11) + " UTC";
  if (!schedule_) return text;
  const BeaconModule::Slot slot = schedule_->At(now);
  return text + ", slot " + std::to_string(slot.index + 1) + " of " +
         std::to_string(schedule_->Table().slots.size()) + ", next in " +
         DurationText(slot.end - now);
}

BandRow BeaconWindow::RowOf(std::size_t frequency, UtcTime now) const {
  const double kilohertz = schedule_->Table().frequencies[frequency];
  const std::string& call = schedule_->CallOn(frequency, now);
  BandRow row;
  auto& [where, who, left, place, short_path, long_path, there, predicted, next] = row.texts;
  where = NumberText(kilohertz);
  for (const Transmission& after : schedule_->Following(frequency, now, 2)) {
    next += (next.empty() ? "" : ", ") + after.call;
  }
  who = call.empty() ? "-" : call;
  if (call.empty()) return row;
  left = DurationText(schedule_->At(now).end - now);
  const Known known = KnownOf(call);
  if (known.beacon != nullptr) {
    place = PlaceText(*known.beacon);
    there = ThereText(*known.beacon, now);
    if (!known.beacon->on_air) who += " (off)";
  }
  if (known.way) {
    short_path = WayText(known.way->short_bearing, known.way->short_distance);
    long_path = WayText(known.way->long_bearing, known.way->long_distance);
  }
  if (const auto level = Level(call, kilohertz, now)) predicted = LevelText(*level);
  return row;
}

std::string BeaconWindow::WayText(int bearing, int distance) const {
  return std::to_string(bearing) + kDegree + " " + std::to_string(distance) +
         (miles_ ? " mi" : " km");
}

/// The time of day at a beacon, as far as its time zone is known, and the sun there.
std::string BeaconWindow::ThereText(const Beacon& beacon, UtcTime now) const {
  std::string sun = SunText(SunStateAt(beacon.position, now));
  if (!beacon.utc_offset) return sun;
  return TimeStamp(now, *beacon.utc_offset).substr(11, 5) + " " + sun;
}

std::string BeaconWindow::TargetText(UtcTime now, const std::optional<Transmission>& target) const {
  if (!schedule_) return "There is no schedule";
  if (!target) return "Nothing to listen for: " + SilenceText(now);
  std::string text = follow_ ? "Following " : "Listen for ";
  text += target->call + " on " + NumberText(schedule_->Table().frequencies[target->frequency]) +
          " kHz";
  const Known known = KnownOf(target->call);
  if (known.beacon != nullptr) {
    const Beacon& beacon = *known.beacon;
    text += ": " + PlaceText(beacon);
    if (!beacon.continent.empty()) text += ", " + beacon.continent;
    if (!beacon.cq_zone.empty()) text += ", CQ " + beacon.cq_zone;
    if (!beacon.itu_zone.empty()) text += ", ITU " + beacon.itu_zone;
    if (!beacon.on_air) text += ", off the air";
  }
  if (follow_ && !with_.peers.HasTransceiver()) {
    text += " (no transceiver control is connected)";
  }
  return text;
}

/// Why there is nothing to listen for.
std::string BeaconWindow::SilenceText(UtcTime now) const {
  if (!schedule_) return "there is no schedule";
  switch (selection_.by) {
    case Selection::By::kBand:
      return "nobody transmits in this slot";
    case Selection::By::kCall:
      break;
    case Selection::By::kOctant: {
      if (LatLonModule::IsUndefined(inputs_.receiver)) return "your station's location is missing";
      const auto octant = static_cast<std::size_t>(selection_.octant);
      return "no beacon to the " + std::string(BeaconModule::kOctantNames.at(octant)) +
             " transmits in this slot";
    }
  }
  const auto next = schedule_->NextOf(selection_.call, now);
  if (!next) return selection_.call + " is not in the schedule";
  return selection_.call + " is next on " +
         NumberText(schedule_->Table().frequencies[next->frequency]) + " kHz in " +
         DurationText(next->begin - now);
}

/// The first thing that is wrong with the files.
std::string BeaconWindow::ProblemText() const {
  if (files_.problems.empty()) return {};
  std::string text = files_.problems.front().Message();
  if (files_.problems.size() > 1) {
    text += " (" + std::to_string(files_.problems.size() - 1) + " more; see the error log)";
  }
  return text;
}

std::string BeaconWindow::StatusText() const {
  const bool fresh = with_.timekeeping.Passed() - status_since_ < kStatusShown;
  if (!status_.empty() && fresh) return status_;
  if (with_.predictions.Working()) return "Predicting the paths to the beacons";
  return with_.predictions.Problem();
}

void BeaconWindow::SetStatus(const std::string& text) {
  status_ = text;
  status_since_ = with_.timekeeping.Passed();
}

}  // namespace skyhop
