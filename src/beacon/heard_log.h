#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "beacon/beacon_location.h"
#include "common/clock.h"
#include "common/diagnostics.h"

namespace skyhop::BeaconModule {

/// One transmission that the user has listened for.
struct HeardMark {
  UtcTime begin;  ///< of the transmission
  std::string call;
  double frequency = 0;  ///< kHz
  bool heard = true;     ///< else listened for in vain
  std::string note;      ///< the S-meter, or whatever the user wrote

  friend bool operator==(const HeardMark&, const HeardMark&) = default;
};

/// The user's log of beacons heard and not heard, a file of comma-separated values with a header.
/// It only appends marks, so the file loses nothing. The last of several marks of one transmission
/// is valid.
class HeardLog {
 public:
  static constexpr const char* kFileName = "BeaconHeard.csv";

  /// `diagnostics` must outlive this object.
  HeardLog(const std::filesystem::path& program_folder, Diagnostics& diagnostics)
      : path_(program_folder / kFileName), diagnostics_(&diagnostics) {}

  /// Reads the file again. Writes unreadable lines to the error log, see LogProblems.
  void Load();

  /// Adds a mark and saves it. Ignores a mark that equals the present one, also if its note is
  /// empty. Throws the Errors of FileError if it cannot be saved; the mark is then valid in this
  /// run and is saved with the next one.
  void Mark(const HeardMark& mark);

  /// All valid marks, by time.
  [[nodiscard]] const std::vector<HeardMark>& Marks() const { return marks_; }
  /// Those of transmissions that began on a UTC day.
  [[nodiscard]] std::vector<HeardMark> On(std::chrono::year_month_day day) const;

 private:
  void Put(const HeardMark& mark);
  [[nodiscard]] bool Has(const HeardMark& mark) const;
  void Save();

  std::filesystem::path path_;
  Diagnostics* diagnostics_;
  std::vector<HeardMark> marks_;
  std::vector<HeardMark> unsaved_;
};

/// Marks for other programs: the log's fields and, where the beacon is known, place, country and
/// continent.
[[nodiscard]] std::string HeardCsv(const std::vector<HeardMark>& marks,
                                   const BeaconLocations& locations);

}  // namespace skyhop::BeaconModule
