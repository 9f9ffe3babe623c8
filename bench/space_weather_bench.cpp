// Reads downloaded files.

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>

#include "spaceweather/forecast_parser.h"
#include "spaceweather/sunspot_number.h"
#include "support/temporary_folder.h"

namespace skyhop {
namespace {

void ForecastRead(benchmark::State& state) {
  const std::string text = testing::TestData("spaceweather/forecast.txt");
  for ([[maybe_unused]] auto _ : state) {
    SolarForecastModule::ForecastTable table;
    benchmark::DoNotOptimize(SolarForecastModule::ParseForecast(text, 21, table));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(ForecastRead)->Unit(benchmark::kMicrosecond);

/// A file of many years. The searched month is its last one.
void SunspotNumberFound(benchmark::State& state) {
  using std::chrono::months;
  using std::chrono::year;
  using std::chrono::year_month;
  constexpr year_month first{year{2019}, std::chrono::December};
  constexpr int count = 12 * 21;
  std::string text = "[";
  for (int i = 0; i < count; ++i) {
    const year_month month = first + months(i);
    const unsigned number = static_cast<unsigned>(month.month());
    text += "\n{\"time-tag\": \"" + std::to_string(static_cast<int>(month.year())) +
            (number < 10 ? "-0" : "-") + std::to_string(number) +
            "\", \"predicted_ssn\": 115.1, \"high25_ssn\": 120.3, \"predicted_f10.7\": 150.2},";
  }
  text.back() = ']';
  const year_month last = first + months(count - 1);
  if (!SolarForecastModule::FindSunspotNumber(text, last).value) {
    state.SkipWithError("the month was not found");
  }
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(SolarForecastModule::FindSunspotNumber(text, last));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(SunspotNumberFound)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace skyhop
