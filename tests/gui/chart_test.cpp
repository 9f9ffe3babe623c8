// Makes a prediction like a user and reads it back from the screen.

#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/uiaction.h>

#include <cmath>

#include "gui_fixture.h"
#include "screen.h"
#include "ui/prediction/chart/color_keys.h"

namespace skyhop::testing {
namespace {

constexpr Color kLuf{0, 0, 0};
constexpr Color kMuf90{0, 0, 255};
constexpr Color kMuf50{0, 255, 0};
constexpr Color kMuf10{255, 0, 0};
/// Thin slanted lines are smoothed: only some of their pixels are close to the full colour.
constexpr int kSmoothed = 60;

class ChartWindow : public GuiTest {
 protected:
  void StartWithChart() {
    Start();
    EnterStations();
    Predict();
    // Move the pointer away from the chart, whose texts would follow it.
    wxUIActionSimulator().MouseMove(Frame().ClientToScreen(wxPoint(2, 2)));
  }

  [[nodiscard]] int Seen(Color color, const Rectangle& area, int tolerance = 0) {
    return CountPixels(ScreenPart(Frame().Canvas(), area), color, tolerance);
  }
  [[nodiscard]] int SeenInPlot(Color color, int tolerance = 0) {
    return Seen(color, Program().Chart().Layout().ionprop, tolerance);
  }
  [[nodiscard]] bool ComesUp(Color color, int tolerance = 0) {
    return PumpUntil([&] { return SeenInPlot(color, tolerance) > 0; });
  }
  [[nodiscard]] bool GoesAway(Color color, int tolerance = 0) {
    return PumpUntil([&] { return SeenInPlot(color, tolerance) == 0; });
  }
  /// Counts a colour in all areas below the solar bars and beside them.
  [[nodiscard]] int SeenInKeys(Color color) {
    const wxSize size = Frame().Canvas().GetClientSize();
    const Rectangle& bars = Program().Chart().Layout().rcv_sun;
    const double top = bars.Bottom() + 4;
    int seen = 0;
    if (top + 2 < size.y) seen = Seen(color, {0, top, double(size.x), size.y - top - 2});
    const double left = bars.Right() + 60;
    if (left < size.x) seen += Seen(color, {left, 2, size.x - left - 2, top - 4});
    return seen;
  }
  [[nodiscard]] wxPoint OnPlot(double hours, double part_of_height) {
    const Rectangle& plot = Program().Chart().Layout().ionprop;
    return {static_cast<int>(std::lround(plot.left + plot.width * hours / 24)),
            static_cast<int>(std::lround(plot.top + plot.height * part_of_height))};
  }
  [[nodiscard]] double TimeIndex() { return Program().Chart().TimeIndex(); }
  [[nodiscard]] wxCheckBox& Box(const char* label) {
    return *FindControl<wxCheckBox>(Frame(), label);
  }
};

TEST_F(ChartWindow, DrawsATypedPrediction) {
  StartWithChart();
  EXPECT_TRUE(dialogs_.messages.empty());
  EXPECT_EQ(Text(TextField::kLocalLat), "40 30' 0\" N");
  EXPECT_EQ(Text(TextField::kDXLon), "1 0' 0\" W");
  EXPECT_EQ(Notice(), "IONCAP is not installed. The built-in estimate made this prediction.");
  EXPECT_TRUE(Shows("Built-in estimate engine"));
  EXPECT_TRUE(Shows("sunspot number"));
  EXPECT_NE(Status().find(" UTC   LUF "), std::string::npos) << Status();

  EXPECT_TRUE(ComesUp(kMuf10, kSmoothed));
  EXPECT_TRUE(ComesUp(kMuf50, kSmoothed));
  EXPECT_TRUE(ComesUp(kMuf90, kSmoothed));
  EXPECT_TRUE(ComesUp(kLuf, kSmoothed));
  EXPECT_TRUE(ComesUp(colors::kOpenBand));

  Tabs().SetSelection(4);
  EXPECT_TRUE(PumpUntil([&] { return Shows("IONCAP"); }));
  EXPECT_TRUE(Shows("miles") || Shows("km"));
}

TEST_F(ChartWindow, ShowsAndHidesPartsByTheirBoxes) {
  StartWithChart();
  ASSERT_TRUE(ComesUp(kMuf10, kSmoothed));
  ASSERT_TRUE(ComesUp(colors::kOpenBand));

  Click(Box("Plot Critical Frequencies"));
  for (const Color curve : {kMuf10, kMuf50, kMuf90, kLuf}) {
    EXPECT_TRUE(GoesAway(curve, kSmoothed))
        << int{curve.red} << "," << int{curve.green} << "," << int{curve.blue};
  }
  EXPECT_GT(SeenInPlot(colors::kOpenBand), 0);
  Click(Box("Show Open Bands"));
  EXPECT_TRUE(GoesAway(colors::kOpenBand));
  Click(Box("Plot Critical Frequencies"));
  EXPECT_TRUE(ComesUp(kMuf10, kSmoothed));

  for (const ColorKey& key : kCurveKeys) {
    EXPECT_TRUE(PumpUntil([&] { return SeenInKeys(key.color) > 30; })) << key.text;
  }
  EXPECT_GT(SeenInKeys(kSolarKeys[0].color), 30);
  Click(Box("Show Color Keys"));
  for (const ColorKey& key : kCurveKeys) {
    EXPECT_TRUE(PumpUntil([&] { return SeenInKeys(key.color) == 0; })) << key.text;
  }
}

TEST_F(ChartWindow, ShowsTheValuesUnderThePointer) {
  StartWithChart();
  ChartCanvas& canvas = Frame().Canvas();
  const std::string at_rest = Status();
  wxUIActionSimulator().MouseMove(canvas.ClientToScreen(OnPlot(6, 0.5)));
  EXPECT_TRUE(PumpUntil([&] { return Status().rfind("06:0", 0) == 0; })) << Status();
  EXPECT_NE(Status().find(" MHz   "), std::string::npos) << Status();
  EXPECT_NE(Status().find("   LUF "), std::string::npos) << Status();
  wxUIActionSimulator().MouseMove(canvas.ClientToScreen(OnPlot(18, 0.1)));
  EXPECT_TRUE(PumpUntil([&] { return Status().rfind("18:0", 0) == 0; })) << Status();
  wxUIActionSimulator().MouseMove(Frame().ClientToScreen(wxPoint(2, 2)));
  EXPECT_TRUE(PumpUntil([&] { return Status().find("open:") != std::string::npos; }))
      << "leaving the chart puts the time index back: " << Status() << ", at first " << at_rest;
}

TEST_F(ChartWindow, MovesTheTimeIndexByKeysAndPointer) {
  StartWithChart();
  ChartCanvas& canvas = Frame().Canvas();
  // Click away from the time index, whose place depends on the clock.
  ClickAt(canvas, OnPlot(TimeIndex() > 12 ? 3.5 : 20.5, 0.5));
  ASSERT_TRUE(PumpUntil([&] { return canvas.HasFocus(); }));
  const auto at = [&](double hours) {
    return PumpUntil([&] { return std::abs(TimeIndex() - hours) < 0.05; });
  };
  Press(WXK_HOME);
  EXPECT_TRUE(at(0));
  EXPECT_FALSE(Box("Show Current Time").GetValue()) << "the clock must not move it back";
  for (int i = 0; i < 3; ++i) Press(WXK_RIGHT);
  EXPECT_TRUE(at(3));
  Press(WXK_LEFT);
  EXPECT_TRUE(at(2));
  EXPECT_TRUE(PumpUntil([&] { return Status().rfind("02:00", 0) == 0; })) << Status();

  wxUIActionSimulator pointer;
  pointer.MouseMove(canvas.ClientToScreen(OnPlot(2, 0.3)));
  Pump();
  pointer.MouseDown();
  ASSERT_TRUE(PumpUntil([&] { return Program().Chart().Dragging(); }));
  for (const double hours : {4.0, 7.0, 10.0}) {
    pointer.MouseMove(canvas.ClientToScreen(OnPlot(hours, 0.3)));
    EXPECT_TRUE(PumpUntil([&] { return std::abs(TimeIndex() - hours) < 0.5; })) << TimeIndex();
  }
  pointer.MouseUp();
  ASSERT_TRUE(PumpUntil([&] { return !Program().Chart().Dragging(); }));
  const double dropped = TimeIndex();
  pointer.MouseMove(canvas.ClientToScreen(OnPlot(15, 0.3)));
  ASSERT_TRUE(PumpUntil([&] { return Status().rfind("15:0", 0) == 0; })) << Status();
  EXPECT_EQ(TimeIndex(), dropped) << "it was let go";
}

TEST_F(ChartWindow, StaysReadableWhenSmallest) {
  StartWithChart();
  Frame().SetClientSize(Frame().GetMinClientSize());
  ASSERT_TRUE(
      PumpUntil([&] { return Frame().GetClientSize().y <= Frame().GetMinClientSize().y + 2; }));
  EXPECT_TRUE(ComesUp(kMuf10, kSmoothed));
  EXPECT_GE(Program().Chart().Layout().ionprop.height, 60);
}

TEST_F(ChartWindow, CopiesCurvesAndKeys) {
  StartWithChart();
  Press('C', wxMOD_CONTROL | wxMOD_SHIFT);
  wxBitmapDataObject copied;
  ASSERT_TRUE(PumpUntil([&] {
    const wxClipboardLocker clipboard;
    return wxTheClipboard->GetData(copied);
  }));
  const wxImage picture = copied.GetBitmap().ConvertToImage();
  ASSERT_TRUE(picture.IsOk());
  for (const ColorKey& key : kCurveKeys) EXPECT_GT(CountPixels(picture, key.color), 30) << key.text;
  EXPECT_GT(CountPixels(picture, kMuf50, kSmoothed), 100) << "the curve is not its key's colour";
  EXPECT_GT(CountPixels(picture, colors::kOpenBand), 100);
  EXPECT_TRUE(dialogs_.messages.empty());
}

}  // namespace
}  // namespace skyhop::testing
