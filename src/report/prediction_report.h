#pragma once

#include <string>

#include "engine/results_parser.h"
#include "report/csv_report.h"

namespace skyhop {

/// The contents of a report on a prediction.
struct PredictionReport {
  PredictedDay day;
  IONCAPModule::ResultsHeading heading;
  std::string summary;
  std::string date;
  std::string solar_flux;      ///< as given, may be empty
  std::string sunspot_number;  ///< as used
  bool sunspot_number_derived = false;
  bool fallback = false;        ///< the estimate engine replaced the chosen engine
  std::string fallback_reason;  ///< sentences
};

/// The engine's name for the option `--engine`; empty for none.
[[nodiscard]] const char* EngineWord(EngineChoice engine);

/// A table for people: hour, FOT, MUF, HPF, LUF and how open each band is.
[[nodiscard]] std::string TableReport(const PredictionReport& report);

/// The same as JSON, with SNR, reliability, mode and signal power by band where predicted.
[[nodiscard]] std::string JsonReport(const PredictionReport& report);

}  // namespace skyhop
