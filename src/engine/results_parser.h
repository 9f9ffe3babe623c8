#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/results_table.h"

namespace skyhop::IONCAPModule {

/// Reads the LUF/MUF table (METHOD 26) from a results file's text into rows 1 to 7 and the axis
/// bounds of `table`.
///
/// The n-th line under the header is hour n, whatever it calls itself. `has_luf` says whether the
/// lines carry the LUF column; row 7 is -1 otherwise. A LUF printed negative is stored as its
/// absolute value, and its hour as one that does not reach the required reliability. Hour 0 is a
/// copy of hour 24.
///
/// Throws Error 62 (header or lines missing), 13 (a field that is no number) or 6 (one beyond
/// single precision), naming `file_name`, line and columns. Rows read up to there keep their new
/// values.
void ParseLufMufResults(std::string_view text, const std::string& file_name, bool has_luf,
                        ResultsTable& table);

/// What a METHOD 30 file turned out to hold.
struct Method30Outcome {
  bool header_found = false;
  /// The last hour that was read, 0 for none.
  int last_hour = 0;
  /// How many of the hours 1 to 24 have come with the lines of all four quantities.
  int complete_hours = 0;
  /// Number of lines in the file.
  std::size_t lines = 0;
  /// What could not be read, with hour, band and place, in the order of the file.
  std::vector<std::string> faults;
};

/// Reads SNR, reliability, mode and signal power by band (METHOD 20 or 30), and the MUF and FOT
/// into rows 6 and 3. What the file does not hold is empty afterwards, so that nothing of an
/// earlier prediction stays behind.
///
/// A field that cannot be read costs that field, which is not known then, and is told in the
/// result; so does an hour, which costs its block. Lines that an hour lacks are told, too, and so
/// is one that comes twice: that one and what follows it, up to the next hour, is of an hour that
/// the file does not tell, and is left out. A "-", as engines print it in columns that they do not
/// use, is no value and no fault. A missing header is told with `table` unchanged. Throws nothing.
Method30Outcome ParseMethod30Results(std::string_view text, const std::string& file_name,
                                     ResultsTable& table);

/// A station as a heading shows it: "40.50 N", "74.25 W".
struct HeadingPosition {
  std::string latitude;
  std::string longitude;
};

/// What the heading of a results file says about the engine and the run; empty where it is silent.
/// Numbers are kept as printed.
struct ResultsHeading {
  std::string engine;   ///< "VOACAP", "SKYHOP ESTIMATE ENGINE"
  std::string version;  ///< "16.1207W"
  std::string month;    ///< "Nov"
  std::string year;     ///< "2026"
  std::string sunspot_number;
  std::string power;  ///< kW
  std::optional<HeadingPosition> transmitter = {};
  std::optional<HeadingPosition> receiver = {};
  bool long_path = false;                ///< marked as such
  std::string kilometers = {};           ///< the length of the path
  std::string takeoff = {};              ///< minimum angle, degrees
  std::string noise = {};                ///< at 3 MHz, dBW
  std::string reliability = {};          ///< required, percent
  std::string snr = {};                  ///< required, dB
  std::string transmitter_antenna = {};  ///< file
  std::string receiver_antenna = {};     ///< file
};

[[nodiscard]] ResultsHeading ReadHeading(std::string_view text);

/// Whether results that name this engine are the built-in estimate's.
[[nodiscard]] bool NamesEstimate(std::string_view engine);

}  // namespace skyhop::IONCAPModule
