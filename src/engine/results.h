#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "common/diagnostics.h"
#include "common/user_messages.h"
#include "engine/parameters.h"
#include "engine/prediction_panel.h"
#include "engine/results_parser.h"
#include "engine/results_table.h"

namespace skyhop::IONCAPModule {

/// Draws the results table after it was filled.
class ResultsChart {
 public:
  virtual ~ResultsChart() = default;

  /// Computes the axis anew and paints the whole chart. `engine` tells how the table was filled.
  virtual void DisplayTable(EngineChoice engine) = 0;
};

/// Takes the results files of the engines: fills the table, writes the summary line into the
/// window and has the chart painted.
class Results {
 public:
  /// Results files are some 3 to 45 kB; anything beyond this is something else.
  static constexpr std::size_t kLargestFile = std::size_t{16} << 20U;

  /// All must outlive this object.
  Results(ResultsTable& table, PredictionPanel& panel, const Parameters& parameters,
          ResultsChart& chart, UserMessages& messages, Diagnostics& diagnostics)
      : table_(&table),
        panel_(&panel),
        parameters_(&parameters),
        chart_(&chart),
        messages_(&messages),
        diagnostics_(&diagnostics) {}

  /// Deletes a results file before an engine is started, so that polling cannot see a stale one.
  /// Returns whether there is none now.
  [[nodiscard]] bool InitializeResults(const std::filesystem::path& file);

  /// Displays a LUF/MUF table. `has_luf` says whether it carries the LUF column. On a failure,
  /// which is logged, the chart is left as it was. Returns whether the chart shows the file.
  bool DisplayResults(bool has_luf, const std::filesystem::path& file, EngineChoice engine);

  /// Displays SNR, reliability, mode and signal power by band. Returns whether the chart shows all
  /// 24 hours of the file. A file that ends early is displayed as far as it goes, and the error log
  /// tells which hours are missing, as it does of fields that could not be read.
  bool DisplayMethod2030Results(const std::filesystem::path& file);

  /// What the heading of the file displayed last says.
  [[nodiscard]] const ResultsHeading& Heading() const { return heading_; }

  /// How many tables have been put on the chart, incomplete ones included.
  [[nodiscard]] int TablesShown() const { return tables_shown_; }

  /// The prediction in one line: path, SNR, distance, direction, place, date.
  [[nodiscard]] std::string SummaryLine() const;

 private:
  void LogFaults(const std::vector<std::string>& faults);
  void ShowTable(EngineChoice engine, const std::string& text);

  ResultsTable* table_;
  PredictionPanel* panel_;
  const Parameters* parameters_;
  ResultsChart* chart_;
  UserMessages* messages_;
  Diagnostics* diagnostics_;
  ResultsHeading heading_;
  int tables_shown_ = 0;
};

}  // namespace skyhop::IONCAPModule
