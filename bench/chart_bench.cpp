// Paints the chart on a recording surface and writes the picture.

#include <benchmark/benchmark.h>

#include "engine/results_parser.h"
#include "support/diagnostics_fixture.h"
#include "support/recording_surface.h"
#include "ui/prediction/chart/chart_picture.h"
#include "ui/prediction/chart/paint_chart.h"

namespace skyhop {
namespace {

/// A chart of a real day's results whose debug log is off.
struct Day {
  Day() {
    log.diagnostics.SetDebugListener({});
    ResultsTable table;
    IONCAPModule::ParseLufMufResults(
        testing::TestData("results/newyork-london-method26.results.txt"), "", true, table);
    model.DisplayResult(table, EngineChoice::kIonCap);
    model.title = "title";
  }
  testing::LoggedDiagnostics log;
  ChartModel model{log.diagnostics};
};

void ChartPainted(benchmark::State& state) {
  Day day;
  const ChartLayout layout = ArrangeChart(day.model, 1040, 600, 12);
  testing::RecordingSurface surface;
  for ([[maybe_unused]] auto _ : state) {
    surface.calls.clear();
    PaintChart(day.model, layout, surface);
    benchmark::DoNotOptimize(surface);
  }
}
BENCHMARK(ChartPainted)->Unit(benchmark::kMicrosecond);

void PictureWritten(benchmark::State& state) {
  Day day;
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(PictureAsSvg(day.model, {}));
}
BENCHMARK(PictureWritten)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace skyhop
