#include "estimate/report.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "engine/results_parser.h"
#include "estimate/circuit.h"
#include "estimate/deck.h"
#include "estimate/propagation_math.h"
#include "support/temporary_folder.h"

namespace skyhop::estimate {
namespace {

Deck ExampleCircuit() {
  return ReadDeck(skyhop::testing::TestData("estimate/example.deck.txt"));
}

/// The lines of hours in a report, found in the way of programs that read the engines' reports.
std::vector<std::string> HourLines(const std::string& report) {
  std::size_t at = report.find("HPF  ESMUF");
  EXPECT_NE(at, std::string::npos);
  at = report.find("\n\n", at) + 2;
  std::vector<std::string> lines;
  while (report[at + 1] != '*') {
    const std::size_t end = report.find('\n', at);
    lines.push_back(report.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

/// The seven numbers of an hour's line by their columns; fails for an incomplete number.
std::array<double, 7> Columns(const std::string& line) {
  static constexpr std::array<std::size_t, 8> kEnds = {0, 9, 15, 22, 29, 36, 43, 50};
  std::array<double, 7> numbers{};
  EXPECT_EQ(line.size(), 50U) << line;
  for (std::size_t i = 0; i < numbers.size() && line.size() == 50; ++i) {
    const auto number = WholeNumberText(line.substr(kEnds[i], kEnds[i + 1] - kEnds[i]));
    EXPECT_TRUE(number && std::isfinite(*number)) << line;
    numbers[i] = number.value_or(0);
  }
  return numbers;
}

TEST(EstimateReport, MatchesTheGoldenReport) {
  const std::string expected = ReplaceAll(skyhop::testing::TestData("estimate/example.results.txt"),
                                          "@VERSION@", VersionText());
  EXPECT_EQ(Report(ExampleCircuit()), expected);
}

TEST(EstimateReport, CoversTheHoursAskedFor) {
  Deck deck = ExampleCircuit();
  const std::vector<std::string> all = HourLines(Report(deck));
  ASSERT_EQ(all.size(), 24U);
  deck.hours = {6, 18, 5};
  EXPECT_EQ(HourLines(Report(deck)), (std::vector<std::string>{all[5], all[10], all[15]}));
}

TEST(EstimateReport, PrintsMinusTheMufWhenThereIsNoLuf) {
  Deck deck = ExampleCircuit();
  deck.circuit.required_snr = 150;
  for (const std::string& line : HourLines(Report(deck))) {
    const std::array<double, 7> numbers = Columns(line);
    EXPECT_EQ(numbers[6], -numbers[5]) << line;
  }
}

TEST(EstimateReport, PrintsLocalTimesBelow24Hours) {
  Deck deck = ExampleCircuit();
  deck.circuit.transmitter = PositionFromDegrees(40.5, -0.3);
  const std::vector<std::string> lines = HourLines(Report(deck));
  EXPECT_EQ(Columns(lines[0])[1], 1.0);
  EXPECT_EQ(Columns(lines[23])[1], 0.0);
}

TEST(EstimateReport, NamesTheLongPath) {
  Deck deck = ExampleCircuit();
  deck.circuit.long_way = true;
  const std::string report = Report(deck);
  EXPECT_NE(report.find("AZIMUTHS  <Long>"), std::string::npos);
  EXPECT_NE(report.find("231.02  108.28   18586.9  34422.9"), std::string::npos) << report;
}

TEST(EstimateReport, KeepsItsColumnsForExtremeCircuits) {
  const std::vector<std::pair<GeoPosition, GeoPosition>> ends = {
      {PositionFromDegrees(48.2, 11.6), PositionFromDegrees(48.2, 11.6)},
      {PositionFromDegrees(0, 0), PositionFromDegrees(0, 0)},
      {PositionFromDegrees(90, 0), PositionFromDegrees(-90, 0)},
      {PositionFromDegrees(90, 0), PositionFromDegrees(90, 180)},
      {PositionFromDegrees(10, 20), PositionFromDegrees(-10, -160)},
      {PositionFromDegrees(0, 180), PositionFromDegrees(0, -180)},
      {PositionFromDegrees(51.5, -0.12), PositionFromDegrees(-20, 90)},
  };
  Deck deck = ExampleCircuit();
  deck.hours = {3, 24, 7};
  for (const auto& [from, to] : ends) {
    for (const double angle : {0.0, 0.01, 20.0, 28.0, 89.0, 90.0}) {
      for (const double sunspots : {0.0, 9999.0}) {
        for (const bool long_way : {false, true}) {
          CircuitParameters& circuit = deck.circuit;
          circuit.transmitter = from;
          circuit.receiver = to;
          circuit.min_elevation = Radians(angle);
          circuit.sunspot_number = sunspots;
          circuit.long_way = long_way;
          circuit.power = sunspots == 0 ? kLeastPower : 99999;
          SCOPED_TRACE(std::to_string(Degrees(from.latitude)) + " angle " + std::to_string(angle) +
                       " sunspots " + std::to_string(sunspots) + " long " +
                       std::to_string(static_cast<int>(long_way)));
          for (const std::string& line : HourLines(Report(deck))) {
            const auto [hour, local, fot, hpf, es, muf, luf] = Columns(line);
            EXPECT_TRUE(0 < fot && fot <= muf && muf <= hpf) << line;
            EXPECT_TRUE(luf == -muf || (2 <= luf && luf <= hpf)) << line;
          }
          const Circuit month(circuit);
          const CircuitHour state = month.At(12);
          for (const double frequency : {1.8, 14.1, 50.1}) {
            const Reception reception = state.At(frequency);
            EXPECT_TRUE(std::isfinite(reception.snr));
            EXPECT_TRUE(0 <= reception.reliability && reception.reliability <= 1);
            EXPECT_TRUE(std::isfinite(reception.ray.elevation));
            EXPECT_TRUE(0 <= reception.ray.days && reception.ray.days <= 1);
          }
        }
      }
    }
  }
}

/// The share of cells that fulfil a condition, among the cells of bands and hours that either table
/// shows as open.
template <class Condition>
double ShareOfOpenCells(const ResultsTable& a, const ResultsTable& b, const Condition& condition) {
  int open = 0;
  int fulfilled = 0;
  for (std::size_t band = 1; band < kBandCount; ++band) {
    for (std::size_t hour = 1; hour < kHourCount; ++hour) {
      if (std::max(a.reliability[band][hour], b.reliability[band][hour]) <= 0.2F) continue;
      ++open;
      if (condition(band, hour)) ++fulfilled;
    }
  }
  return static_cast<double>(fulfilled) / open;
}

TEST(EstimateSystemReport, IsAcceptedByTheResultsParser) {
  for (const char* name :
       {"decks/transatlantic-voacap30.txt", "decks/tokyo-saopaulo-long-voacap30.txt"}) {
    SCOPED_TRACE(name);
    const Deck deck = ReadDeck(skyhop::testing::TestData(name));
    ResultsTable table;
    const std::string report = Report(deck);
    EXPECT_EQ(report.find(" -0 "), std::string::npos);
    const auto outcome = IONCAPModule::ParseMethod30Results(report, name, table);
    EXPECT_EQ(outcome.complete_hours, 24);
    EXPECT_TRUE(outcome.faults.empty());
    const Circuit circuit(deck.circuit);
    for (std::size_t hour = 1; hour < kHourCount; ++hour) {
      const CircuitHour state = circuit.At(static_cast<double>(hour));
      EXPECT_NEAR(table.Muf50(hour), state.Muf().muf, 0.0501);
      EXPECT_NEAR(table.Muf90(hour), state.Muf().fot, 0.0501);
      for (std::size_t band = 1; band < kBandCount; ++band) {
        const Reception reception = state.At(deck.frequencies[band]);
        EXPECT_NEAR(table.snr[band][hour], std::max(reception.snr, -9999.0), 0.501);
        EXPECT_NEAR(table.signal_power[band][hour], std::max(reception.signal_power, -9999.0),
                    0.501);
        EXPECT_NEAR(table.reliability[band][hour], reception.reliability, 0.00501);
        EXPECT_EQ(Trim(table.mode[band][hour]), ModeText(reception.ray));
      }
    }
  }
}

TEST(EstimateSystemReport, AgreesWithAnEngineWithinTheModelsAccuracy) {
  const Deck deck = ReadDeck(skyhop::testing::TestData("decks/transatlantic-voacap30.txt"));
  ResultsTable estimate;
  ResultsTable engine;
  IONCAPModule::ParseMethod30Results(Report(deck), "", estimate);
  IONCAPModule::ParseMethod30Results(
      skyhop::testing::TestData("results/newyork-london-method30.results.txt"), "", engine);
  const auto level = [](float reliability) {
    return std::clamp(static_cast<int>(std::ceil(reliability * 5.0F)) - 1, 0, 4);
  };
  EXPECT_GT(ShareOfOpenCells(estimate, engine,
                             [&](std::size_t band, std::size_t hour) {
                               return std::abs(level(estimate.reliability[band][hour]) -
                                               level(engine.reliability[band][hour])) <= 1;
                             }),
            0.85);
  EXPECT_GT(ShareOfOpenCells(estimate, engine,
                             [&](std::size_t band, std::size_t hour) {
                               return std::abs(estimate.snr[band][hour] - engine.snr[band][hour]) <=
                                      10;
                             }),
            0.75);
}

TEST(EstimateSystemReport, PrintsADashForUnusedFrequencies) {
  const std::string report =
      Report(ReadDeck(skyhop::testing::TestData("decks/transatlantic-point.txt")));
  ResultsTable table;
  const auto outcome = IONCAPModule::ParseMethod30Results(report, "", table);
  EXPECT_EQ(outcome.complete_hours, 1);
  EXPECT_EQ(outcome.last_hour, 18);
  EXPECT_TRUE(outcome.faults.empty());
  EXPECT_TRUE(table.Known(BandQuantity::kSnr, 1, 18));
  EXPECT_FALSE(table.Known(BandQuantity::kSnr, 2, 18));
  EXPECT_NE(report.find(" 14.1    -    -    -    -    -    -    -    -    - FREQ\n"),
            std::string::npos)
      << report;
}

TEST(EstimateSystemReport, AddsTheGainOfBothAntennas) {
  Deck deck = ReadDeck(skyhop::testing::TestData("decks/transatlantic-voacap30.txt"));
  const Circuit plain(deck.circuit);
  deck.circuit.antenna_gain = 9;
  const Circuit gained(deck.circuit);
  const Reception before = plain.At(18).At(14.1);
  const Reception after = gained.At(18).At(14.1);
  EXPECT_DOUBLE_EQ(after.signal_power, before.signal_power + 9);
  EXPECT_DOUBLE_EQ(after.snr, before.snr + 9);
  EXPECT_GT(after.reliability, before.reliability);
}

}  // namespace
}  // namespace skyhop::estimate
