#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "beacon/separated_values.h"
#include "geo/lat_lon.h"

namespace skyhop::BeaconModule {

/// A beacon as "BeaconLocation.txt" describes it. The texts are as the file has them.
struct Beacon {
  std::string call;  ///< in capitals
  std::string prefix;
  std::string latitude;
  std::string longitude;
  std::string place;
  std::string country;
  std::string continent;  ///< two capitals
  std::string cq_zone;
  std::string itu_zone;
  std::string time_zone;  ///< hours that its standard time is ahead of UTC: "-5", "5.5"
  bool on_air = true;

  Position position;
  /// The value of `time_zone`; nothing if the file does not contain it.
  std::optional<std::chrono::minutes> utc_offset;
};

struct BeaconLocations {
  std::vector<Beacon> beacons;  ///< in the order of the file, no call twice
  std::vector<FileProblem> problems;

  /// The beacon with that call, in any case; null when there is none.
  [[nodiscard]] const Beacon* Find(std::string_view call) const;
};

/// Reads the content of a location file: SplitRecords with the eleven fields call, prefix,
/// latitude, longitude, place, country, continent, CQ zone, ITU zone, time zone, and "yes" or "no"
/// for on the air.
///
/// Skips a line without a valid call, latitude or longitude, and a line with the call of an earlier
/// one. Reads another invalid field as empty, "on the air" as yes. Each of these adds a problem
/// with the place of the field.
[[nodiscard]] BeaconLocations ReadBeaconLocations(std::string_view content,
                                                  const std::string& file);

/// True for letters, digits and "/", with at least one letter and one digit, 3 to 12 in all.
[[nodiscard]] bool IsCall(std::string_view text);

}  // namespace skyhop::BeaconModule
