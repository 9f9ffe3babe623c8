// Writes decks and parses results.

#include <benchmark/benchmark.h>

#include "engine/results_parser.h"
#include "support/prediction_fixture.h"

namespace skyhop::IONCAPModule {
namespace {

using skyhop::testing::TestData;

void DeckWritten(benchmark::State& state) {
  skyhop::testing::PredictionFixture with;
  // Debug lines would be kept in memory here; a user's program makes none either.
  with.log.diagnostics.SetDebugListener({});
  const std::filesystem::path file = with.log.folder / "script.txt";
  for ([[maybe_unused]] auto _ : state) {
    if (!with.engine.decks.Write(with.Inputs(), file))
      state.SkipWithError("the deck was not written");
  }
}
BENCHMARK(DeckWritten)->Unit(benchmark::kMicrosecond);

void Method26Parsed(benchmark::State& state) {
  const std::string text = TestData("results/newyork-london-method26.results.txt");
  ResultsTable table;
  for ([[maybe_unused]] auto _ : state) {
    ParseLufMufResults(text, "results.txt", true, table);
    benchmark::DoNotOptimize(table);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(Method26Parsed)->Unit(benchmark::kMicrosecond);

void Method30Parsed(benchmark::State& state) {
  const std::string text = TestData("results/newyork-london-method30.results.txt");
  ResultsTable table;
  for ([[maybe_unused]] auto _ : state) {
    const Method30Outcome outcome = ParseMethod30Results(text, "results.txt", table);
    benchmark::DoNotOptimize(outcome);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(Method30Parsed)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace skyhop::IONCAPModule
