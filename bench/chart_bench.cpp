// Paints the chart on a recording surface and writes the picture.

#include <benchmark/benchmark.h>

#include "engine/results_parser.h"
#include "support/diagnostics_fixture.h"
#include "support/recording_surface.h"
#include "ui/prediction/chart/chart_picture.h"
#include "ui/prediction/chart/prediction_chart.h"

namespace skyhop {
namespace {

/// A real day's results, and a log without a listener.
struct Day {
  Day() {
    log.diagnostics.SetDebugListener({});
    IONCAPModule::ParseLufMufResults(
        testing::TestData("results/newyork-london-method26.results.txt"), "", true, table);
  }
  testing::LoggedDiagnostics log;
  ResultsTable table;
};

void ChartPainted(benchmark::State& state) {
  Day day;
  IONCAPModule::PredictionChart chart(day.table, EvenLayout({80, 40, 960, 500}, 14),
                                      day.log.diagnostics, day.log.clock);
  testing::RecordingSurface surface;
  chart.DisplayResult(EngineChoice::kIonCap, {true, true}, surface);
  for ([[maybe_unused]] auto _ : state) {
    surface.calls.clear();
    chart.Repaint({true, true}, surface);
    benchmark::DoNotOptimize(surface);
  }
}
BENCHMARK(ChartPainted)->Unit(benchmark::kMicrosecond);

void PictureWritten(benchmark::State& state) {
  Day day;
  ChartPane pane(day.table, day.log.diagnostics, day.log.clock);
  pane.DisplayTable(EngineChoice::kIonCap);
  pane.SetTitle("title");
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(PictureAsSvg(pane, {}));
}
BENCHMARK(PictureWritten)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace skyhop
