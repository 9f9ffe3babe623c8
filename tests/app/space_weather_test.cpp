#include <gtest/gtest.h>

#include "app/skyhop/space_weather_parts.h"
#include "common/program.h"
#include "support/fake_downloads.h"
#include "support/fake_space_weather_views.h"
#include "support/fake_view.h"
#include "support/recording_surface.h"

namespace skyhop::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;

class FakeDownloadWindow : public DownloadWindow {
 public:
  void EnableDownloads(bool enable) override { enabled = enable; }
  void ShowDownload(const std::string& text) override { statuses.push_back(text); }
  void PutDownloaded(TextField field, const std::string& text) override { fields[field] = text; }

  bool enabled = false;
  std::vector<std::string> statuses;
  std::map<TextField, std::string> fields;
};

/// A fetcher that forwards to one with another owner.
class PassedOn : public UrlFetcher {
 public:
  explicit PassedOn(UrlFetcher& fetcher) : fetcher_(&fetcher) {}
  std::int32_t RemoveFromCache(const std::string& url) noexcept override {
    return fetcher_->RemoveFromCache(url);
  }
  [[nodiscard]] std::int32_t Fetch(const std::string& url, const std::filesystem::path& file,
                                   const std::stop_token& stop) noexcept override {
    return fetcher_->Fetch(url, file, stop);
  }

 private:
  UrlFetcher* fetcher_;
};

/// The commands and windows of solar data with a fake network and fake views.
class SpaceWeatherTest : public ::testing::Test {
 protected:
  SpaceWeatherTest() {
    configuration_.Load();
    configuration_.SetUrl(Address::kSFIURL, "https://host/forecast");
    configuration_.SetUrl(Address::kSSNURL, "https://host/ssn");
    configuration_.SetUrl(Address::kWWVURL, "https://host/wwv");
    service_.Attach(&window_);
    with_.fetcher.content = TestData("spaceweather/forecast.txt");
  }

  [[nodiscard]] std::size_t Fetches() const { return with_.fetcher.fetched.size(); }
  [[nodiscard]] std::optional<milliseconds> Timer() const {
    return view_.Interval(WindowTimer::kSolarForecastTimer);
  }
  void Tick(minutes later) {
    with_.log.clock.now += later;
    service_.SolarForecastTimer_Tick();
  }
  [[nodiscard]] std::string StoredLeft(const std::string& window) {
    return with_.store.Read(kProductName, "Windows", window + "Left", "none");
  }

  DownloadFixture with_;
  FakeView view_;
  FakeForecastView forecast_view_;
  FakeConditionsView conditions_view_;
  FakeDownloadWindow window_;
  Configuration configuration_{with_.settings, with_.log.diagnostics};
  FakePause pause_;
  SpaceWeatherParts parts_{
      {view_, forecast_view_, conditions_view_, configuration_, with_.messages, with_.settings,
       with_.log.diagnostics, with_.log.clock, pause_, with_.log.folder.Path()},
      std::make_unique<PassedOn>(with_.fetcher)};
  SpaceWeatherService& service_ = parts_.service;
  SolarForecast& forecast_window_ = parts_.forecast_window;
  CurrentConditions& conditions_window_ = parts_.conditions_window;
};

TEST_F(SpaceWeatherTest, FetchesTheForecastAtOnceAndThenEveryHour) {
  service_.ShowForecast();
  EXPECT_TRUE(forecast_view_.visible);
  EXPECT_EQ(Timer(), milliseconds(1));
  EXPECT_EQ(Fetches(), 0U);
  Tick(minutes(0));
  EXPECT_EQ(Timer(), milliseconds(60'000));
  EXPECT_EQ(with_.fetcher.fetched, std::vector<std::string>{"https://host/forecast"});
  EXPECT_EQ(window_.statuses, (std::vector<std::string>{"downloading forecast", ""}));
  EXPECT_TRUE(window_.enabled);
  Tick(minutes(59));
  EXPECT_EQ(Fetches(), 1U);
  Tick(minutes(1));
  EXPECT_EQ(Fetches(), 2U);
  // The command fetches regardless of the forecast's age.
  service_.ShowForecast();
  Tick(minutes(0));
  EXPECT_EQ(Fetches(), 3U);
}

TEST_F(SpaceWeatherTest, TellsWhatEachAddressGaveLast) {
  EXPECT_EQ(service_.LastGiven(Address::kSFIURL), "Not used since the program was started");
  EXPECT_EQ(service_.LastGiven(Address::kSSNURL), "Sunspot number not downloaded so far");
  EXPECT_EQ(service_.LastGiven(Address::kURL0), "");
  service_.ShowForecast();
  Tick(minutes(0));
  const std::string moment = MomentText(with_.log.clock.now);
  with_.fetcher.content = TestData("spaceweather/wwv.txt");
  service_.UpdateCurrentConditions();
  with_.log.clock.now += minutes(130);
  EXPECT_EQ(service_.LastGiven(Address::kSFIURL), "Forecast, 2 hours ago (" + moment + ")");
  const std::string values =
      "Solar flux 152, 2 hours ago (" + moment + "); K index 3, 2 hours ago (" + moment + ")";
  EXPECT_EQ(service_.LastGiven(Address::kWWVURL), values);

  with_.fetcher.code = fetch_codes::kCannotConnect;
  service_.UpdateCurrentConditions();
  EXPECT_EQ(service_.LastGiven(Address::kWWVURL),
            values +
                "; last attempt just now: unable to download current conditions from "
                "https://host/wwv - cannot connect");
  configuration_.SetUrl(Address::kSFIURL, "https://elsewhere/forecast");
  EXPECT_EQ(service_.LastGiven(Address::kSFIURL),
            "Forecast, 2 hours ago (" + moment + ") from https://host/forecast");
}

TEST_F(SpaceWeatherTest, KeysStepThroughTheDaysThatTheForecastHas) {
  const auto pointed = [&] { return forecast_window_.PointedText().substr(0, 11); };
  forecast_window_.Step(1);
  EXPECT_EQ(pointed(), "") << "there is no day yet";
  service_.ShowForecast();
  Tick(minutes(0));
  forecast_window_.Step(1);
  EXPECT_EQ(pointed(), "15 Nov 2026") << "today comes first";
  forecast_window_.Step(-1);
  EXPECT_EQ(pointed(), "15 Nov 2026");
  forecast_window_.Step(2);
  EXPECT_EQ(pointed(), "17 Nov 2026");
  forecast_window_.Step(32);
  EXPECT_EQ(pointed(), "15 Dec 2026") << "the 31st day";
  forecast_window_.Step(-32);
  EXPECT_EQ(pointed(), "15 Nov 2026");
  forecast_window_.Pointer_Leave();
  forecast_window_.Step(-1);
  EXPECT_EQ(pointed(), "15 Dec 2026") << "from nowhere, back to the last";
}

TEST_F(SpaceWeatherTest, TriesAgainAMinuteAfterAFailure) {
  service_.ShowForecast();
  with_.fetcher.code = fetch_codes::kCannotConnect;
  Tick(minutes(0));
  Tick(minutes(1));
  EXPECT_EQ(Fetches(), 2U);
  EXPECT_EQ(forecast_view_.status,
            "unable to download solar forecast from https://host/forecast - cannot connect");
  with_.fetcher.code = fetch_codes::kOk;
  Tick(minutes(1));
  Tick(minutes(1));
  EXPECT_EQ(Fetches(), 3U);
  EXPECT_EQ(forecast_view_.status, "Downloaded at 15-Nov-26 13:07 UTC from https://host/forecast");
}

TEST_F(SpaceWeatherTest, TheTimerRunsOnlyWhileTheForecastIsShown) {
  service_.ShowForecast();
  Tick(minutes(0));
  forecast_view_.placement.left = 123;
  forecast_window_.Form_QueryUnload();
  EXPECT_FALSE(forecast_view_.visible);
  EXPECT_EQ(StoredLeft("SolarForecast"), "123");
  EXPECT_EQ(Timer(), std::nullopt);
  forecast_window_.Form_Activate();
  EXPECT_EQ(Timer(), std::nullopt);
  // A tick that was already pending.
  Tick(minutes(5));
  EXPECT_EQ(Timer(), std::nullopt);
  forecast_view_.visible = true;
  forecast_window_.Form_Activate();
  EXPECT_EQ(Timer(), milliseconds(60'000));
}

TEST_F(SpaceWeatherTest, WindowsComeBackWhereTheyWere) {
  with_.store.SaveSetting(kProductName, "Windows", "SolarForecastLeft", "321");
  with_.store.SaveSetting(kProductName, "Windows", "CurrentConditionsLeft", "432");
  service_.Terminate();
  EXPECT_EQ(StoredLeft("SolarForecast"), "321");
  service_.ShowForecast();
  service_.ShowCurrentConditions();
  EXPECT_EQ(forecast_view_.placement.left, 321);
  EXPECT_EQ(conditions_view_.placement.left, 432);
  forecast_view_.placement.left = 5;
  conditions_view_.placement.left = 6;
  conditions_window_.Form_QueryUnload();
  EXPECT_FALSE(conditions_view_.visible);
  service_.ShowForecast();
  EXPECT_EQ(forecast_view_.placement.left, 5);
  service_.Terminate();
  EXPECT_EQ(StoredLeft("SolarForecast"), "5");
  EXPECT_EQ(StoredLeft("CurrentConditions"), "6");
  EXPECT_EQ(Timer(), std::nullopt);
}

TEST_F(SpaceWeatherTest, ShowsCaptionGraphsAndTheDayUnderThePointer) {
  service_.ShowForecast();
  EXPECT_EQ(forecast_view_.caption, "Forecast: Solar and Geomagnetic Parameters");
  EXPECT_TRUE(forecast_view_.checked[ForecastCheck::kACheck]);
  Tick(minutes(0));
  EXPECT_EQ(forecast_view_.caption,
            "Forecast: Solar and Geomagnetic Parameters: 2026 Nov 14 2130 UTC");
  const auto graphs = [&] {
    RecordingSurface surface;
    forecast_window_.Paint(surface, 900, 600, 12);
    std::vector<std::string> titles;
    for (const DrawingCall& call : surface.Texts()) {
      const bool is_title = call.style.weight == FontWeight::kBold && call.text.size() > 5;
      if (is_title) titles.push_back(call.text.substr(0, 7));
    }
    return titles;
  };
  EXPECT_EQ(graphs(), (std::vector<std::string>{"Solar f", "A index", "K index"}));
  forecast_window_.Pointer_Move({60, 300});
  EXPECT_EQ(forecast_view_.status, "15 Nov 2026: solar flux 148, A index 5, estimated K index 1");
  EXPECT_EQ(forecast_window_.PointedText(), forecast_view_.status);
  forecast_window_.Pointer_Leave();
  EXPECT_EQ(forecast_view_.status.substr(0, 10), "Downloaded");
  const int refreshes = forecast_view_.refreshes;
  forecast_window_.ACheck_Click(false);
  EXPECT_GT(forecast_view_.refreshes, refreshes);
  EXPECT_EQ(graphs(), (std::vector<std::string>{"Solar f", "K index"}));
}

TEST_F(SpaceWeatherTest, ValuesReachTheirFieldsAndTellTheirOrigin) {
  with_.fetcher.content = TestData("spaceweather/predicted-solar-cycle.json");
  service_.DownloadSSN();
  with_.fetcher.content = TestData("spaceweather/wwv.txt");
  service_.UpdateCurrentConditions();
  EXPECT_EQ(conditions_view_.text, "");
  service_.ShowCurrentConditions();
  EXPECT_TRUE(conditions_view_.text.starts_with("Solar-terrestrial indices"));
  EXPECT_EQ(window_.fields,
            (std::map<TextField, std::string>{
                {TextField::kFlux, "152"}, {TextField::kKindex, "3"}, {TextField::kSSN, "96.4"}}));
  view_.SetText(TextField::kSSN, "96.4");
  with_.log.clock.now += minutes(90);
  EXPECT_EQ(service_.OriginOf(TextField::kSSN),
            "downloaded 1 hour ago (15-Nov-26 13:05 UTC) from https://host/ssn");
  EXPECT_EQ(service_.OriginOf(TextField::kAvail), "");
}

}  // namespace
}  // namespace skyhop::testing
