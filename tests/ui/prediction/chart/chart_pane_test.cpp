#include "ui/prediction/chart/chart_pane.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/diagnostics_fixture.h"
#include "support/recording_surface.h"
#include "support/sample_results.h"
#include "ui/prediction/chart/chart_pointer.h"
#include "ui/prediction/chart/color_keys.h"

namespace skyhop {
namespace {

using testing::ConstantResult;
using testing::DrawingCall;
using testing::RecordingSurface;

class Host : public ChartHost {
 public:
  void ChartChanged() override { ++changes; }
  void OverlayChanged(const Rectangle& area) override { overlays.push_back(area); }
  void ShowReadout(const std::string& text) override { readout = text; }

  int changes = 0;
  std::vector<Rectangle> overlays;
  std::string readout;
};

/// A pane of 1000 x 600 pixels at 13:05 UTC.
class Pane : public ::testing::Test {
 protected:
  Pane() {
    pane.Resize(1000, 600, 12);
    pane.SetHost(&host);
  }
  ~Pane() override { pane.SetHost(nullptr); }
  Pane(const Pane&) = delete;
  Pane& operator=(const Pane&) = delete;

  void Display(const ResultsTable& result, EngineChoice engine = EngineChoice::kVoaCap) {
    table = result;
    pane.DisplayTable(engine);
  }
  [[nodiscard]] Point At(double hours, double megahertz) const {
    const FrequencyAxis& axis = pane.Model().axis;
    const double part = (megahertz - axis.f_min) / (double{axis.f_max} - axis.f_min);
    return {Plot().left + Plot().width * hours / 24, Plot().Bottom() - Plot().height * part};
  }
  [[nodiscard]] const Rectangle& Plot() const { return pane.Layout().ionprop; }
  [[nodiscard]] const Rectangle& XmitSun() const { return pane.Layout().xmit_sun; }
  [[nodiscard]] const Rectangle& RcvSun() const { return pane.Layout().rcv_sun; }
  [[nodiscard]] std::string Readout(Point at) const {
    return ReadoutAt(pane.Model(), pane.Layout(), at);
  }
  [[nodiscard]] std::string Readout() const { return ReadoutAtTimeIndex(pane.Model()); }
  [[nodiscard]] std::string ToolTip(Point at) const {
    return ToolTipAt(pane.Model(), pane.Layout(), at);
  }
  [[nodiscard]] std::vector<std::string> PaintedTexts() {
    RecordingSurface surface;
    pane.Paint(surface);
    std::vector<std::string> texts;
    for (const DrawingCall& call : surface.Texts()) texts.push_back(call.text);
    return texts;
  }
  [[nodiscard]] bool Paints(const std::string& text) {
    const auto texts = PaintedTexts();
    return std::find(texts.begin(), texts.end(), text) != texts.end();
  }

  testing::LoggedDiagnostics log;
  Host host;
  ResultsTable table;
  ChartPane pane{table, log.diagnostics, log.clock};
};

TEST_F(Pane, KeepsEverythingWithinItsSize) {
  const struct {
    double width, height, text_size;
  } sizes[] = {{1000, 600, 12}, {840, 330, 12}, {3600, 1900, 12}, {1680, 660, 24}, {600, 420, 12}};
  for (const auto& size : sizes) {
    SCOPED_TRACE(std::to_string(size.width) + " x " + std::to_string(size.height));
    pane.Resize(size.width, size.height, size.text_size);
    Display(testing::NewYorkLondon());
    RecordingSurface surface;
    pane.Paint(surface);
    for (const DrawingCall& call : surface.calls) {
      if (call.kind == DrawingCall::Kind::kRectangle) {
        EXPECT_LE(call.area.Right(), size.width);
        EXPECT_LE(call.area.Bottom(), size.height);
      } else if (call.kind == DrawingCall::Kind::kLine) {
        EXPECT_LE(std::max(call.from.x, call.to.x), size.width);
        EXPECT_LE(std::max(call.from.y, call.to.y), size.height);
        EXPECT_GE(std::min(call.from.y, call.to.y), 0);
      }
    }
    EXPECT_GE(Plot().height, size.height / 4);
  }
}

TEST_F(Pane, HoursAndDivisionsAreWholePixels) {
  for (const double width : {700.0, 911.0, 1237.0}) {
    pane.Resize(width, 517, 12);
    EXPECT_EQ(static_cast<int>(Plot().width) % 24, 0);
    EXPECT_EQ(static_cast<int>(Plot().height) % 5, 0);
    EXPECT_EQ(XmitSun().left, Plot().left);
    EXPECT_EQ(RcvSun().width, Plot().width);
  }
}

TEST_F(Pane, ShowsTheHintUntilThereIsAResult) {
  pane.SetEmptyText("Enter both stations,\nthen press Predict.");
  EXPECT_TRUE(Paints("Enter both stations,"));
  EXPECT_TRUE(Paints("then press Predict."));
  EXPECT_EQ(Readout(), "");
  Display(ConstantResult(3, 10, 14, 18));
  EXPECT_FALSE(Paints("then press Predict."));
}

TEST_F(Pane, KeepsItsResultWhileTheParserFillsTheTable) {
  Display(ConstantResult(3, 10, 14, 18));
  const std::string readout = Readout(At(12, 12));
  RecordingSurface before;
  pane.Paint(before);
  table.frequencies[rows::kMuf50].fill(29);
  EXPECT_EQ(Readout(At(12, 12)), readout);
  RecordingSurface after;
  pane.Paint(after);
  ASSERT_EQ(before.calls.size(), after.calls.size());
  for (std::size_t i = 0; i < before.calls.size(); ++i) {
    EXPECT_EQ(before.calls[i].from, after.calls[i].from) << "call " << i;
  }
}

TEST_F(Pane, MarksAnEarlierPrediction) {
  Display(ConstantResult(3, 10, 14, 18));
  EXPECT_FALSE(Paints("Previous prediction"));
  pane.SetOld(true);
  EXPECT_TRUE(Paints("Previous prediction"));
  pane.SetOld(false);
  EXPECT_FALSE(Paints("Previous prediction"));
}

TEST_F(Pane, PaintsThePartsOfTheCheckedBoxes) {
  Display(ConstantResult(3, 10, 14, 18));
  const auto lines_in = [&](Color color) {
    RecordingSurface surface;
    pane.Paint(surface);
    const auto lines = surface.Lines();
    return std::count_if(lines.begin(), lines.end(), [&](const DrawingCall& call) {
      return call.pen.color == color && call.from.x < Plot().Right() &&
             call.from.y < Plot().Bottom();
    });
  };
  constexpr Color green{0, 255, 0};
  EXPECT_EQ(lines_in(green), 24);
  EXPECT_GT(lines_in(colors::kOpenBand), 0);
  pane.SetPlotEnable(false);
  EXPECT_EQ(lines_in(green), 0);
  pane.SetOpenBandEnable(false);
  EXPECT_EQ(lines_in(colors::kOpenBand), 0);
  EXPECT_TRUE(Paints(std::string(kCurveKeyCaption)));
  EXPECT_TRUE(Paints(std::string(kSolarKeyCaption)));
  const double height = Plot().height;
  pane.ShowColorKeys(false);
  EXPECT_FALSE(Paints(std::string(kCurveKeyCaption)));
  EXPECT_GT(Plot().height, height);
}

TEST_F(Pane, ShowsTheValuesAtThePointer) {
  ResultsTable result = ConstantResult(3, 10, 14, 18);
  result.frequencies[rows::kMuf50][6] = 16;
  Display(result);
  // The median rises from 14 to 16 MHz between 5 and 6 hours.
  EXPECT_EQ(Readout(At(5.5, 14.1)),
            "05:30 UTC   14.1 MHz   20 m   LUF 3.0   MUF 90% 10.0   50% 15.0   10% 18.0 MHz");
  EXPECT_EQ(Readout(At(12, 12)),
            "12:00 UTC   12.0 MHz   LUF 3.0   MUF 90% 10.0   50% 14.0   10% 18.0 MHz");
  EXPECT_EQ(Readout({2, 2}), "");
  pane.Move(At(12, 12));
  EXPECT_EQ(host.readout.substr(0, 9), "12:00 UTC");
  pane.Leave();
  EXPECT_EQ(host.readout, Readout());
}

TEST_F(Pane, ShowsOpenBandsAtTheTimeIndex) {
  Display(ConstantResult(3, 8, 12, 15));
  EXPECT_EQ(Readout(),
            "13:05 UTC   LUF 3.0   MUF 90% 8.0   50% 12.0   10% 15.0 MHz   open: 80 m, 60 m, 40 m, "
            "30 m, 20 m");
  Display(ConstantResult(9, 8, 8.5F, 9));
  EXPECT_TRUE(Readout().ends_with("open: no band"));
}

TEST_F(Pane, NamesHoursBelowTheRequiredReliability) {
  ResultsTable result = testing::NewYorkLondon();
  result.reached.at(13) = false;
  Display(result);
  const auto readout = [&](double time) {
    const Rectangle& plot = Plot();
    return Readout({plot.left + plot.width * time / 24, plot.top + plot.height / 2});
  };
  EXPECT_NE(readout(13.25).find("required reliability not reached"), std::string::npos);
  EXPECT_NE(readout(13.25).find("LUF \u2013"), std::string::npos) << readout(13.25);
  EXPECT_EQ(readout(11.5).find("not reached"), std::string::npos);
  EXPECT_EQ(ToolTip(At(13.5, 20)), "");
  EXPECT_EQ(ToolTip(At(12.75, 20)), "required reliability not reached");
  while (pane.TimeIndex() < 12.5) pane.StepTimeIndex(1);
  EXPECT_NE(Readout().find("required reliability not reached"), std::string::npos);
  EXPECT_EQ(Readout().find("open:"), std::string::npos);
}

TEST_F(Pane, OmitsCurvesWithoutValuesAndShowsADashForAMissingHour) {
  ResultsTable result = testing::NewYorkLondonReliability();
  result.frequencies[rows::kMuf50][14] = 0;
  Display(result, EngineChoice::kVoaCapSnr);
  // A reliability holds for its whole hour: at 13:40, 30 m still has the 39 % of 13:00.
  log.clock.now += std::chrono::minutes(35);
  pane.UpdateVerticalTimeBar();
  EXPECT_EQ(Readout(),
            "13:40 UTC   MUF 90% 22.7   50% \u2013 MHz   open: 30 m, 20 m, 17 m, 15 m, 12 m, 10 m");
  pane.StepTimeIndex(24);
  EXPECT_EQ(Readout().substr(0, 5), "24:00");
  result.frequencies[rows::kMuf90].fill(0);
  Display(result, EngineChoice::kVoaCapSnr);
  EXPECT_NE(Readout().find("UTC   MUF 50% "), std::string::npos);
}

TEST_F(Pane, DragsTheTimeIndexAndRepaintsOnlyItsSurroundings) {
  Display(ConstantResult(3, 10, 14, 18));
  int moved_by_user = 0;
  pane.SetTimeIndexListener([&] { ++moved_by_user; });
  const Point grab = At(13 + 5.0 / 60, 12);
  ASSERT_TRUE(OnTimeLine(pane.Model(), pane.Layout(), grab));
  host.changes = 0;
  pane.Press(grab);
  pane.Move({grab.x + 60, grab.y});
  EXPECT_NEAR(pane.TimeIndex(), 13.08 + 60 * 24 / Plot().width, 0.05);
  EXPECT_EQ(moved_by_user, 1);
  EXPECT_EQ(host.changes, 0);
  ASSERT_EQ(host.overlays.size(), 1U);
  EXPECT_LT(host.overlays[0].width, 160);
  EXPECT_LE(host.overlays[0].left, grab.x - 5);
  EXPECT_GE(host.overlays[0].Right(), grab.x + 65);

  // During a drag the clock does not move the index; after it the pointer does not.
  const double dragged = pane.TimeIndex();
  pane.UpdateVerticalTimeBar();
  EXPECT_EQ(pane.TimeIndex(), dragged);
  pane.Release();
  pane.Move({grab.x + 200, grab.y});
  EXPECT_EQ(pane.TimeIndex(), dragged);
  pane.UpdateVerticalTimeBar();
  EXPECT_NEAR(pane.TimeIndex(), 13 + 5.0 / 60, 0.01);
}

TEST_F(Pane, IgnoresADragBeyondTheEndsOfTheDay) {
  Display(ConstantResult(3, 10, 14, 18));
  const Point grab = At(13 + 5.0 / 60, 12);
  pane.Press(grab);
  pane.Move({Plot().left - 50, grab.y});
  EXPECT_NEAR(pane.TimeIndex(), 13 + 5.0 / 60, 0.01);
  pane.Move({Plot().Right() + 50, grab.y});
  EXPECT_NEAR(pane.TimeIndex(), 13 + 5.0 / 60, 0.01);
  pane.Move({Plot().left + 4, grab.y});
  EXPECT_LT(pane.TimeIndex(), 0.5);
}

TEST_F(Pane, PutsTheTimeIndexAtTheMinute) {
  EXPECT_DOUBLE_EQ(pane.TimeIndex(), 13 + 5 / 60.0);
  log.clock.now += std::chrono::hours{10} + std::chrono::minutes{54};
  pane.UpdateVerticalTimeBar();
  EXPECT_DOUBLE_EQ(pane.TimeIndex(), 23 + 59 / 60.0);
  for (const double width : {1000.0, 1500.0}) {
    pane.Resize(width, 600, 12);
    EXPECT_DOUBLE_EQ(TimeLineX(pane.Model(), pane.Layout()),
                     Plot().left + Plot().width / 24 * (23 + 59 / 60.0));
  }
}

TEST_F(Pane, StepsTheTimeIndexByHours) {
  int moved_by_user = 0;
  pane.SetTimeIndexListener([&] { ++moved_by_user; });
  pane.StepTimeIndex(-1);
  EXPECT_NEAR(pane.TimeIndex(), 12 + 5.0 / 60, 0.01);
  pane.StepTimeIndex(24);
  EXPECT_EQ(pane.TimeIndex(), 24);
  pane.StepTimeIndex(-24);
  EXPECT_EQ(pane.TimeIndex(), 0);
  EXPECT_EQ(moved_by_user, 3);
}

TEST_F(Pane, ChoosesTheBandNearAClick) {
  std::vector<int> chosen;
  pane.SetBandListener([&](std::int16_t band) { chosen.push_back(band); });
  pane.Press({500, 300});
  EXPECT_TRUE(chosen.empty());  // without a result
  Display(ConstantResult(3, 10, 14, 24));
  pane.Press(At(3, 14.1));
  pane.Press(At(3, 12));
  pane.Press({Plot().Right() + 20, At(3, 7.1).y});  // the band's label
  EXPECT_EQ(chosen, (std::vector<int>{5, -1, 3}));
}

TEST_F(Pane, ShowsTheSunAboveTheHours) {
  SolarBars bars;
  bars.xmit_sun.known = true;
  bars.xmit_sun.states.fill(SunState::kNight);
  bars.xmit_sun.states[12] = SunState::kDay;
  bars.xmit_sun.states[11] = SunState::kTwilight;
  bars.xmit_sun.tool_tip = "sunrise 11:42, sunset 12:38 UTC";
  pane.ShowColorKeys(false);
  pane.SetSolarBars(bars);
  RecordingSurface surface;
  pane.Paint(surface);
  const auto color_at = [&](double hour, const Rectangle& row) {
    const double x = row.left + row.width * hour / 24;
    Color color = colors::kWhite;
    for (const DrawingCall& call : surface.Only(DrawingCall::Kind::kRectangle)) {
      if (call.area.top == row.top && call.area.left <= x && x < call.area.Right()) {
        color = call.pen.color;
      }
    }
    return color;
  };
  EXPECT_EQ(color_at(12.5, XmitSun()), (Color{255, 255, 0}));
  EXPECT_EQ(color_at(11.5, XmitSun()), (Color{128, 128, 128}));
  EXPECT_EQ(color_at(10.5, XmitSun()), colors::kBlack);
  EXPECT_EQ(color_at(10.5, RcvSun()), colors::kWhite);  // a station without coordinates
  const Point on_row{XmitSun().left + 3, XmitSun().top + 2};
  EXPECT_EQ(ToolTip(on_row), "Your Station: sunrise 11:42, sunset 12:38 UTC");
  EXPECT_EQ(ToolTip({TimeLineX(pane.Model(), pane.Layout()), Plot().top + 5}),
            "Vertical Time Index (drag to desired time)");
}

}  // namespace
}  // namespace skyhop
