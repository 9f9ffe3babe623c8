#include "beacon/beacon_location.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <unordered_set>

#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::BeaconModule {
namespace {

constexpr std::array<const char*, 11> kFieldNames = {
    "the call",      "the prefix",  "the latitude", "the longitude", "the place",     "the country",
    "the continent", "the CQ zone", "the ITU zone", "the time zone", "\"on the air\""};

constexpr std::array<std::string_view, 7> kContinents = {"AF", "AN", "AS", "EU", "NA", "OC", "SA"};

constexpr double kHighestCqZone = 40;
constexpr double kHighestItuZone = 90;
constexpr double kWestmostZone = -12;
constexpr double kEastmostZone = 14;

/// Whether a text is degrees, with or without minutes and seconds, and one of these letters.
bool IsPlainAngle(std::string_view text, std::string_view letters) {
  const auto number = [&text](std::size_t most) {
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    text.remove_prefix(digits);
    return digits >= 1 && digits <= most;
  };
  // Blanks may precede the mark.
  const auto mark = [&text](std::string_view marks) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    if (text.empty() || marks.find(text.front()) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
  };
  if (!number(3)) return false;
  if (mark(letters)) return text.empty();
  if (!number(2) || !mark("'")) return false;
  if (mark(letters)) return text.empty();
  return number(2) && mark("\"") && mark(letters) && text.empty();
}

/// A window shows the user how it reads a coordinate, so it accepts many forms. A file shows
/// nothing, so only the one form that cannot be misread is accepted.
std::optional<Angle> ReadAngle(const std::string& text, std::string_view letters) {
  const std::string capitals = UpperCase(text);
  if (!IsPlainAngle(capitals, letters)) return std::nullopt;
  return letters == "NS" ? LatLonModule::LatitudeIn(capitals) : LatLonModule::LongitudeIn(capitals);
}

/// Reads the records of one file.
class LocationReader {
 public:
  LocationReader(const std::string& file, BeaconLocations& into) : file_(&file), into_(&into) {}

  void Read(const Record& record) {
    record_ = &record;
    Beacon beacon;
    if (!ReadStation(beacon)) return;
    TellCount();
    beacon.prefix = Text(1);
    beacon.place = Text(4);
    beacon.country = Text(5);
    ReadContinent(beacon);
    beacon.cq_zone = Zone(7, kHighestCqZone);
    beacon.itu_zone = Zone(8, kHighestItuZone);
    ReadTimeZone(beacon);
    ReadOnAir(beacon);
    calls_.insert(beacon.call);
    into_->beacons.push_back(std::move(beacon));
  }

 private:
  [[nodiscard]] std::string Text(std::size_t field) const { return record_->Text(field); }

  void Tell(std::size_t field, const std::string& text) {
    into_->problems.push_back({*file_, record_->line, record_->ColumnOf(field), text});
  }

  void Refuse(std::size_t field, const std::string& expected) {
    Tell(field, std::string(kFieldNames.at(field)) + " \"" + Text(field) + "\" is not " + expected);
  }

  /// Reads the mandatory fields. Returns whether all of them are valid.
  bool ReadStation(Beacon& beacon) {
    beacon.call = UpperCase(Text(0));
    if (!IsCall(beacon.call)) {
      Refuse(0, "a callsign");
      return false;
    }
    if (calls_.contains(beacon.call)) {
      Tell(0, beacon.call + " has been described before");
      return false;
    }
    beacon.latitude = Text(2);
    beacon.longitude = Text(3);
    const auto latitude = ReadAngle(beacon.latitude, "NS");
    const auto longitude = ReadAngle(beacon.longitude, "EW");
    if (!latitude) Refuse(2, "a latitude such as 40 45' N");
    if (!longitude) Refuse(3, "a longitude such as 73 58' W");
    if (!latitude || !longitude) return false;
    beacon.position = {*latitude, *longitude};
    return true;
  }

  void TellCount() {
    const std::size_t count = record_->fields.size();
    if (count == kFieldNames.size()) return;
    const std::string counts =
        std::to_string(count) + " fields instead of " + std::to_string(kFieldNames.size());
    Tell(std::min(count, kFieldNames.size()), counts);
  }

  void ReadContinent(Beacon& beacon) {
    const std::string text = UpperCase(Text(6));
    if (text.empty()) return;
    if (std::find(kContinents.begin(), kContinents.end(), text) == kContinents.end()) {
      return Refuse(6, "AF, AN, AS, EU, NA, OC or SA");
    }
    beacon.continent = text;
  }

  std::string Zone(std::size_t field, double highest) {
    const std::string text = Text(field);
    if (text.empty()) return {};
    const std::optional<double> zone = WholeNumberText(text);
    if (zone && *zone >= 1 && *zone <= highest && std::floor(*zone) == *zone) {
      return NumberText(*zone);
    }
    Refuse(field, "a whole number from 1 to " + NumberText(highest));
    return {};
  }

  void ReadTimeZone(Beacon& beacon) {
    const std::string text = Text(9);
    if (text.empty()) return;
    const std::optional<double> hours = WholeNumberText(text);
    if (!hours || *hours < kWestmostZone || *hours > kEastmostZone) {
      return Refuse(9, "a number of hours from -12 to 14");
    }
    beacon.time_zone = text;
    beacon.utc_offset = std::chrono::minutes(std::lround(*hours * 60));
  }

  void ReadOnAir(Beacon& beacon) {
    const std::string text = Text(10);
    if (text.empty() || EqualsIgnoringCase(text, "yes")) return;
    beacon.on_air = !EqualsIgnoringCase(text, "no");
    if (beacon.on_air) Refuse(10, "yes or no");
  }

  const std::string* file_;
  BeaconLocations* into_;
  std::unordered_set<std::string> calls_;  ///< of the beacons so far
  const Record* record_ = nullptr;
};

}  // namespace

const Beacon* BeaconLocations::Find(std::string_view call) const {
  const auto found = std::find_if(beacons.begin(), beacons.end(), [&](const Beacon& beacon) {
    return EqualsIgnoringCase(beacon.call, call);
  });
  return found == beacons.end() ? nullptr : &*found;
}

BeaconLocations ReadBeaconLocations(std::string_view content, const std::string& file) {
  BeaconLocations locations;
  LocationReader reader(file, locations);
  const std::vector<Record> records = SplitRecords(content, file, locations.problems);
  locations.beacons.reserve(records.size());
  for (const Record& record : records) {
    if (!record.broken) reader.Read(record);
  }
  return locations;
}

bool IsCall(std::string_view text) {
  return text.size() >= 3 && text.size() <= 12 &&
         std::all_of(text.begin(), text.end(),
                     [](char c) { return IsLetter(c) || IsDigit(c) || c == '/'; }) &&
         std::any_of(text.begin(), text.end(), IsLetter) &&
         std::any_of(text.begin(), text.end(), IsDigit);
}

}  // namespace skyhop::BeaconModule
