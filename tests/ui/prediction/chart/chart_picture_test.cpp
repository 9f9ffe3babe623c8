#include "ui/prediction/chart/chart_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "common/files.h"
#include "engine/results_parser.h"
#include "support/diagnostics_fixture.h"
#include "support/recording_surface.h"
#include "support/sample_results.h"
#include "ui/drawing/svg_surface.h"
#include "ui/drawing/text_width.h"
#include "ui/prediction/chart/chart_pane.h"

namespace skyhop {
namespace {

using testing::DrawingCall;

constexpr const char* kTitle =
    "FN20 \u2192 IO91 \u00B7 51\u00B0 \u00B7 3480 miles \u00B7 short path \u00B7 1500 W";
constexpr const char* kProvenance = "VOACAP 16.1207W \u00B7 sunspot number 105";

/// An axis of 2 to 52 MHz, which leaves the least room between the low bands.
ResultsTable LongAxis() {
  ResultsTable table = testing::NewYorkLondon();
  for (float& value : table.frequencies[rows::kMuf10]) value *= 1.24F;
  return table;
}

ResultsTable LowestBands() {
  return testing::ConstantResult(1.1F, 40, 45, 61);
}

struct Sample {
  const char* name;
  ResultsTable table;
  EngineChoice engine = EngineChoice::kVoaCap;
  bool open_bands = true;
  bool curves = true;
  bool keys = true;
  bool table_view = false;
  bool old = false;
  double time = 12 + 5 / 60.0;
  PictureOptions options{};
  std::string title = kTitle;
};

/// A day whose first hours do not reach the required reliability.
ResultsTable PartlyReached() {
  ResultsTable table = testing::NewYorkLondon();
  for (std::size_t hour : {0, 1, 2, 24}) table.reached.at(hour) = false;
  return table;
}

/// Reliabilities as an engine wrote them, with one cell that the file does not contain.
ResultsTable ParsedReliabilities() {
  ResultsTable table;
  IONCAPModule::ParseMethod30Results(
      testing::TestData("results/newyork-london-method30.results.txt"), "", table);
  table.known[5][13] = 0;
  return table;
}

std::vector<Sample> Samples() {
  std::string long_title = kTitle;
  while (long_title.size() < 400) long_title += " <North Wales> & Queanbeyan";
  const PictureOptions small{.width = 100, .height = 100};
  return {
      {.name = "luf-muf-open", .table = testing::NewYorkLondon(), .time = 13 + 5 / 60.0},
      {.name = "luf-muf", .table = testing::NewYorkLondon(), .open_bands = false},
      {.name = "no-keys", .table = testing::NewYorkLondon(), .keys = false},
      {.name = "unreached", .table = PartlyReached(), .old = true},
      {.name = "reliability",
       .table = testing::NewYorkLondonReliability(),
       .engine = EngineChoice::kVoaCapSnr},
      {.name = "table",
       .table = ParsedReliabilities(),
       .engine = EngineChoice::kVoaCapSnr,
       .table_view = true,
       .old = true},
      {.name = "levels", .table = PartlyReached(), .table_view = true},
      {.name = "long-axis", .table = LongAxis()},
      {.name = "small",
       .table = LowestBands(),
       .engine = EngineChoice::kIcePac,
       .time = 23 + 5 / 60.0,
       .options = small,
       .title = long_title},
      {.name = "scaled", .table = LongAxis(), .time = 0, .options = {.scale = 2}},
      {.name = "nothing", .table = testing::EmptyResult(), .title = ""},
  };
}

class ChartPicture : public ::testing::Test {
 protected:
  ChartModel Model(const Sample& s) {
    ChartModel model(log.diagnostics);
    model.DisplayResult(s.table, s.engine);
    model.open_band_enable = s.open_bands;
    model.plot_enable = s.curves;
    model.color_keys = s.keys;
    model.table_view = s.table_view;
    model.old = s.old;
    model.title = s.title;
    model.provenance = kProvenance;
    model.time_index = s.time;
    const std::chrono::year_month_day date{std::chrono::year(2026), std::chrono::month(11),
                                           std::chrono::day(15)};
    const Position new_york{{40, 30, 0, -1}, {74, 15, 0, -1}};
    const Position tokyo{{35, 41, 0, 1}, {139, 46, 0, 1}};
    model.sun = {ComputeSunRow(new_york, date), ComputeSunRow(tokyo, date)};
    // A picture leaves these parts of the window out.
    model.band_indicator = 5;
    model.empty_text = "press Predict";
    return model;
  }
  std::string Svg(const Sample& s) { return PictureAsSvg(Model(s), s.options); }
  testing::RecordingSurface Record(const Sample& s) {
    testing::RecordingSurface surface;
    PaintPicture(surface, Model(s), s.options);
    return surface;
  }

  testing::LoggedDiagnostics log;
};

Rectangle Extent(const DrawingCall& text) {
  const double width = TextWidth(text.text, text.style.size, text.style.weight);
  const double height = text.style.size;
  Rectangle box{text.from.x, text.from.y, width, height};
  if (text.style.horizontal == HorizontalAlign::kCenter) box.left -= width / 2;
  if (text.style.horizontal == HorizontalAlign::kRight) box.left -= width;
  if (text.style.vertical == VerticalAlign::kMiddle) box.top -= height / 2;
  if (text.style.vertical == VerticalAlign::kBottom) box.top -= height;
  return box;
}

TEST_F(ChartPicture, KeepsTextsInsideAndApart) {
  for (const Sample& sample : Samples()) {
    const std::vector<DrawingCall> texts = Record(sample).Texts();
    const Rectangle page{0, 0, sample.options.SurfaceWidth(), sample.options.SurfaceHeight()};
    for (auto one = texts.begin(); one != texts.end(); ++one) {
      const Rectangle a = Extent(*one);
      EXPECT_TRUE(a.left >= 0 && a.top >= 0 && a.Right() <= page.width && a.Bottom() <= page.height)
          << sample.name << ": " << one->text;
      for (auto other = one + 1; other != texts.end(); ++other) {
        const Rectangle b = Extent(*other);
        const bool apart = a.Right() <= b.left || b.Right() <= a.left || a.Bottom() <= b.top ||
                           b.Bottom() <= a.top;
        EXPECT_TRUE(apart) << sample.name << ": " << one->text << " / " << other->text;
      }
    }
  }
}

TEST_F(ChartPicture, KeepsLinesOnThePage) {
  for (const Sample& sample : Samples()) {
    for (const DrawingCall& line : Record(sample).Lines()) {
      for (const Point& point : {line.from, line.to}) {
        EXPECT_TRUE(point.x >= 0 && point.y >= 0 && point.x <= sample.options.SurfaceWidth() &&
                    point.y <= sample.options.SurfaceHeight())
            << sample.name << ": " << point.x << "," << point.y;
      }
    }
  }
}

/// Texts of a picture, in their order.
std::vector<std::string> TextsOf(const testing::RecordingSurface& surface) {
  std::vector<std::string> texts;
  for (const DrawingCall& call : surface.Texts()) texts.push_back(call.text);
  return texts;
}

TEST_F(ChartPicture, NamesResultsWithoutFrequencies) {
  const std::vector<std::string> texts = TextsOf(Record(Samples().back()));
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "The results hold no frequencies"), 1);
}

TEST_F(ChartPicture, HatchesHoursBelowTheRequiredReliability) {
  const ChartPalette& palette = kLightPalette;
  const auto shaded = [&](const Sample& sample) {
    double width = 0;
    for (const DrawingCall& call : Record(sample).Only(DrawingCall::Kind::kRectangle)) {
      if (call.pen.color == palette.shade) width += call.area.width;
    }
    return width;
  };
  const std::vector<Sample> samples = Samples();
  EXPECT_EQ(shaded(samples[0]), 0);
  // Half an hour on both sides of 0 to 2 and of 24, within the day, and the sample in the key.
  const double hour = std::floor((1040 - 48 - std::ceil(12 * 4.4) - std::ceil(12 * 4.6)) / 24);
  Sample present = samples[3];
  present.old = false;
  EXPECT_NEAR(shaded(present), 3 * hour + 30, 1.5);
  EXPECT_EQ(shaded(samples[3]), 30) << "the paper of an old chart shows through the hatching";
}

/// The chart in a low window on a dark desktop: an old prediction with unreached hours, the keys at
/// the right, band lines instead of open bands, and an indicated band.
std::string DarkWindow(testing::LoggedDiagnostics& log) {
  const ResultsTable table = PartlyReached();
  ChartPane pane(table, log.diagnostics, log.clock);
  pane.SetPalette(kDarkPalette);
  pane.Resize(1000, 330, 12);
  pane.DisplayTable(EngineChoice::kVoaCap);
  pane.SetOpenBandEnable(false);
  pane.SetOld(true);
  pane.SetTitle(kTitle);
  pane.SetBandIndicator(5);
  SvgSurface surface(1000, 330);
  pane.Paint(surface);
  pane.PaintOverlay(surface);
  return surface.Document();
}

TEST_F(ChartPicture, IsTheApprovedOne) {
  std::map<std::string, std::string> pictures = {{"dark-window", DarkWindow(log)}};
  for (const Sample& sample : Samples()) pictures[sample.name] = Svg(sample);
  // Set the variable to a folder to write all pictures there.
  if (const char* folder = std::getenv("SKYHOP_PICTURES")) {
    for (const auto& [name, svg] : pictures) {
      WriteFile(PathFromText(folder) / (name + ".svg"), svg);
    }
  }
  for (const char* name : {"luf-muf-open", "reliability", "table", "levels", "dark-window"}) {
    EXPECT_EQ(pictures[name], testing::TestData("chart/" + std::string(name) + ".svg"));
  }
  EXPECT_TRUE(log.errors.empty());
}

}  // namespace
}  // namespace skyhop
