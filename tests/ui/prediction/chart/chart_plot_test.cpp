#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "support/diagnostics_fixture.h"
#include "support/recording_surface.h"
#include "support/sample_results.h"
#include "ui/prediction/chart/chart_scale.h"
#include "ui/prediction/chart/paint_chart.h"

namespace skyhop::IONCAPModule {
namespace {

using testing::ConstantResult;
using testing::DrawingCall;
using testing::RecordingSurface;

/// Hours 20 pixels apart from x = 60, an axis of 400 pixels from y = 450 up to 50 on the form, the
/// surface 10 pixels above the axis' upper end.
ChartLayout TestLayout() {
  ChartLayout layout = EvenLayout({60, 50, 480, 400}, 15);
  layout.ionprop = {60, 40, 481, 421};
  return layout;
}

struct Shown {
  bool open_bands = false;
  bool curves = false;
};

class Chart : public ::testing::Test {
 protected:
  /// Displays a result and paints its bands and curves; band lines go to a surface of their own.
  void Display(const ResultsTable& result, EngineChoice engine = EngineChoice::kVoaCap,
               Shown shown = {}) {
    model.DisplayResult(result, engine);
    surface.calls.clear();
    band_lines.calls.clear();
    marks = shown.open_bands ? PaintOpenings(model, layout, surface)
                             : PaintBandLines(model, layout, band_lines);
    if (shown.curves) PaintPlot(model, layout, surface);
  }
  [[nodiscard]] ChartScale Scale() const { return {model, layout}; }
  [[nodiscard]] std::vector<int> VisibleLabels() const {
    std::vector<int> bands;
    for (std::size_t band = 0; band < kBandCount; ++band) {
      if (marks.labels[band].visible) bands.push_back(static_cast<int>(band));
    }
    return bands;
  }

  testing::LoggedDiagnostics log;
  ChartModel model{log.diagnostics};
  ChartLayout layout = TestLayout();
  RecordingSurface surface;
  RecordingSurface band_lines;
  BandMarks marks;
};

using Labels = std::array<std::string, kTickCount>;

TEST_F(Chart, HasFiveDivisionsOfWholeMegahertz) {
  const struct {
    float luf, muf90, muf10;
    float f_min, f_max;
    Labels labels;
  } cases[] = {
      {4, 3.2F, 21.6F, 3, 23, {"3.0", "7.0", "11.0", "15.0", "19.0", "23.0"}},
      {5, 10, 15, 5, 15, {"5.0", "7.0", "9.0", "11.0", "13.0", "15.0"}},
      {0, 3, 4.5F, 0, 5, {".0", "1.0", "2.0", "3.0", "4.0", "5.0"}},
      {-1, 3, 20, -1, 24, {"-1.0", "4.0", "9.0", "14.0", "19.0", "24.0"}},
      {30, 12, 20, 12, 32, {"12.0", "16.0", "20.0", "24.0", "28.0", "32.0"}},
      {2.5F, 8, 50.2F, 2, 52, {"2.0", "12.0", "22.0", "32.0", "42.0", "52.0"}},
  };
  for (const auto& c : cases) {
    Display(ConstantResult(c.luf, c.muf90, c.muf90, c.muf10));
    EXPECT_EQ(model.axis.f_min, c.f_min);
    EXPECT_EQ(model.axis.f_max, c.f_max);
    EXPECT_EQ(model.axis.y_labels, c.labels);
    EXPECT_EQ(Scale().FScale(), (c.f_max - c.f_min) / -400);
  }
  EXPECT_EQ(Scale().YFMin(), 450);
  EXPECT_EQ(Scale().YFMax(), 50);
  EXPECT_TRUE(log.errors.empty());
}

TEST_F(Chart, TakesTheRangeOfAReliabilityResultFromItsBounds) {
  ResultsTable result = ConstantResult(0, 8, 9, 0);
  result.f_min = 3;
  result.f_max = 31;
  Display(result, EngineChoice::kVoaCapSnr);
  EXPECT_EQ(model.axis.f_min, 3);
  EXPECT_EQ(model.axis.f_max, 33);
  // For another engine, the range comes from the values of the same table.
  Display(result, EngineChoice::kIcePac);
  EXPECT_EQ(model.axis.f_min, 0);
  EXPECT_EQ(model.axis.f_max, 0);
}

TEST_F(Chart, MapsFrequenciesToHeights) {
  Display(ConstantResult(3, 3.2F, 10, 21.6F));  // 3 to 23 MHz, 20 pixels each
  const struct {
    float frequency;
    int on_surface, on_form;
  } cases[] = {// The scale is slightly below -0.05 in single precision.
               {3, 410, 450},      {23, 10, 51},      {13, 210, 251}, {13.01F, 209, 250},
               {13.06F, 208, 249}, {2.97F, 410, 450}, {0, 469, 509},  {1643, -32390, -32349},
               {1700, 0, 0},       {-2000, 0, 0}};
  for (const auto& c : cases) {
    EXPECT_EQ(Scale().YDataScale(c.frequency), c.on_surface) << c.frequency;
    EXPECT_EQ(Scale().YLabelScale(c.frequency), c.on_form) << c.frequency;
  }
  ASSERT_EQ(log.errors.size(), 4U);
  EXPECT_EQ(
      log.errors[0],
      "program error 6 in module IONCAPModule.YDataScale: Overflow: -33530 is beyond 16 bits");
  EXPECT_TRUE(log.errors[1].starts_with("program error 6 in module IONCAPModule.YLabelScale"));
}

TEST_F(Chart, FindsTheBandNearAHeight) {
  Display(ConstantResult(3, 3.2F, 10, 21.6F));
  for (std::int16_t band = 1; band <= 7; ++band) {
    const std::int16_t y = Scale().YDataScale(kBandLineFrequencies[static_cast<std::size_t>(band)]);
    EXPECT_EQ(Scale().GetBandForY(y), band);
  }
  EXPECT_EQ(Scale().GetBandForY(210), -1);    // 13 MHz
  EXPECT_EQ(Scale().GetBandForY(9999), 1);    // below the axis: 3 MHz
  EXPECT_EQ(Scale().GetBandForY(-9999), -1);  // above the axis: 23 MHz
  EXPECT_EQ(Scale().GetBandForY(std::nanf("")), -1);
}

TEST_F(Chart, ShowsTheBandsThatTheAxisCovers) {
  Display(ConstantResult(3, 3.2F, 10, 21.6F));
  EXPECT_EQ(VisibleLabels(), (std::vector<int>{1, 2, 3, 4, 5, 6, 7}));
  EXPECT_EQ(band_lines.Lines().size(), 7U);
  for (std::size_t band = 0; band < kBandCount; ++band) {
    const BandLine& line = marks.lines[band];
    EXPECT_EQ(line.visible, marks.labels[band].visible);
    if (!line.visible) continue;
    EXPECT_EQ(line.y, Scale().YDataScale(kBandLineFrequencies[band]));
    EXPECT_EQ(marks.labels[band].top, line.y + 40 - 7.5);
  }
  Display(ConstantResult(3, 8, 10, 50.2F));
  EXPECT_EQ(VisibleLabels().back(), 10);
  Display(ConstantResult(3, 8, 10, 48));
  EXPECT_EQ(VisibleLabels().back(), 9);
}

/// "x0,y0 x1,y1 r,g,b width", followed by a dot for a dotted line.
std::string Describe(const DrawingCall& line) {
  const auto number = [](double value) { return std::to_string(std::lround(value)); };
  const Color c = line.pen.color;
  return number(line.from.x) + "," + number(line.from.y) + " " + number(line.to.x) + "," +
         number(line.to.y) + " " + std::to_string(c.red) + "," + std::to_string(c.green) + "," +
         std::to_string(c.blue) + " " + number(line.pen.width) +
         (line.pen.style == LineStyle::kDotted ? "." : "");
}

std::vector<std::string> Describe(const std::vector<DrawingCall>& lines) {
  std::vector<std::string> described;
  described.reserve(lines.size());
  for (const DrawingCall& line : lines) described.push_back(Describe(line));
  return described;
}

TEST_F(Chart, PaintsTheCurvesHourByHourInTheirOrder) {
  ResultsTable result = ConstantResult(3, 8, 13, 18);
  result.frequencies[rows::kMuf90][1] = 9;
  result.frequencies[rows::kLuf][2] = 0;
  result.frequencies[rows::kLuf][3] = -1;
  result.frequencies[rows::kMuf10][0] = 23;
  result.f_min = 3;
  Display(result, EngineChoice::kIonCap, {.curves = true});  // -1 to 24 MHz, 16 pixels each
  const std::vector<std::string> lines = Describe(surface.Lines());
  ASSERT_EQ(lines.size(), 24U * 4 - 2);
  const std::vector<std::string> expected = {
      "0,266 20,250 0,0,255 1",  "0,26 20,106 255,0,0 1",   "0,186 20,186 0,255,0 2",
      "0,346 20,346 0,0,0 2",    "20,250 40,266 0,0,255 1", "20,106 40,106 255,0,0 1",
      "20,186 40,186 0,255,0 2", "40,266 60,266 0,0,255 1", "40,106 60,106 255,0,0 1",
      "40,186 60,186 0,255,0 2", "60,266 80,266 0,0,255 1", "60,106 80,106 255,0,0 1",
      "60,186 80,186 0,255,0 2", "60,410 80,346 0,0,0 2"};
  EXPECT_EQ(std::vector(lines.begin(), lines.begin() + 14), expected);
  EXPECT_EQ(lines.back(), "460,346 480,346 0,0,0 2");
}

TEST_F(Chart, PaintsThickerBarsForHigherLevels) {
  ResultsTable result = ConstantResult(5, 5, 5, 5);
  const auto set = [&](std::size_t hour, float muf90, float muf50, float muf10) {
    result.frequencies[rows::kMuf90][hour] = muf90;
    result.frequencies[rows::kMuf50][hour] = muf50;
    result.frequencies[rows::kMuf10][hour] = muf10;
  };
  set(2, 15, 16, 17);     // 20 m at level 3
  set(3, 14.2F, 15, 17);  // 3
  set(4, 13, 15, 17);     // 2
  set(5, 13, 14, 17);     // 1
  set(24, 13, 15, 17);    // 2
  result.frequencies[rows::kLuf][24] = 12;
  Display(result, EngineChoice::kVoaCap, {.open_bands = true});  // 5 to 20 MHz
  const int y = Scale().YDataScale(14.1F);
  const auto bar = [&](int from, int to, const char* width) {
    return std::to_string(from) + "," + std::to_string(y) + " " + std::to_string(to) + "," +
           std::to_string(y) + " 255,0,255 " + width;
  };
  std::vector<std::string> at_20_metres;
  for (const std::string& line : Describe(surface.Lines())) {
    if (line.find("," + std::to_string(y) + " ") != std::string::npos) at_20_metres.push_back(line);
  }
  EXPECT_EQ(at_20_metres, (std::vector<std::string>{bar(20, 40, "1."), bar(40, 60, "3"),
                                                    bar(60, 80, "2"), bar(80, 100, "1"),
                                                    bar(100, 120, "1."), bar(460, 480, "1.")}));
  // 60, 40 and 30 m are above the LUF of 5 MHz too; 17 m is never open, 80 m is below.
  EXPECT_EQ(VisibleLabels(), (std::vector<int>{2, 3, 4, 5}));
  EXPECT_EQ(marks.labels[5].top, Scale().YLabelScale(14.1F) - 7.5);
  // The lines have places on the new axis too.
  EXPECT_TRUE(marks.lines[6].visible);
  EXPECT_FALSE(marks.lines[1].visible);
}

TEST_F(Chart, PaintsReliabilitiesForTheHourThatTheyBegin) {
  ResultsTable result = testing::EmptyResult();
  result.f_min = 10;
  result.f_max = 20;
  result.reliability[5][0] = 0.7F;
  result.reliability[5][23] = 0.9F;
  result.reliability[5][24] = 0.9F;
  result.reliability[0].fill(0.2F);
  Display(result, EngineChoice::kVoaCapSnr, {.open_bands = true, .curves = true});
  const std::string y = std::to_string(Scale().YDataScale(14.1F));
  EXPECT_EQ(Describe(surface.Lines()),
            (std::vector<std::string>{"0," + y + " 20," + y + " 255,0,255 3",
                                      "460," + y + " 480," + y + " 255,0,255 4"}));
  EXPECT_EQ(VisibleLabels(), std::vector<int>{5});
}

TEST_F(Chart, LeavesGapsWhereReliabilityResultsHaveNoFrequency) {
  ResultsTable result = ConstantResult(0, 8, 13, 0);
  result.frequencies[rows::kMuf90][1] = 0;
  result.f_min = 4;
  result.f_max = 24;
  Display(result, EngineChoice::kVoaCapSnr, {.curves = true});  // 20 pixels a MHz
  const std::vector<std::string> lines = Describe(surface.Lines());
  ASSERT_EQ(lines.size(), 22U + 24U);
  EXPECT_EQ(std::vector(lines.begin(), lines.begin() + 4),
            (std::vector<std::string>{"0,230 20,230 0,255,0 2", "20,230 40,230 0,255,0 2",
                                      "40,330 60,330 0,0,255 1", "40,230 60,230 0,255,0 2"}));
}

TEST_F(Chart, DrawsNothingBeforeThereIsAResult) {
  const ResultsTable table = testing::NewYorkLondon();
  model.table = table;
  model.axis = ComputeAxis(table, EngineChoice::kVoaCap, log.diagnostics);
  PaintPlot(model, layout, surface);
  marks = PaintOpenings(model, layout, surface);
  EXPECT_TRUE(VisibleLabels().empty());
  marks = PaintBandLines(model, layout, surface);
  EXPECT_TRUE(VisibleLabels().empty());
  EXPECT_TRUE(surface.calls.empty());
  model.DisplayResult(table, EngineChoice::kVoaCap);
  PaintPlot(model, layout, surface);
  PaintOpenings(model, layout, surface);
  EXPECT_EQ(log.debug, (std::vector<std::string>{"IONCAPModule.PaintPlot, Plotted = False",
                                                 "IONCAPModule.PaintOpenings, Plotted = False",
                                                 "IONCAPModule.PaintPlot, Plotted = True",
                                                 "IONCAPModule.PaintOpenings, Plotted = True"}));
  EXPECT_FALSE(surface.calls.empty());
}

TEST_F(Chart, SurvivesResultsWithoutARange) {
  const Shown all{.open_bands = true, .curves = true};
  const std::string no_extent = ": Division by zero: the frequency axis has no extent";
  const struct {
    const char* name;
    ResultsTable result = testing::EmptyResult();
    EngineChoice engine;
    std::vector<std::string> errors;
  } cases[] = {
      {"all zero", testing::EmptyResult(), EngineChoice::kVoaCap, {}},
      {"untouched bounds", testing::EmptyResult(), EngineChoice::kVoaCapSnr, {}},
      {"no LUF, no MUF", ConstantResult(-1, 0, 0, 0), EngineChoice::kIonCap, {}},
      {"one frequency",
       ConstantResult(7, 7, 7, 7),
       EngineChoice::kVoaCap,
       {"program error 11 in module IONCAPModule.PaintPlot" + no_extent}},
      {"huge", ConstantResult(2, 1e29F, 2e29F, 1e30F), EngineChoice::kVoaCap, {}},
      {"beyond single precision",
       ConstantResult(2, 1e29F, 2e29F, std::numeric_limits<float>::max()),
       EngineChoice::kVoaCap,
       {"program error 6 in module IONCAPModule.ComputeAxis: Overflow: "
        "408338815966234631774045020181420310528 in single precision",
        "program error 11 in module IONCAPModule.PaintOpenings" + no_extent,
        "program error 11 in module IONCAPModule.PaintPlot" + no_extent}},
  };
  for (const auto& c : cases) {
    log.errors.clear();
    Display(c.result, c.engine, all);
    EXPECT_EQ(log.errors, c.errors) << c.name;
    EXPECT_EQ(surface.Lines().empty(), std::string(c.name) != "huge") << c.name;
  }
  layout = {};
  EXPECT_EQ(Scale().TimeForX(5), 0);
  EXPECT_EQ(Scale().FScale(), 0);
}

TEST_F(Chart, YieldsZeroAndReportsAScaleWithoutExtent) {
  EXPECT_EQ(Scale().YDataScale(7), 0);
  EXPECT_EQ(Scale().YLabelScale(7), 0);
  EXPECT_EQ(Scale().GetBandForY(7), -1);
  const std::string end = ": Division by zero: the frequency axis has no extent";
  EXPECT_EQ(log.errors, (std::vector<std::string>{
                            "program error 11 in module IONCAPModule.YDataScale" + end,
                            "program error 11 in module IONCAPModule.YLabelScale" + end}));
}

TEST_F(Chart, MapsTimesToPlaces) {
  const struct {
    double hours, x;
  } cases[] = {{0, 0}, {13 + 5 / 60.0, 13 * 20 + 20 * 5 / 60.0}, {23.5, 470}, {24, 480}};
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(Scale().XForTime(c.hours), c.x);
    EXPECT_NEAR(Scale().TimeForX(c.x), c.hours, 1e-9);
  }
  EXPECT_EQ(Scale().TimeForX(-3), 0);
  EXPECT_EQ(Scale().TimeForX(1e9), 24);
  EXPECT_EQ(Scale().HourWidth(), 20);
}

TEST_F(Chart, KeepsItsResultOnANewLayout) {
  Display(ConstantResult(3, 3.2F, 10, 21.6F));
  layout = EvenLayout({0, 0, 960, 800}, 15);
  EXPECT_EQ(Scale().YDataScale(13), 400);
  EXPECT_EQ(Scale().HourWidth(), 40);
  EXPECT_EQ(PaintBandLines(model, layout, surface).lines[4].y, Scale().YDataScale(10.1F));
}

}  // namespace
}  // namespace skyhop::IONCAPModule
