#include "ui/spaceweather/forecast_chart.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "spaceweather/forecast_parser.h"
#include "support/recording_surface.h"
#include "support/temporary_folder.h"
#include "ui/drawing/svg_surface.h"

namespace skyhop::testing {
namespace {

using SolarForecastModule::ForecastTable;
using namespace std::chrono_literals;

constexpr auto kToday = 2026y / 11 / 15;

ForecastTable SampleTable() {
  ForecastTable table;
  EXPECT_EQ(SolarForecastModule::ParseForecast(TestData("spaceweather/forecast.txt"), 15, table),
            "");
  return table;
}

ForecastChartOptions Options() {
  ForecastChartOptions options;
  options.width = 900;
  options.height = 600;
  options.today = kToday;
  options.empty_text = "none yet";
  return options;
}

/// The middle of a day's column, at the height of the first graph's upper end.
Point Middle(const ForecastChart& chart, std::size_t slot) {
  const Rectangle plot = chart.Plots().front();
  return {plot.left + (static_cast<double>(31 - slot) + 0.5) * plot.width / 31, plot.top};
}

RecordingSurface Painted(const ForecastTable& table, const ForecastChartOptions& options) {
  RecordingSurface surface;
  ForecastChart(table, options).Paint(surface);
  return surface;
}

bool HasText(const RecordingSurface& surface, const std::string& text) {
  const auto texts = surface.Texts();
  return std::any_of(texts.begin(), texts.end(),
                     [&](const DrawingCall& call) { return call.text == text; });
}

TEST(ForecastChart, NamesEveryDayInTheWindowsFirstSize) {
  ForecastTable table;
  for (std::size_t slot = 1; slot <= 31; ++slot) {
    table.at(slot) = {.valid = true, .day = static_cast<int>(slot), .date = "01Dec26"};
  }
  ForecastChartOptions options = Options();
  options.width = 884;
  options.height = 530;
  options.text_size = 15;
  const RecordingSurface surface = Painted(table, options);
  for (int day = 1; day <= 31; ++day) EXPECT_TRUE(HasText(surface, std::to_string(day))) << day;
}

TEST(ForecastChart, ShowsAGraphForEachTickedBox) {
  const ForecastTable table = SampleTable();
  for (int boxes = 0; boxes < 8; ++boxes) {
    ForecastChartOptions options = Options();
    options.flux = (boxes & 1) != 0;
    options.a_index = (boxes & 2) != 0;
    options.k_index = (boxes & 4) != 0;
    const RecordingSurface surface = Painted(table, options);
    EXPECT_EQ(HasText(surface, "Solar flux"), options.flux);
    EXPECT_EQ(HasText(surface, "A index"), options.a_index);
    EXPECT_EQ(HasText(surface, "K index, estimated from A"), options.k_index);
    EXPECT_EQ(HasText(surface, "Tick a box above to see its graph"), boxes == 0);
    const std::vector<Rectangle> plots = ForecastChart(table, options).Plots();
    for (std::size_t index = 0; index < plots.size(); ++index) {
      EXPECT_GT(plots[index].height, 100);
      const double below = index + 1 < plots.size() ? plots[index + 1].top : options.height;
      EXPECT_LT(plots[index].Bottom(), below - options.text_size) << boxes;
    }
  }
}

TEST(ForecastChart, DrawsEachValueAtItsDayAndHeight) {
  ForecastChartOptions options = Options();
  options.flux = options.k_index = false;
  ForecastTable table = SampleTable();
  // The axis ends at 50, above the largest value, 48.
  const ForecastChart chart(table, options);
  const Rectangle plot = chart.Plots().front();
  const RecordingSurface surface = Painted(table, options);
  const auto bar_of = [&](std::size_t slot) {
    std::vector<Rectangle> bars;
    for (const DrawingCall& call : surface.Only(DrawingCall::Kind::kRectangle)) {
      const double x = Middle(chart, slot).x;
      const bool is_bar = call.area.width < plot.width / 31 && call.area.Bottom() == plot.Bottom();
      if (is_bar && call.area.left < x && x < call.area.Right()) bars.push_back(call.area);
    }
    EXPECT_EQ(bars.size(), 1U);
    return bars.empty() ? Rectangle() : bars[0];
  };
  EXPECT_NEAR(bar_of(15).height, plot.height * 48 / 50, 0.01);
  EXPECT_NEAR(bar_of(31).height, plot.height * 5 / 50, 0.01);
  EXPECT_TRUE(HasText(surface, "50"));
  EXPECT_FALSE(HasText(surface, "60"));
}

TEST(ForecastChart, LeavesGapsForMissingValues) {
  ForecastChartOptions options = Options();
  options.a_index = options.k_index = false;
  ForecastTable table = SampleTable();
  const auto curve_lines = [&] {
    const auto lines = Painted(table, options).Lines();
    return std::count_if(lines.begin(), lines.end(),
                         [](const DrawingCall& call) { return call.pen.width > 1; });
  };
  EXPECT_EQ(curve_lines(), 30);
  table[20].columns[1] = -1;
  EXPECT_EQ(curve_lines(), 28);
  table[10].valid = false;
  EXPECT_EQ(curve_lines(), 26);
}

TEST(ForecastChart, NamesDaysAndMonthsAndMarksToday) {
  const ForecastTable table = SampleTable();
  ForecastChartOptions options = Options();
  RecordingSurface surface = Painted(table, options);
  for (const char* text : {"Nov 2026", "Dec 2026", "30", "1", "today"}) {
    EXPECT_TRUE(HasText(surface, text)) << text;
  }
  // The mark is in the first column, in each graph.
  const auto marked = [&] {
    const auto areas = surface.Only(DrawingCall::Kind::kRectangle);
    return std::count_if(areas.begin(), areas.end(), [&](const DrawingCall& call) {
      return call.pen.color == options.palette.old_paper &&
             call.area.left == ForecastChart(table, options).Plots()[0].left;
    });
  };
  EXPECT_EQ(marked(), 3);
  options.today = 2026y / 10 / 15;
  surface = Painted(table, options);
  EXPECT_EQ(marked(), 0);
  EXPECT_FALSE(HasText(surface, "today"));
}

TEST(ForecastChart, FindsTheDayUnderThePointer) {
  ForecastTable table = SampleTable();
  table[7].valid = false;
  const ForecastChart chart(table, Options());
  for (const std::size_t slot : {31U, 30U, 2U, 1U})
    EXPECT_EQ(chart.SlotAt(Middle(chart, slot)), slot);
  EXPECT_EQ(chart.SlotAt(Middle(chart, 7)), 0U);
  const Rectangle first = chart.Plots().front();
  const Rectangle last = chart.Plots().back();
  EXPECT_EQ(chart.SlotAt({first.left - 1, first.top}), 0U);
  EXPECT_EQ(chart.SlotAt({first.Right(), first.top}), 0U);
  EXPECT_EQ(chart.SlotAt({first.left, first.top - 1}), 0U);
  EXPECT_EQ(chart.SlotAt({first.left, last.Bottom() + 10}), 31U);
}

TEST(ForecastChart, DescribesTheValuesOfADay) {
  ForecastTable table = SampleTable();
  EXPECT_EQ(DayText(table[15]), "1 Dec 2026: solar flux 98, A index 48, estimated K index 6");
  table[15].columns = {0, -1, -1, -1, -1, -1, -1, 0, 0, 0};
  table[15].date = "01xyz26";
  EXPECT_EQ(DayText(table[15]),
            "01xyz26: solar flux not given, A index not given, estimated K index not given");
  EXPECT_EQ(DayText({}), "");
}

TEST(ForecastChart, ShowsWhyItIsEmptyOnSeveralLines) {
  ForecastChartOptions options = Options();
  EXPECT_TRUE(HasText(Painted({}, options), "none yet"));
  options.width = 200;
  options.empty_text = "unable to download solar forecast from https://host/file - no session";
  EXPECT_GT(Painted({}, options).Texts().size(), 2U);
}

TEST(ForecastChart, SurvivesACanvasOfAnySize) {
  const ForecastTable table = SampleTable();
  for (const double size : {0.0, 1.0, 60.0, 5000.0}) {
    ForecastChartOptions options = Options();
    options.width = options.height = size;
    SvgSurface surface(size + 1, size + 1);
    ForecastChart(table, options).Paint(surface);
    EXPECT_EQ(surface.Document().find("nan"), std::string::npos);
    EXPECT_EQ(surface.Document().find("\"-"), std::string::npos) << size;
  }
}

}  // namespace
}  // namespace skyhop::testing
