// Tests the window's commands for solar data with a local server.

#include <wx/uiaction.h>

#include <cstdlib>

#include "common/dates.h"
#include "common/files.h"
#include "common/numbers.h"
#include "gui_fixture.h"
#include "screen.h"
#include "ui/wx/forecast_canvas.h"
#include "ui/wx/wx_text.h"

namespace skyhop::testing {
namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr Color kFlux{200, 105, 0};
constexpr Color kQuiet{58, 150, 92};
constexpr Color kStorm{200, 56, 44};

/// "21Nov26 040 22Nov26 041 ...", beginning today.
std::string Block(const std::function<int(int)>& value) {
  const auto today = std::chrono::floor<days>(std::chrono::system_clock::now());
  std::string block;
  for (int day = 0; day < 45; ++day) {
    std::string date = DateText(sys_days(today + days(day)));
    std::erase(date, '-');
    block += date + " " + PaddedNumber(value(day), 3) + (day % 5 == 4 ? "\n" : " ");
  }
  return block;
}

/// Quiet days and one storm.
std::string Forecast() {
  return ":Product: 45 Day AP Forecast\n:Issued: 2026 Nov 14 2130 UTC\n45-DAY AP FORECAST\n" +
         Block([](int day) { return day == 3 ? 56 : 8; }) + "45-DAY F10.7 CM FLUX FORECAST\n" +
         Block([](int day) { return 120 + day; }) + "FORECASTER:  TEST\n";
}

constexpr const char* kBulletin =
    ":Product: Geophysical Alert Message wwv.txt\n# A comment\n"
    "Solar flux 152 and estimated planetary A-index 11.\n"
    "The estimated planetary K-index at 1200 UTC on 15 November was 3.33.\n";

class SpaceWeatherWindows : public GuiTest {
 protected:
  SpaceWeatherWindows() {
    server_.Serve("/forecast", Reply("200 OK", Forecast()));
    server_.Serve("/wwv", Reply("200 OK", kBulletin));
  }

  [[nodiscard]] static wxFrame& Window(const char* name) {
    return *dynamic_cast<wxFrame*>(wxWindow::FindWindowByName(name));
  }
  /// Compares sizes loosely, because window managers add different frames.
  [[nodiscard]] static bool HasSize(const char* name, int width, int height) {
    const wxSize size = Window(name).GetSize();
    return std::abs(size.x - width) < 30 && std::abs(size.y - height) < 30;
  }
  template <class Kind>
  [[nodiscard]] static Kind& Only(const wxWindow& window) {
    for (wxWindow* child : Descendants(window)) {
      if (auto* const found = dynamic_cast<Kind*>(child)) return *found;
    }
    throw std::logic_error("no such control");
  }
  void Command(Button button) {
    wxButton& control = *Frame().Controls().ButtonOf(button);
    ShowPageOf(control);
    Click(control);
  }
  [[nodiscard]] static int Seen(const wxWindow& canvas, Color color) {
    const wxSize size = canvas.GetClientSize();
    return CountPixels(ScreenPart(canvas, {0, 0, double(size.x), double(size.y)}), color, 4);
  }
  void OpenForecast() {
    Command(Button::kForecastCmd);
    ASSERT_TRUE(PumpUntil([&] {
      return Window("SolarForecast").IsActive() &&
             Window("SolarForecast").GetTitle().Contains("2026 Nov 14");
    }));
  }
  /// The text of a field's tool tip when the pointer rests on the field.
  [[nodiscard]] std::string TipOf(TextField field) {
    ShowPageOf(Field(field));
    wxUIActionSimulator().MouseMove(Frame().ClientToScreen(wxPoint(2, 2)));
    Pump();
    const wxSize size = Field(field).GetClientSize();
    wxUIActionSimulator().MouseMove(Field(field).ClientToScreen(wxPoint(size.x / 2, size.y / 2)));
    PumpUntil([&] { return Field(field).GetToolTipText().Contains("\n"); },
              std::chrono::seconds(5));
    return FromWx(Field(field).GetToolTipText());
  }
};

TEST_F(SpaceWeatherWindows, FetchTheSunspotNumberAtStartAndOnCommand) {
  Start();
  EXPECT_EQ(Text(TextField::kSSN), "118.5");
  ServeSunspotNumber("97");
  Command(Button::kUpdateSSNCmd);
  EXPECT_TRUE(PumpUntil([&] { return Text(TextField::kSSN) == "97"; }));
  EXPECT_TRUE(dialogs_.messages.empty());
  const std::string tip = TipOf(TextField::kSSN);
  EXPECT_NE(tip.find("downloaded just now"), std::string::npos) << tip;
  EXPECT_NE(tip.find(server_.Url("/ssn")), std::string::npos) << tip;

  TypeInto(TextField::kSSN, "50");
  EXPECT_NE(TipOf(TextField::kSSN).find("not the downloaded value"), std::string::npos);
}

TEST_F(SpaceWeatherWindows, ShowCurrentConditionsAndFillFluxAndK) {
  Start();
  Command(Button::kCurrentCmd);
  ASSERT_TRUE(PumpUntil([&] { return Window("CurrentConditions").IsActive(); }));
  EXPECT_TRUE(PumpUntil([&] { return Text(TextField::kFlux) == "152"; }));
  EXPECT_EQ(Text(TextField::kKindex), "3");
  const auto& bulletin = Only<wxTextCtrl>(Window("CurrentConditions"));
  EXPECT_EQ(FromWx(bulletin.GetValue()),
            "Solar flux 152 and estimated planetary A-index 11.\n"
            "The estimated planetary K-index at 1200 UTC on 15 November was 3.33.");
  EXPECT_FALSE(bulletin.IsEditable());
  Window("CurrentConditions").SetSize(120, 90, 560, 330);
  ASSERT_TRUE(PumpUntil([&] { return HasSize("CurrentConditions", 560, 330); }));
  Press('W', wxMOD_CONTROL);
  ASSERT_TRUE(PumpUntil([&] { return !Window("CurrentConditions").IsShown(); }));
  CloseWindow();
  Start();
  Command(Button::kCurrentCmd);
  EXPECT_TRUE(PumpUntil([&] { return HasSize("CurrentConditions", 560, 330); }))
      << Window("CurrentConditions").GetSize().x << "x" << Window("CurrentConditions").GetSize().y;
}

TEST_F(SpaceWeatherWindows, PaintThreeGraphsAndShowTheirDays) {
  Start();
  OpenForecast();
  wxFrame& window = Window("SolarForecast");
  auto& canvas = Only<ForecastCanvas>(window);
  EXPECT_TRUE(PumpUntil([&] { return Seen(canvas, kFlux) > 200 && Seen(canvas, kStorm) > 200; }));
  const int both = Seen(canvas, kQuiet);

  // Each box hides its graph.
  wxCheckBox* const flux = FindControl<wxCheckBox>(window, "Solar Flux");
  ASSERT_TRUE(flux != nullptr && flux->GetValue());
  Click(*flux);
  EXPECT_TRUE(PumpUntil([&] { return Seen(canvas, kFlux) == 0; }));
  EXPECT_GT(Seen(canvas, kQuiet), both) << "the others have its room";
  for (const char* name : {"A index", "K index"}) Click(*FindControl<wxCheckBox>(window, name));
  EXPECT_TRUE(PumpUntil([&] { return Seen(canvas, kQuiet) == 0 && Seen(canvas, kStorm) == 0; }));
  Click(*flux);
  EXPECT_TRUE(PumpUntil([&] { return Seen(canvas, kFlux) > 200; }));

  const auto& line = Only<wxStaticText>(window);
  EXPECT_NE(line.GetLabel().find(ToWx(server_.Url("/forecast"))), wxString::npos);
  canvas.SetFocus();
  ASSERT_TRUE(PumpUntil([&] { return canvas.HasFocus(); }));
  for (int day = 0; day < 4; ++day) Press(WXK_RIGHT);
  EXPECT_TRUE(PumpUntil([&] {
    return line.GetLabel().Contains("solar flux 123, A index 56, estimated K index 7");
  })) << line.GetLabel();
  const wxSize size = canvas.GetClientSize();
  wxUIActionSimulator().MouseMove(canvas.ClientToScreen(wxPoint(size.x * 9 / 10, size.y / 2)));
  EXPECT_TRUE(PumpUntil([&] {
    return line.GetLabel().Contains("A index 8") && line.GetLabel().Contains("solar flux 14");
  })) << line.GetLabel();

  Press(WXK_ESCAPE);
  EXPECT_TRUE(PumpUntil([&] { return !window.IsShown(); }));
}

TEST_F(SpaceWeatherWindows, ReportAMissingNetworkOnceAtStart) {
  WriteFile(SettingsFile(),
            AddressSettings("http://127.0.0.1:" + std::to_string(UnusedPort()) + "/ssn"));
  Start();
  ASSERT_EQ(dialogs_.messages.size(), 1U);
  EXPECT_EQ(dialogs_.messages[0].first, "Skyhop Sunspot Number");
  EXPECT_TRUE(dialogs_.messages[0].second.ends_with(" - cannot connect"))
      << dialogs_.messages[0].second;
  EnterStations();
  Predict();
}

}  // namespace
}  // namespace skyhop::testing
