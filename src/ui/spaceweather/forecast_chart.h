#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "spaceweather/forecast_table.h"
#include "ui/drawing/chart_palette.h"
#include "ui/drawing/surface.h"

namespace skyhop {

struct ForecastChartOptions {
  // The size of the canvas and of its font, in pixels.
  double width = 0;
  double height = 0;
  double text_size = 12;
  ChartPalette palette = kLightPalette;
  // Which graphs are shown, from top to bottom.
  bool flux = true;
  bool a_index = true;
  bool k_index = true;
  std::chrono::year_month_day today{};  ///< UTC; marked if the forecast has it
  std::size_t pointed_slot = 0;         ///< the day under the pointer, 0 for none
  std::string empty_text;               ///< shown while there is no forecast
};

/// The calendar day of a slot; nothing if its date is invalid.
[[nodiscard]] std::optional<std::chrono::year_month_day> DateOf(
    const SolarForecastModule::ForecastSlot& slot);

/// A day of the forecast as text: "21 Nov 2026: solar flux 118, A index 12, estimated K index 2".
/// Empty for a slot that is not valid.
[[nodiscard]] std::string DayText(const SolarForecastModule::ForecastSlot& slot);

/// The graphs of the forecast, one below the other over the same days. Each slot has a fixed place,
/// the first day at the left. An invalid slot or a missing value leaves a gap.
class ForecastChart {
 public:
  ForecastChart(const SolarForecastModule::ForecastTable& table, ForecastChartOptions options);

  void Paint(Surface& surface) const;

  /// The valid slot of the day at a place in a graph or at the dates below the graphs, 0 for none.
  [[nodiscard]] std::size_t SlotAt(Point at) const;

  /// The areas of the graphs, from top to bottom.
  [[nodiscard]] std::vector<Rectangle> Plots() const;

 private:
  struct Graph;

  void AddGraph(bool shown, const char* title, std::size_t column, double least_high);
  void Arrange();
  [[nodiscard]] bool HasForecast() const;
  [[nodiscard]] Rectangle Column(const Rectangle& plot, std::size_t slot) const;
  [[nodiscard]] double Text() const { return options_.text_size; }

  void PaintMarks(Surface& surface, const Graph& graph) const;
  void PaintGrid(Surface& surface, const Graph& graph) const;
  void PaintCurve(Surface& surface, const Graph& graph) const;
  void PaintBars(Surface& surface, const Graph& graph) const;
  void PaintTodayKey(Surface& surface) const;
  void PaintDates(Surface& surface) const;
  void PaintMonth(Surface& surface, std::size_t slot, double y, double room) const;
  void PaintEmpty(Surface& surface) const;

  /// A graph with the scale of its axis.
  struct Graph {
    const char* title = "";
    std::size_t column = 0;
    double low = 0;
    double high = 1;
    double step = 1;
    Rectangle plot{};

    [[nodiscard]] double Y(double value) const {
      return plot.Bottom() - plot.height * (value - low) / (high - low);
    }
  };

  const SolarForecastModule::ForecastTable* table_;
  ForecastChartOptions options_;
  std::vector<Graph> graphs_;
};

}  // namespace skyhop
