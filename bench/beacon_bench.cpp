// Loads the log of heard beacons.

#include <benchmark/benchmark.h>

#include "beacon/heard_log.h"
#include "common/dates.h"
#include "common/files.h"
#include "support/diagnostics_fixture.h"

namespace skyhop::BeaconModule {
namespace {

/// A log of years, in the order of time or, as after many corrections of the clock, against it.
void HeardLogLoaded(benchmark::State& state) {
  constexpr int count = 100'000;
  const bool ordered = state.range(0) != 0;
  const UtcTime midnight = std::chrono::sys_days(std::chrono::year(2026) / 11 / 16);
  testing::LoggedDiagnostics log;
  std::string content;
  for (int i = 0; i < count; ++i) {
    const std::chrono::seconds at(ordered ? i : count - i);
    content += TimeStamp(midnight + at) + ",4U1UN,14100,yes,\n";
  }
  WriteFile(log.folder / HeardLog::kFileName, content);
  for ([[maybe_unused]] auto _ : state) {
    HeardLog heard(log.folder.Path(), log.diagnostics);
    heard.Load();
    if (heard.Marks().size() != count) state.SkipWithError("marks are missing");
  }
}
BENCHMARK(HeardLogLoaded)->ArgName("ordered")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace skyhop::BeaconModule
