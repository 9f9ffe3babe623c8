#include "ui/beacon/beacon_texts.h"

#include "common/dates.h"
#include "common/numbers.h"
#include "ui/beacon/beacon_day_chart.h"
#include "ui/prediction/chart/solar_bars.h"

namespace skyhop {
namespace {

using BeaconModule::Beacon;
using BeaconModule::kOctantNames;
using BeaconModule::Selection;
using BeaconModule::Transmission;
using std::chrono::milliseconds;
using std::chrono::seconds;

/// "5 s", "1 min 25 s": rounded up, so that "0 s" is the end.
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

/// "Lohja, Finland", one of them or an empty text.
std::string PlaceText(const Beacon& beacon) {
  const bool both = !beacon.place.empty() && !beacon.country.empty();
  return beacon.place + (both ? ", " : "") + beacon.country;
}

std::string WayText(int bearing, int distance, bool miles) {
  return std::to_string(bearing) + "\xC2\xB0 " + std::to_string(distance) + (miles ? " mi" : " km");
}

/// The local time at a beacon, if its time zone is known, and the state of the sun there.
std::string ThereText(const Beacon& beacon, UtcTime now) {
  std::string sun = SunText(SunStateAt(beacon.position, now));
  if (!beacon.utc_offset) return sun;
  return TimeStamp(now, *beacon.utc_offset).substr(11, 5) + " " + sun;
}

/// The first problem of the files, and the number of the others.
std::string ProblemText(const std::vector<BeaconModule::FileProblem>& problems) {
  if (problems.empty()) return {};
  std::string text = problems.front().Message();
  if (problems.size() > 1) {
    text += " (" + std::to_string(problems.size() - 1) + " more; see the error log)";
  }
  return text;
}

std::string ClockText(const std::optional<BeaconModule::Schedule>& schedule, UtcTime now) {
  std::string text = TimeStamp(now).substr(11) + " UTC";
  if (!schedule) return text;
  const BeaconModule::Slot slot = schedule->At(now);
  return text + ", slot " + std::to_string(slot.index + 1) + " of " +
         std::to_string(schedule->Table().slots.size()) + ", next in " +
         DurationText(slot.end - now);
}

BandRow RowOf(const KnownBeacons& known, std::size_t frequency, UtcTime now) {
  const BeaconModule::Schedule& schedule = *known.Schedule();
  const double kilohertz = known.Frequencies()[frequency];
  const std::string& call = schedule.CallOn(frequency, now);
  BandRow row;
  auto& [where, who, left, place, short_path, long_path, there, predicted, next] = row.texts;
  where = NumberText(kilohertz);
  for (const Transmission& after : schedule.Following(frequency, now, 2)) {
    next += (next.empty() ? "" : ", ") + after.call;
  }
  who = call.empty() ? "-" : call;
  if (call.empty()) return row;
  left = DurationText(schedule.At(now).end - now);
  const auto [beacon, way] = known.Of(call);
  if (beacon != nullptr) {
    place = PlaceText(*beacon);
    there = ThereText(*beacon, now);
    if (!beacon->on_air) who += " (off)";
  }
  if (way) {
    short_path = WayText(way->short_bearing, way->short_distance, known.Miles());
    long_path = WayText(way->long_bearing, way->long_distance, known.Miles());
  }
  if (const auto level = known.Level(call, kilohertz, now)) predicted = LevelText(*level);
  return row;
}

std::string TargetText(const KnownBeacons& known, const Transmission& target) {
  std::string text =
      target.call + " on " + NumberText(known.Frequencies()[target.frequency]) + " kHz";
  const Beacon* const beacon = known.Of(target.call).beacon;
  if (beacon == nullptr) return text;
  text += ": " + PlaceText(*beacon);
  if (!beacon->continent.empty()) text += ", " + beacon->continent;
  if (!beacon->cq_zone.empty()) text += ", CQ " + beacon->cq_zone;
  if (!beacon->itu_zone.empty()) text += ", ITU " + beacon->itu_zone;
  if (!beacon->on_air) text += ", off the air";
  return text;
}

}  // namespace

BeaconTexts TextsAt(UtcTime now, const KnownBeacons& known, const BeaconChoice& choice,
                    const std::optional<Transmission>& target, bool has_transceiver) {
  BeaconTexts texts;
  texts.clock = ClockText(known.Schedule(), now);
  texts.problem = ProblemText(known.Files().problems);
  for (std::size_t i = 0; i < known.Frequencies().size(); ++i) {
    texts.rows.push_back(RowOf(known, i, now));
    texts.rows.back().followed = target && target->frequency == i;
  }
  if (!known.Schedule()) {
    texts.target = "There is no schedule";
  } else if (!target) {
    texts.target = "Nothing to listen for: " + SilenceText(now, known, choice.Selected());
  } else if (!choice.Checked(BeaconCheck::kFollow)) {
    texts.target = "Listen for " + TargetText(known, *target);
  } else {
    texts.target = "Following " + TargetText(known, *target) +
                   (has_transceiver ? "" : " (no transceiver control is connected)");
  }
  return texts;
}

std::string SilenceText(UtcTime now, const KnownBeacons& known, const Selection& selection) {
  if (!known.Schedule()) return "there is no schedule";
  switch (selection.by) {
    case Selection::By::kBand:
      return "nobody transmits in this slot";
    case Selection::By::kCall:
      break;
    case Selection::By::kOctant:
      if (LatLonModule::IsUndefined(known.Inputs().receiver)) {
        return "your station's location is missing";
      }
      return "no beacon to the " +
             std::string(kOctantNames.at(static_cast<std::size_t>(selection.octant))) +
             " transmits in this slot";
  }
  const auto next = known.Schedule()->NextOf(selection.call, now);
  if (!next) return selection.call + " is not in the schedule";
  return selection.call + " is next on " + NumberText(known.Frequencies()[next->frequency]) +
         " kHz in " + DurationText(next->begin - now);
}

}  // namespace skyhop
