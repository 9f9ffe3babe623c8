#include "spaceweather/solar_forecast.h"

#include <gtest/gtest.h>

#include "common/dates.h"
#include "spaceweather/forecast_parser.h"
#include "support/fake_downloads.h"

namespace skyhop::testing {
namespace {

using SolarForecastModule::Forecast;
using SolarForecastModule::ForecastSlot;
using Lines = std::vector<std::string>;

constexpr const char* kDownloaded =
    "SolarForecastModule.DownloadSolarForecast: downloaded solar forecast from "
    "https://host/forecast ";

class SolarForecastTest : public ::testing::Test {
 protected:
  void Today(int year, unsigned month, unsigned day) {
    with_.log.clock.now = std::chrono::sys_days{std::chrono::year{year} / static_cast<int>(month) /
                                                static_cast<int>(day)} +
                          std::chrono::hours(8);
  }
  void Download(const std::string& content) {
    with_.fetcher.content = content;
    with_.messages.shown.clear();
    with_.log.debug.clear();
    with_.host.events.clear();
    forecast_.DownloadSolarForecast();
    EXPECT_EQ(with_.log.errors, Lines());
  }
  [[nodiscard]] const ForecastSlot& Slot(std::size_t slot) const {
    return forecast_.Table().at(slot);
  }
  /// The message of the last download; there is one at most.
  [[nodiscard]] std::string Message() const {
    EXPECT_LE(with_.messages.shown.size(), 1U);
    return with_.messages.shown.empty() ? "" : with_.messages.shown[0].first;
  }
  /// A forecast whose blocks hold the same text.
  static std::string Blocks(const std::string& ap, const std::string& flux) {
    return ":Issued: 2026 Nov 14 2130 UTC\n45-DAY AP FORECAST\n" + ap +
           "45-DAY F10.7 CM FLUX FORECAST\n" + flux + "FORECASTER:";
  }
  /// Dates from day `first` of a month of 31 days on, each with the value.
  static std::string Days(int first, int count, const std::string& value) {
    std::string block;
    for (int index = 0; index < count; ++index) {
      const int day = (first - 1 + index) % 31 + 1;
      block += std::string(day < 10 ? "0" : "") + std::to_string(day) + "Jan27 " + value +
               (index % 5 == 4 || index == count - 1 ? "\n" : " ");
    }
    return block;
  }

  DownloadFixture with_;
  Forecast forecast_{with_.procedure, with_.messages, with_.log.diagnostics, with_.log.clock};
};

TEST_F(SolarForecastTest, FillsTheTableFromToday) {
  Download(TestData("spaceweather/forecast.txt"));
  EXPECT_EQ(Message(), "");
  EXPECT_EQ(forecast_.Caption(),
            "Forecast: Solar and Geomagnetic Parameters: 2026 Nov 14 2130 UTC");
  // The first pair of the file is 14 November, the day before.
  EXPECT_EQ(Slot(31), (ForecastSlot{true, 15, "15Nov26", {0, 148, 148, 148, 5, 5, 5, 1, 1, 1}}));
  EXPECT_EQ(Slot(29), (ForecastSlot{true, 17, "17Nov26", {0, 151, 151, 151, 12, 12, 12, 2, 2, 2}}));
  EXPECT_EQ(Slot(15), (ForecastSlot{true, 1, "01Dec26", {0, 98, 98, 98, 48, 48, 48, 6, 6, 6}}));
  EXPECT_EQ(Slot(1), (ForecastSlot{true, 15, "15Dec26", {0, 131, 131, 131, 9, 9, 9, 1, 1, 1}}));
  EXPECT_EQ(Slot(0), ForecastSlot{});
  EXPECT_EQ(forecast_.GetLastForecast(), with_.log.clock.now);
  EXPECT_EQ(with_.host.events,
            (Lines{"disable", "caption downloading forecast", "enable", "caption "}));
  EXPECT_EQ(with_.Debug(),
            (Lines{"SolarForecastModule.DownloadSolarForecast, theurl = https://host/forecast",
                   "SolarForecastModule.LoadSolarHistory: loading data from SolarHistory file",
                   "SolarForecastModule.DownloadSolarForecast complete"}));
}

TEST_F(SolarForecastTest, RoundsTheEstimatedKHalfToEven) {
  Today(2027, 1, 1);
  for (const auto& [ap, k] : std::vector<std::pair<std::string, int>>{
           {"4", 0}, {"5", 1}, {"12", 2}, {"20", 2}, {"28", 4}, {"400", 50}}) {
    Download(Blocks(Days(1, 45, ap), Days(1, 45, "70")));
    EXPECT_EQ(Slot(31).columns[9], k) << ap;
  }
}

TEST_F(SolarForecastTest, TreatsTextThatIsNotANumberAsMissing) {
  Today(2027, 1, 1);
  for (const char* value : {"n/a", "32768", "-40000", ""}) {
    Download(Blocks(Days(1, 45, value), Days(1, 45, value)));
    EXPECT_EQ(Message(), "") << value;
    EXPECT_EQ(Slot(31).columns, (std::array<std::int16_t, 10>{0, -1, -1, -1, -1, -1, -1, 0, 0, 0}))
        << value;
  }
}

TEST_F(SolarForecastTest, ComparesTheDayOfTheMonthAlone) {
  Today(2027, 1, 31);
  Download(Blocks(Days(1, 45, "5"), Days(1, 45, "70")));
  // Only 15 days are left after the skipped ones.
  EXPECT_EQ(Message(), kDownloaded + std::string("contains unrecognizable AP format 2"));
  EXPECT_EQ(Slot(31).date, "31Jan27");
  Today(2027, 1, 3);
  Download(Blocks(Days(31, 45, "5"), Days(31, 45, "70")));
  EXPECT_EQ(Slot(31).date, "31Jan27");
  EXPECT_EQ(Message(), "");
}

TEST_F(SolarForecastTest, ReportsTheErrorOfAForecast) {
  Today(2027, 1, 1);
  const std::string days = Days(1, 31, "5");
  std::string crlf = Blocks(days, days);
  for (std::size_t at = 0; (at = crlf.find('\n', at)) != std::string::npos; at += 2) {
    crlf.insert(at, "\r");
  }
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"<html>Not today</html>\n", "AP format 1"},
      {crlf, "AP format 1"},
      {"45-DAY AP FORECAST", "AP format 1"},
      {"45-DAY AP FORECAST\n" + days, "SFI format 1"},
      {"45-DAY AP FORECAST\n45-DAY F10.7 CM FLUX FORECAST\n" + days, "forecaster format"},
      {Blocks("", days), "AP format 2"},
      {Blocks(Days(1, 30, "5"), days), "AP format 2"},
      {Blocks(Days(1, 30, "5") + "31Jan27 5", days), "AP format 3"},
      {Blocks(Days(1, 30, "5") + "Jan31 5\n", days), "AP format 4"},
      {Blocks("\n" + days, days), "AP format 4"},
      {Blocks("01Jan27 5  " + days, days), "AP format 4"},
      {Blocks("1 5 " + days, days), "AP format 4"},
      {Blocks(days, Days(1, 30, "5")), "SFI format 2"},
      {Blocks(days, Days(1, 30, "5") + "31Jan27 5"), "SFI format 3"},
      {Blocks(days, Days(1, 30, "5") + "x1Jan27 5\n"), "SFI format 4"},
  };
  for (const auto& [content, problem] : cases) {
    Download(content);
    EXPECT_EQ(Message(), kDownloaded + ("contains unrecognizable " + problem)) << content;
    EXPECT_EQ(with_.messages.shown.at(0).second, "Skyhop Solar forecast");
    EXPECT_EQ(with_.log.debug.back(), "SolarForecastModule.SolarForecastError: " + Message());
    EXPECT_EQ(with_.host.events.back(), "caption ");
    EXPECT_EQ(forecast_.GetLastForecast(), UtcTime{});
    EXPECT_EQ(forecast_.Failure(), Message());
  }
}

TEST_F(SolarForecastTest, KeepsTheSlotsFilledBeforeTheError) {
  Today(2027, 1, 1);
  Download(Blocks(Days(1, 30, "5"), ""));
  EXPECT_TRUE(Slot(31).valid);
  EXPECT_TRUE(Slot(2).valid);
  EXPECT_FALSE(Slot(1).valid);
}

TEST_F(SolarForecastTest, ReadsTheTimeOfIssue) {
  using SolarForecastModule::IssuedText;
  EXPECT_EQ(IssuedText("a\n:Issued: today \nb"), "today ");
  EXPECT_EQ(IssuedText(":Issued: no line feed"), "no line feed");
  EXPECT_EQ(IssuedText(":Issued: \n"), "");
  EXPECT_EQ(IssuedText(":Issued:today\n"), std::nullopt);
  Download("no forecast at all");
  EXPECT_EQ(forecast_.Caption(), "Forecast: Solar and Geomagnetic Parameters");
}

TEST_F(SolarForecastTest, ReportsEveryFailureOfTheDownload) {
  struct Case {
    const char* name;
    std::string url;
    std::int32_t code;
    std::optional<std::string> content;
    std::string message;
    std::string caption;
  };
  const std::string prefix = "SolarForecastModule.DownloadSolarForecast: ";
  const std::vector<Case> cases = {
      {"no address", "  ", 0, "x",
       "No 'Predicted SFI and A-index' URL specified in the Configuration window's 'Prediction "
       "URLs' panel",
       "Skyhop"},
      {"no connection", "u", fetch_codes::kConnectionTimeout, std::nullopt,
       "unable to download solar forecast from u - connection timeout", "Skyhop Solar forecast"},
      {"no file", "u", 0, std::nullopt,
       prefix + "downloading solar forecast from u failed to create a file",
       "Skyhop Solar forecast"},
      {"empty file", "u", 0, "", prefix + "downloaded solar forecast from u is empty",
       "Skyhop Solar forecast"},
  };
  for (const Case& it : cases) {
    Download(TestData("spaceweather/forecast.txt"));
    const UtcTime last = forecast_.GetLastForecast();
    with_.messages.shown.clear();
    with_.host.events.clear();
    std::filesystem::remove(with_.log.folder / "SolarForecast.txt");
    with_.host.urls[DownloadKind::kForecast] = it.url;
    with_.fetcher.code = it.code;
    with_.fetcher.content = it.content;
    forecast_.DownloadSolarForecast();
    EXPECT_EQ(Message(), it.message);
    EXPECT_EQ(with_.messages.shown.at(0).second, it.caption);
    EXPECT_EQ(with_.host.events,
              (Lines{"disable", "caption downloading forecast", "enable", "caption "}))
        << it.name;
    EXPECT_EQ(forecast_.GetLastForecast(), last);
    // Without an address nothing is fetched, so the table keeps its values.
    EXPECT_EQ(Slot(31).valid, it.url == "  ") << it.name;
    with_.fetcher.code = 0;
    with_.host.urls[DownloadKind::kForecast] = "https://host/forecast";
  }
}

TEST_F(SolarForecastTest, RunsOneDownloadAtATime) {
  with_.fetcher.during = [&] { forecast_.DownloadSolarForecast(); };
  Download(TestData("spaceweather/forecast.txt"));
  EXPECT_EQ(with_.fetcher.fetched.size(), 1U);
  EXPECT_EQ(with_.host.events.size(), 4U);
  EXPECT_TRUE(Slot(31).valid);
}

}  // namespace
}  // namespace skyhop::testing
