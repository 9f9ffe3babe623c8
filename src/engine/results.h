#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "common/diagnostics.h"
#include "common/user_messages.h"
#include "engine/results_parser.h"
#include "engine/results_table.h"

namespace skyhop::IONCAPModule {

/// Takes the results files of the engines: fills the table and announces it.
class Results {
 public:
  /// The most bytes of a file that are read. Results files have 3 to 45 kB.
  static constexpr std::size_t kLargestFile = std::size_t{16} << 20U;

  Results(ResultsTable& table, UserMessages& messages, Diagnostics& diagnostics)
      : table_(&table), messages_(&messages), diagnostics_(&diagnostics) {}

  /// `listener` is called whenever results have filled the table, with their engine.
  void SetTableListener(std::function<void(EngineChoice)> listener) {
    on_table_ = std::move(listener);
  }

  /// Deletes a results file before an engine starts, so that no poll sees old results. Returns
  /// whether the file is gone.
  [[nodiscard]] bool InitializeResults(const std::filesystem::path& file);

  /// Displays a LUF/MUF table, with a LUF column if `has_luf`. Logs a failure, which leaves the
  /// chart as it is. Returns whether the chart shows the file.
  bool DisplayResults(bool has_luf, const std::filesystem::path& file, EngineChoice engine);

  /// Displays SNR, reliability, mode and signal power by band. Returns whether the chart shows all
  /// 24 hours of the file. Displays a file that ends early as far as it goes. The error log lists
  /// the missing hours and the fields that cannot be read.
  bool DisplayMethod2030Results(const std::filesystem::path& file);

  /// The heading of the file that was displayed last.
  [[nodiscard]] const ResultsHeading& Heading() const { return heading_; }

  /// The number of tables that were displayed, including incomplete ones.
  [[nodiscard]] int TablesShown() const { return tables_shown_; }

 private:
  void LogFaults(const std::vector<std::string>& faults);
  void ShowTable(EngineChoice engine, const std::string& text);

  ResultsTable* table_;
  UserMessages* messages_;
  Diagnostics* diagnostics_;
  std::function<void(EngineChoice)> on_table_;
  ResultsHeading heading_;
  int tables_shown_ = 0;
};

}  // namespace skyhop::IONCAPModule
