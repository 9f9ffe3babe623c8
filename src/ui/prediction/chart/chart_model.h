#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "common/diagnostics.h"
#include "engine/results_table.h"
#include "report/csv_report.h"
#include "ui/drawing/chart_palette.h"
#include "ui/prediction/chart/solar_bars.h"

namespace skyhop {

/// Number of tick marks, frequency labels and therefore divisions plus one of the frequency axis.
inline constexpr std::size_t kTickCount = 6;

/// The linear frequency axis of a result: five divisions of a whole number of MHz.
struct FrequencyAxis {
  float f_min = 0;                               ///< `FMin`, MHz
  float f_max = 0;                               ///< `FMax`, MHz
  std::array<std::string, kTickCount> y_labels;  ///< captions of `YLabel`

  [[nodiscard]] bool HasExtent() const { return f_max > f_min; }
};

/// Everything that a chart shows, as a plain value. It holds no places; see ChartLayout.
struct ChartModel {
  explicit ChartModel(Diagnostics& failures) : diagnostics(&failures) {}

  Diagnostics* diagnostics;  ///< gets the failures of scales and painting

  ResultsTable table;
  EngineChoice engine = EngineChoice::kNone;
  bool plotted = false;  ///< `Plotted`: the table holds a result
  FrequencyAxis axis;

  std::string title;       ///< the circuit, one line above the chart; empty for none
  std::string provenance;  ///< the origin of the numbers, a line under the title; empty for none,
                           ///< as in a window, which has a label of its own for it
  std::string empty_text;  ///< shown while there is no result
  SolarBars sun;
  double time_index = 0;             ///< time of `TimeLine` in hours, 0 to 24 UTC
  std::int16_t band_indicator = -1;  ///< index of the band with `BandIndicator`, -1 for none

  bool old = false;              ///< the result belongs to an earlier prediction
  bool open_band_enable = true;  ///< `OpenBandEnable`: show the open bands
  bool plot_enable = true;       ///< `PlotEnable`: show the curves
  bool color_keys = true;        ///< `ShowColorKeyCheck`: show the keys
  bool table_view = false;       ///< show results as a table of bands by hours
  ChartPalette palette = kLightPalette;

  /// Takes a copy of `result`, which a run of `made_by` has filled, and computes its axis.
  void DisplayResult(const ResultsTable& result, EngineChoice made_by);

  [[nodiscard]] PredictedDay Day() const { return {table, *diagnostics, engine}; }
  [[nodiscard]] bool TableShown() const { return table_view && plotted; }
  /// Whether some hour does not reach the required reliability.
  [[nodiscard]] bool HasUnreachedHours() const;
};

/// Whether a row of the table's frequencies holds any value.
[[nodiscard]] bool IsPredicted(const ResultsTable& table, std::size_t row);

namespace IONCAPModule {

/// Computes range and labels of the frequency axis. Results of `EngineChoice::kVoaCapSnr` carry
/// their range as bounds; in other results the function searches the values. Both ranges are
/// widened to five divisions of a whole number of MHz. The axis has no extent if the table has no
/// usable range, or after a failure, which the error log reports.
[[nodiscard]] FrequencyAxis ComputeAxis(const ResultsTable& table, EngineChoice engine,
                                        Diagnostics& diagnostics);

}  // namespace IONCAPModule
}  // namespace skyhop
