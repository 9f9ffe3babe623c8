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
/// The n-th line under the header is hour n, regardless of the hour that it contains. `has_luf` is
/// whether the lines have the LUF column; otherwise row 7 is -1. A negative LUF is stored as its
/// absolute value, and its hour does not reach the required reliability. Hour 0 is a copy of hour
/// 24.
///
/// Throws Error 62 (header or lines missing), 13 (a field is not a number) or 6 (a number beyond
/// single precision), with `file_name`, line and columns. Rows before the error keep their new
/// values.
void ParseLufMufResults(std::string_view text, const std::string& file_name, bool has_luf,
                        ResultsTable& table);

/// The content of a METHOD 30 file.
struct Method30Outcome {
  bool header_found = false;
  /// The last hour in the file, 0 for none.
  int last_hour = 0;
  /// Number of the hours 1 to 24 that have the lines of all four quantities.
  int complete_hours = 0;
  /// Number of lines in the file.
  std::size_t lines = 0;
  /// The unreadable parts, with hour, band and place, in the order of the file.
  std::vector<std::string> faults;
};

/// Reads SNR, reliability, mode and signal power by band (METHOD 20 or 30), and the MUF and FOT
/// into rows 6 and 3. Clears values that the file lacks, so that no value of an earlier prediction
/// remains.
///
/// An unreadable field becomes unknown and is a fault; an unreadable hour makes its whole block
/// unknown. Missing lines of an hour are faults too. A second line of the same kind belongs to an
/// hour whose own start line is missing: it is a fault, and lines from there up to the next hour
/// are ignored. A "-", which engines print in columns that they do not use, is neither a value nor
/// a fault. A missing header is reported and leaves `table` unchanged. Throws nothing.
Method30Outcome ParseMethod30Results(std::string_view text, const std::string& file_name,
                                     ResultsTable& table);

/// A station as a heading shows it: "40.50 N", "74.25 W".
struct HeadingPosition {
  std::string latitude;
  std::string longitude;
};

/// The contents of a results file's heading about the engine and the run; empty if the heading
/// lacks them. Numbers are kept as printed.
struct ResultsHeading {
  std::string engine;   ///< "VOACAP", "SKYHOP ESTIMATE ENGINE"
  std::string version;  ///< "16.1207W"
  std::string month;    ///< "Nov"
  std::string year;     ///< "2026"
  std::string sunspot_number;
  std::string power;  ///< kW
  std::optional<HeadingPosition> transmitter = {};
  std::optional<HeadingPosition> receiver = {};
  bool long_path = false;                ///< the heading marks the path as long
  std::string kilometers = {};           ///< the length of the path
  std::string takeoff = {};              ///< minimum angle, degrees
  std::string noise = {};                ///< at 3 MHz, dBW
  std::string reliability = {};          ///< required, percent
  std::string snr = {};                  ///< required, dB
  std::string transmitter_antenna = {};  ///< file
  std::string receiver_antenna = {};     ///< file
};

[[nodiscard]] ResultsHeading ReadHeading(std::string_view text);

/// Whether `engine`, the name in a heading, is that of the built-in estimate.
[[nodiscard]] bool NamesEstimate(std::string_view engine);

}  // namespace skyhop::IONCAPModule
