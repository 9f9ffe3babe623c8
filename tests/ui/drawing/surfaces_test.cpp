#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/recording_surface.h"
#include "ui/drawing/surface_views.h"
#include "ui/drawing/svg_surface.h"

namespace skyhop {
namespace {

constexpr Pen kRed{{255, 0, 0}, 1};
constexpr Pen kGreen{{0, 255, 0}, 2};

TEST(SvgSurface, WritesEachKindOfDrawing) {
  SvgSurface surface(100, 50.5, "a < b");
  surface.Line({0, 0}, {9, 9}, kRed);  // removed by the clearing
  surface.Clear(colors::kWhite);
  surface.Line({0, 10}, {20, 10}, {{255, 0, 255}, 1, LineStyle::kDotted});
  surface.Line({5, 0}, {5, 30}, kGreen);
  surface.FillRectangle({1, 2, 3, 4}, {0, 16, 255});
  surface.Text({10, 20}, "two  blanks & \"more\"",
               {.size = 10,
                .horizontal = HorizontalAlign::kRight,
                .vertical = VerticalAlign::kBaseline,
                .weight = FontWeight::kBold});
  surface.Line({1.0 / 3, -1e-9}, {2, 1e300}, kRed);
  EXPECT_EQ(surface.Document(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"100\" "
            "height=\"50.5\" viewBox=\"0 0 100 50.5\">\n"
            "<title>a &lt; b</title>\n"
            "<g xml:space=\"preserve\" stroke-linejoin=\"round\" font-family=\"'Segoe UI', "
            "'Helvetica Neue', Arial, 'DejaVu Sans', sans-serif\">\n"
            "<rect x=\"0\" y=\"0\" width=\"100\" height=\"50.5\" fill=\"#ffffff\"/>\n"
            "<line x1=\"0\" y1=\"10.5\" x2=\"20\" y2=\"10.5\" stroke=\"#ff00ff\" "
            "stroke-dasharray=\"2 3\"/>\n"
            "<line x1=\"5\" y1=\"0\" x2=\"5\" y2=\"30\" stroke=\"#00ff00\" stroke-width=\"2\"/>\n"
            "<rect x=\"1\" y=\"2\" width=\"3\" height=\"4\" fill=\"#0010ff\"/>\n"
            "<text x=\"10\" y=\"20\" font-size=\"10\" font-weight=\"bold\" text-anchor=\"end\" "
            "fill=\"#000000\">two  blanks &amp; &quot;more&quot;</text>\n"
            "<line x1=\"0.33\" y1=\"0\" x2=\"2\" y2=\"1000000000\" stroke=\"#ff0000\"/>\n"
            "</g>\n</svg>\n");
}

TEST(SvgSurface, JoinsTheSegmentsOfEachCurve) {
  SvgSurface surface(10, 10);
  for (int i = 0; i < 3; ++i) {
    surface.Line({i * 1.0, i * 2.0}, {i + 1.0, i * 2 + 2.0}, kRed);
    surface.Line({i * 1.0, 4}, {i + 1.0, 4}, kGreen);
  }
  surface.Line({9, 4}, {10, 4}, kGreen);
  const std::string document = surface.Document();
  EXPECT_NE(
      document.find("<polyline fill=\"none\" points=\"0,0 1,2 2,4 3,6\" stroke=\"#ff0000\"/>\n"
                    "<line x1=\"0\" y1=\"4\" x2=\"3\" y2=\"4\" stroke=\"#00ff00\" "
                    "stroke-width=\"2\"/>\n"
                    "<line x1=\"9\""),
      std::string::npos)
      << document;
}

TEST(SvgSurface, YieldsValidXmlForAnyBytes) {
  const struct {
    std::string text, expected;
  } cases[] = {{"<&>\"'", "&lt;&amp;&gt;&quot;'"},
               {"Malmö → Zürich 🛰", "Malmö → Zürich 🛰"},
               {std::string("a\0b\x1b\t", 5),
                "a\uFFFD"
                "b\uFFFD\t"},
               {"Malm\xF6", "Malm\uFFFD"},
               {"\xC3", "\uFFFD"},
               {"\xC0\xAF", "\uFFFD\uFFFD"},
               {"\xED\xA0\x80", "\uFFFD"},
               {"\xEF\xBF\xBF", "\uFFFD"},
               {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"}};
  for (const auto& c : cases) EXPECT_EQ(XmlText(c.text), c.expected);
}

TEST(PartSurface, CutsLinesAtItsEdges) {
  const struct {
    Point from, to;
    std::vector<Point> expected;
  } cases[] = {{{1, 2}, {30, 10}, {{11, 22}, {40, 30}}},
               {{-10, 5}, {10, 15}, {{10, 30}, {20, 35}}},
               {{0, -10}, {40, 30}, {{20, 20}, {40, 40}}},
               {{-5, 20}, {100, 20}, {{10, 40}, {50, 40}}},
               {{0, 21}, {40, 21}, {}},
               {{10, 30}, {20, 500}, {}},
               {{-1, -1}, {-1, 30}, {}}};
  for (const auto& c : cases) {
    testing::RecordingSurface target;
    PartSurface part(target, {10, 20, 40, 20});
    part.Line(c.from, c.to, kRed);
    std::vector<Point> drawn;
    for (const auto& line : target.Lines()) drawn = {line.from, line.to};
    EXPECT_EQ(drawn, c.expected) << c.from.x << "," << c.from.y;
  }
}

TEST(ScaledSurface, EnlargesEverything) {
  testing::RecordingSurface target;
  ScaledSurface scaled(target, 2);
  scaled.Line({1, 2}, {3, 4}, {{}, 1.5, LineStyle::kDotted});
  scaled.FillRectangle({1, 2, 3, 4}, {});
  scaled.Text({5, 6}, "t", {.size = 12});
  ASSERT_EQ(target.calls.size(), 3U);
  EXPECT_EQ(target.calls[0].to, (Point{6, 8}));
  EXPECT_EQ(target.calls[0].pen, (Pen{{}, 3, LineStyle::kDotted}));
  EXPECT_EQ(target.calls[1].area, (Rectangle{2, 4, 6, 8}));
  EXPECT_EQ(target.calls[2].from, (Point{10, 12}));
  EXPECT_EQ(target.calls[2].style.size, 24);
}

}  // namespace
}  // namespace skyhop
