#include "ui/prediction/chart/reliability_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "engine/results_parser.h"
#include "support/diagnostics_fixture.h"
#include "support/recording_surface.h"
#include "support/temporary_folder.h"
#include "ui/prediction/chart/chart_pane.h"
#include "ui/prediction/chart/chart_pointer.h"

namespace skyhop::testing {
namespace {

ResultsTable Sample() {
  ResultsTable table;
  IONCAPModule::ParseMethod30Results(TestData("results/newyork-london-method30.results.txt"), "",
                                     table);
  return table;
}

/// A day with reliabilities.
struct SampleDay {
  LoggedDiagnostics log;
  ResultsTable table = Sample();
  PredictedDay day{table, log.diagnostics, EngineChoice::kVoaCapSnr};
};

/// Lightness of a colour, 0 to 255.
double Lightness(Color color) {
  return 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue;
}

TEST(ReliabilityTable, CellsDifferByLightnessAndKeepNumbersReadable) {
  double before = 256;
  for (const int percent : {20, 40, 60, 80, 100}) {
    const TextColors cell = ReliabilityColors(percent);
    EXPECT_EQ(ReliabilityColors(percent - 19).fill, cell.fill) << percent;
    EXPECT_LT(Lightness(cell.fill), before - 5) << percent;
    EXPECT_GT(std::abs(Lightness(cell.fill) - Lightness(cell.ink)), 105) << percent;
    before = Lightness(cell.fill);
  }
}

TEST(ReliabilityTable, EveryCellShowsItsNumber) {
  SampleDay sample;
  ResultsTable& table = sample.table;
  table.known[5][13] = 0;
  RecordingSurface surface;
  const Rectangle area{50, 20, 720, 300};
  PaintBandTable(surface, sample.day, area, 12, kLightPalette);
  const auto texts = surface.Texts();
  for (std::size_t band = 1; band < kBandCount; ++band) {
    for (std::size_t hour = 0; hour < 24; ++hour) {
      const double x = area.left + 30.0 * static_cast<double>(hour) + 15;
      const double y = area.top + 30.0 * static_cast<double>(kBandCount - 1 - band) + 15;
      const auto found = std::find_if(texts.begin(), texts.end(), [&](const DrawingCall& call) {
        return std::abs(call.from.x - x) < 1 && std::abs(call.from.y - y) < 1;
      });
      ASSERT_NE(found, texts.end()) << band << "/" << hour;
      // The results have two decimals.
      const auto percent = std::lround(100.0 * static_cast<double>(table.reliability[band][hour]));
      EXPECT_EQ(found->text, band == 5 && hour == 13 ? "\u2013" : std::to_string(percent));
      EXPECT_EQ(BandOfRow(sample.day, area, y), band);
    }
  }
  EXPECT_EQ(BandOfRow(sample.day, area, 19), std::nullopt);
  EXPECT_EQ(BandOfRow(sample.day, area, 320), std::nullopt);
}

TEST(ReliabilityTable, OmitsNumbersInSmallCells) {
  RecordingSurface surface;
  SampleDay sample;
  PaintBandTable(surface, sample.day, {50, 20, 240, 300}, 12, kLightPalette);
  EXPECT_EQ(surface.Texts().size(), kBandCount - 1) << "only the names of the bands";
}

class TablePane : public ::testing::Test {
 protected:
  TablePane() { pane_.Resize(1000, 500, 13); }

  [[nodiscard]] const Rectangle& Plot() const { return pane_.Layout().ionprop; }
  /// The middle of a cell of the table.
  [[nodiscard]] Point Cell(std::size_t band, int hour) const {
    return {Plot().left + Plot().width * (hour + 0.5) / 24,
            Plot().top + Plot().height * (static_cast<double>(kBandCount - 1 - band) + 0.5) / 10};
  }
  [[nodiscard]] std::string Readout(Point at) const {
    return ReadoutAt(pane_.Model(), pane_.Layout(), at);
  }
  [[nodiscard]] bool Paints(const std::string& text) {
    RecordingSurface surface;
    pane_.Paint(surface);
    const auto texts = surface.Texts();
    return std::any_of(texts.begin(), texts.end(),
                       [&](const DrawingCall& call) { return call.text == text; });
  }

  LoggedDiagnostics log_;
  ResultsTable table_ = Sample();
  ChartPane pane_{table_, log_.diagnostics, log_.clock};
};

constexpr const char* kReliabilityCaption =
    "Reliability: percent of the days that reach the required SNR";

TEST_F(TablePane, ReplacesTheChart) {
  pane_.SetTableView(true);
  EXPECT_FALSE(pane_.Model().TableShown()) << "no result yet";
  pane_.DisplayTable(EngineChoice::kVoaCapSnr);
  EXPECT_TRUE(pane_.Model().TableShown());
  EXPECT_FALSE(Paints("MHz"));
  EXPECT_FALSE(Paints("Open Bands")) << "a key of the chart";
  EXPECT_TRUE(Paints(kReliabilityCaption));
  EXPECT_FALSE(Paints("Previous prediction"));
  pane_.SetOld(true);
  EXPECT_TRUE(Paints("Previous prediction"));
  EXPECT_TRUE(Paints(kReliabilityCaption));
  pane_.SetTableView(false);
  EXPECT_TRUE(Paints("MHz"));
}

TEST_F(TablePane, ShowsThePredictionForTheBandAtThePointer) {
  pane_.DisplayTable(EngineChoice::kVoaCapSnr);
  pane_.SetTableView(true);
  const std::string expected = "01:30 UTC   30 m   85 % of days   SNR 45 dB   2F2   -88 dBm, S6";
  EXPECT_EQ(Readout(Cell(4, 1)), expected);
  std::int16_t chosen = -2;
  pane_.SetBandListener([&](std::int16_t band) { chosen = band; });
  pane_.Press(Cell(10, 1));
  EXPECT_EQ(chosen, 10);
  pane_.SetTableView(false);
  const FrequencyAxis& axis = pane_.Model().axis;
  const double part = (10.1 - axis.f_min) / (double{axis.f_max} - axis.f_min);
  EXPECT_EQ(Readout({Cell(4, 1).x, Plot().Bottom() - part * Plot().height}), expected);
}

TEST_F(TablePane, ShowsLevelsAndUnreachedHoursOfLufMufResults) {
  for (std::size_t row : {rows::kLuf, rows::kMuf90, rows::kMuf50, rows::kMuf10}) {
    table_.frequencies[row].fill(row == rows::kLuf ? 2 : row == rows::kMuf90 ? 8 : 20);
  }
  table_.reached[3] = false;
  pane_.DisplayTable(EngineChoice::kIonCap);
  pane_.SetTableView(true);
  RecordingSurface surface;
  pane_.Paint(surface);
  std::map<std::string, int> texts;
  for (const DrawingCall& call : surface.Texts()) ++texts[call.text];
  EXPECT_EQ(texts["\u00D7"], 11) << "every band of the unreached hour";
  EXPECT_EQ(texts["160 m"], 1);
  const auto at = [&](std::size_t row, int hour) {
    return Readout({Plot().left + Plot().width * (hour + 0.5) / 24,
                    Plot().top + Plot().height * (static_cast<double>(row) + 0.5) / 11});
  };
  EXPECT_EQ(at(5, 1).substr(0, 45), "01:30 UTC   20 m   open on 50 % of the days o");
  EXPECT_EQ(at(10, 1).substr(0, 27), "01:30 UTC   160 m   closed ");
  EXPECT_EQ(at(5, 3).substr(0, 51), "03:30 UTC   20 m   required reliability not reached");
}

}  // namespace
}  // namespace skyhop::testing
