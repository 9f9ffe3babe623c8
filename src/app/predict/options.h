#pragma once

#include <optional>
#include <string>

#include "engine/results_table.h"

namespace skyhop {

enum class OutputFormat { kTable, kCsv, kJson };

/// The options of the command line. An option that was not given is empty; then the stored settings
/// or the defaults apply.
struct PredictOptions {
  std::optional<std::string> from;
  std::optional<std::string> to;
  std::optional<int> path;
  std::optional<int> direction;
  std::optional<std::string> date;
  std::optional<std::string> sfi;
  std::optional<std::string> ssn;
  std::optional<std::string> k_index;
  std::optional<std::string> power;
  std::optional<std::string> takeoff;
  std::optional<std::string> antenna;     ///< a file, or dBi
  std::optional<std::string> azimuth;     ///< degrees
  std::optional<std::string> dx_antenna;  ///< the same for the DX station
  std::optional<std::string> dx_azimuth;
  std::optional<int> noise;
  std::optional<int> dx_noise;
  std::optional<int> dx_power;
  std::optional<std::string> snr;
  std::optional<std::string> availability;
  std::optional<EngineChoice> engine;  ///< kNone for the automatic choice
  bool no_fallback = false;
  bool list_engines = false;
  bool use_settings = false;
  OutputFormat format = OutputFormat::kTable;
  std::optional<std::string> svg_file;
  bool deck_only = false;
  double timeout = 60;  ///< seconds
  bool verbose = false;
};

/// The result of reading the command line: the options, or the exit status with which to end at
/// once, for help, version or an invalid option, which are already printed.
struct ParsedCommandLine {
  PredictOptions options;
  std::optional<int> exit_status;
};

[[nodiscard]] ParsedCommandLine ParseCommandLine(int argc, const char* const* argv);

}  // namespace skyhop
