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
  /// Results files are some 3 to 45 kB; anything beyond this is something else.
  static constexpr std::size_t kLargestFile = std::size_t{16} << 20U;

  Results(ResultsTable& table, UserMessages& messages, Diagnostics& diagnostics)
      : table_(&table), messages_(&messages), diagnostics_(&diagnostics) {}

  /// `listener` is called whenever the table was filled, with the engine that tells how.
  void SetTableListener(std::function<void(EngineChoice)> listener) {
    on_table_ = std::move(listener);
  }

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
