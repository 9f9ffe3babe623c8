// Paints the chart as the window does: whole, and the strip under a moved time index.

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/init.h>

#include <algorithm>
#include <cstdio>

#include "engine/results_parser.h"
#include "support/diagnostics_fixture.h"
#include "ui/prediction/chart/chart_pane.h"
#include "ui/wx/wx_surface.h"

namespace skyhop {
namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 900;

/// Records the areas that the pane asks to paint.
class AreaHost : public ChartHost {
 public:
  void ChartChanged() override { whole = true; }
  void OverlayChanged(const Rectangle& area) override {
    changed = std::max(changed, area.width * area.height);
    last = area;
  }
  void ShowReadout(const std::string&) override {}

  bool whole = false;
  double changed = 0;
  Rectangle last;
};

/// A real day's results on a pane, and a bitmap in place of the screen.
struct Screen {
  Screen() {
    log.diagnostics.SetDebugListener({});
    IONCAPModule::ParseLufMufResults(
        testing::TestData("results/newyork-london-method26.results.txt"), "", true, table);
    pane.SetHost(&host);
    pane.Resize(kWidth, kHeight, 13);
    pane.DisplayTable(EngineChoice::kIonCap);
    bitmap.Create(kWidth, kHeight, wxBITMAP_SCREEN_DEPTH);
  }

  testing::LoggedDiagnostics log;
  ResultsTable table;
  AreaHost host;
  ChartPane pane{table, log.diagnostics, log.clock};
  wxBitmap bitmap;
};

std::unique_ptr<wxGraphicsContext> ContextOn(wxMemoryDC& dc) {
  return std::unique_ptr<wxGraphicsContext>(wxGraphicsContext::Create(dc));
}

void PaintChart(Screen& screen, wxBitmap& bitmap) {
  wxMemoryDC dc(bitmap);
  WxSurface surface(ContextOn(dc), kWidth, kHeight, 1, *wxNORMAL_FONT);
  screen.pane.Paint(surface);
}

void ChartRepainted(benchmark::State& state) {
  Screen screen;
  for ([[maybe_unused]] auto _ : state) {
    PaintChart(screen, screen.bitmap);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(ChartRepainted)->Unit(benchmark::kMillisecond);

/// One step of a drag: copies the chart's bitmap under the strip and draws the time index over it.
void TimeIndexDragged(benchmark::State& state) {
  Screen screen;
  wxBitmap chart(kWidth, kHeight, wxBITMAP_SCREEN_DEPTH);
  PaintChart(screen, chart);
  screen.host.whole = false;
  screen.host.changed = 0;
  int hours = 1;
  for ([[maybe_unused]] auto _ : state) {
    if (screen.pane.TimeIndex() > 23) hours = -1;
    if (screen.pane.TimeIndex() < 1) hours = 1;
    screen.pane.StepTimeIndex(hours);
    const Rectangle& area = screen.host.last;
    wxMemoryDC dc(screen.bitmap);
    dc.SetClippingRegion(static_cast<int>(area.left), static_cast<int>(area.top),
                         static_cast<int>(area.width) + 1, static_cast<int>(area.height) + 1);
    dc.DrawBitmap(chart, 0, 0);
    WxSurface surface(ContextOn(dc), kWidth, kHeight, 1, *wxNORMAL_FONT);
    screen.pane.PaintOverlay(surface);
  }
  if (screen.host.whole) state.SkipWithError("the whole chart was painted anew");
  state.counters["repainted_percent"] = 100 * screen.host.changed / (kWidth * kHeight);
}
BENCHMARK(TimeIndexDragged)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace skyhop

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  wxApp::SetInstance(new wxApp);
  const wxInitializer toolkit;
  if (!toolkit.IsOk()) {
    std::fputs("bench_window: there is no display\n", stderr);
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
