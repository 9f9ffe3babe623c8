#include "ui/prediction/chart_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "common/files.h"
#include "support/diagnostics_fixture.h"
#include "support/recording_surface.h"
#include "ui/prediction/reliability_table.h"
#include "ui/prediction/sample_results.h"
#include "ui/prediction/svg_surface.h"
#include "ui/prediction/text_width.h"

namespace skyhop {
namespace {

using testing::DrawingCall;

const PictureTexts kTexts{"SP 24 db 3481 mi  to propagation New York to London on 15-Nov-26",
                          "VOACAP LUF && MUF", "16.1207W", "105"};

/// 2 to 52 MHz, the axis on which the low bands come closest together.
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
  PictureOptions options{};
  PictureTexts texts = kTexts;
};

std::vector<Sample> Samples() {
  PictureTexts snr_texts = kTexts;
  snr_texts.engine = "VOACAP SNR && Prob";
  PictureTexts long_texts = kTexts;
  long_texts.summary =
      "LP 24 db 21496 mi  from propagation "
      "Llanfairpwllgwyngyllgogerychwyrndrobwllllantysiliogogogoch"
      " <North Wales> & surroundings to Queanbeyan-Palerang, New South Wales on 15-Nov-26 "
      "(contest weekend with the big antenna settings) and some more words that nobody needs";
  const PictureOptions small{.width = 100, .height = 100, .time_index = 24};
  return {
      {"luf-muf-open", testing::NewYorkLondon(), EngineChoice::kVoaCap, {.time_index = 13.0833}},
      {"luf-muf", testing::NewYorkLondon(), EngineChoice::kVoaCap, {.show_open_bands = false}},
      {"open-only", testing::NewYorkLondon(), EngineChoice::kVoaCap, {.show_curves = false}},
      {"no-keys", testing::NewYorkLondon(), EngineChoice::kVoaCap, {.show_color_keys = false}},
      {"reliability", testing::NewYorkLondonReliability(), EngineChoice::kVoaCapSnr, {}, snr_texts},
      {"table",
       testing::NewYorkLondonReliability(),
       EngineChoice::kVoaCapSnr,
       {.show_table = true, .time_index = 13},
       snr_texts},
      {"no-table", testing::NewYorkLondon(), EngineChoice::kVoaCap, {.show_table = true}},
      {"long-axis", LongAxis(), EngineChoice::kVoaCap, {}},
      {"long-summary", LowestBands(), EngineChoice::kIcePac, small, long_texts},
      {"scaled", LongAxis(), EngineChoice::kVoaCap, {.scale = 2, .time_index = 0}},
      {"nothing", testing::EmptyResult(), EngineChoice::kVoaCap, {}, {}},
  };
}

class ChartPicture : public ::testing::Test {
 protected:
  std::string Svg(const Sample& s) {
    return PictureAsSvg(s.table, s.engine, s.texts, s.options, log.diagnostics, log.clock);
  }
  testing::RecordingSurface Record(const Sample& s) {
    testing::RecordingSurface surface;
    PaintPicture(surface, s.table, s.engine, s.texts, s.options, log.diagnostics, log.clock);
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

TEST_F(ChartPicture, HasEveryTextInsideAndNoTwoOverEachOther) {
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

TEST_F(ChartPicture, ExplainsJustWhatItShows) {
  const auto says = [&](const Sample& sample, const std::string& text) {
    const std::vector<std::string> texts = TextsOf(Record(sample));
    return std::find(texts.begin(), texts.end(), text) != texts.end();
  };
  const struct {
    const char* sample;
    std::string text;
    bool expected;
  } cases[] = {
      {"luf-muf-open", "VOACAP LUF & MUF 16.1207W \u00B7 sunspot number 105", true},
      {"luf-muf-open", "13:05", true},
      {"luf-muf-open", "maximum useable frequency  - 90% confidence", true},
      {"luf-muf-open", "opens or closes in this hour", true},
      {"luf-muf-open", "(not predicted)", false},
      {"luf-muf", "lowest useable frequency", true},
      {"luf-muf", "opens or closes in this hour", false},
      {"open-only", "lowest useable frequency", false},
      {"open-only", "open with at least 90% confidence", true},
      {"no-keys", "lowest useable frequency", false},
      {"reliability", "reliability above 80%", true},
      {"reliability", "(not predicted)", true},
      {"reliability", "MHz", true},
      {"table", "MHz", false},
      {"table", "reliability above 80%", false},
      {"table",
       "VOACAP SNR & Prob 16.1207W \u00B7 sunspot number 105 \u00B7 " +
           std::string(kReliabilityCaption),
       true},
      {"no-table", "MHz", true},
      {"nothing", "There is no prediction to show", true},
      {"nothing", "lowest useable frequency", false},
      {"luf-muf", "There is no prediction to show", false},
  };
  const std::vector<Sample> samples = Samples();
  for (const auto& c : cases) {
    const auto sample = std::find_if(samples.begin(), samples.end(), [&](const Sample& s) {
      return std::string(s.name) == c.sample;
    });
    ASSERT_NE(sample, samples.end());
    EXPECT_EQ(says(*sample, c.text), c.expected) << c.sample << ": " << c.text;
  }
}

TEST_F(ChartPicture, KeepsBandLinesWhereTheAxisHasThem) {
  const Sample sample{"", LowestBands()};
  const testing::RecordingSurface surface = Record(sample);
  IONCAPModule::PredictionChart chart(sample.table, EvenLayout({80, 100, 864, 450}, 14),
                                      log.diagnostics, log.clock);
  chart.ComputeAxis(sample.engine);
  // The axis labels tell where the picture's plot is.
  double top = 0;
  double bottom = 0;
  for (const DrawingCall& text : surface.Texts()) {
    if (text.text == chart.YLabels().back()) top = text.from.y;
    if (text.text == chart.YLabels().front()) bottom = text.from.y;
  }
  ASSERT_GT(bottom, top);
  const auto lines = surface.Lines();
  for (const float frequency : kBandLineFrequencies) {
    const double y =
        bottom - (frequency - chart.FMin()) / (chart.FMax() - chart.FMin()) * (bottom - top);
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [&](const DrawingCall& line) {
      return line.from.y == line.to.y && std::abs(line.from.y - y) <= 1.01 &&
             line.to.x - line.from.x > 500;
    })) << frequency;
  }
}

TEST_F(ChartPicture, IsTheApprovedOne) {
  const std::vector<Sample> samples = Samples();
  // Pictures for the eye: set the variable to a folder that is to receive them.
  if (const char* folder = std::getenv("SKYHOP_PICTURES")) {
    for (const Sample& sample : samples) {
      WriteFile(PathFromText(folder) / (std::string(sample.name) + ".svg"), Svg(sample));
    }
  }
  EXPECT_EQ(Svg(samples[0]), testing::TestData("chart/new-york-london.svg"));
  EXPECT_TRUE(log.errors.empty());
}

}  // namespace
}  // namespace skyhop
