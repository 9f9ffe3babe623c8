#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/platform.h"
#include "spaceweather/solar_forecast.h"
#include "support/fake_downloads.h"
#include "support/http_server.h"

namespace skyhop::testing {
namespace {

using Lines = std::vector<std::string>;

/// Downloads as the program does them, from a server on this machine.
class SpaceWeatherDownloadTest : public ::testing::Test {
 protected:
  SpaceWeatherDownloadTest() {
    ::setenv("no_proxy", "*", 1);
    server_.Serve("/forecast", Reply("200 OK", TestData("spaceweather/forecast.txt")));
    server_.Serve("/page", Reply("200 OK", "<html><body>We are away</body></html>\n"));
    server_.Serve("/empty", Reply("200 OK", ""));
    server_.Serve("/500", Reply("500 Internal Server Error", "<html>oops"));
    server_.Serve("/cut", {.pieces = {"HTTP/1.1 200 OK\r\nContent-Length: 9999\r\n\r\n:Product"}});
  }

  void Configure(const std::string& path) {
    for (auto& [kind, url] : with_.host.urls) url = server_.Url(path);
    with_.messages.shown.clear();
    with_.host.events.clear();
  }

  HttpServer server_;
  std::unique_ptr<UrlFetcher> fetcher_ = platform::MakeUrlFetcher();
  DownloadFixture with_;
  Common::FileDownload files_{*fetcher_, with_.log.diagnostics};
  DownloadProcedure procedure_{with_.host, files_, with_.messages, with_.log.diagnostics,
                               with_.log.folder.Path()};
};

TEST_F(SpaceWeatherDownloadTest, FailuresOfTheForecastReachTheUserInWords) {
  SolarForecastModule::Forecast forecast(procedure_, with_.messages, with_.log.diagnostics,
                                         with_.log.clock);
  const std::string unable = "unable to download solar forecast from <url> - ";
  const std::string downloaded =
      "SolarForecastModule.DownloadSolarForecast: downloaded solar forecast from <url> ";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"/forecast", ""},
      {"/none", unable + "object not found"},
      {"/500", unable + "data not available"},
      {"/cut", unable + "download failure"},
      {"/empty", downloaded + "is empty"},
      {"/page", downloaded + "contains unrecognizable AP format 1"},
  };
  for (const auto& [path, message] : cases) {
    Configure(path);
    forecast.DownloadSolarForecast();
    const Lines expected =
        message.empty() ? Lines() : Lines{ReplaceAll(message, "<url>", server_.Url(path))};
    EXPECT_EQ(with_.messages.Texts(), expected);
    EXPECT_EQ(with_.host.events,
              (Lines{"disable", "caption downloading forecast", "enable", "caption "}));
    EXPECT_EQ(forecast.Table()[31].valid, message.empty()) << path;
  }
}

TEST_F(SpaceWeatherDownloadTest, FailuresLeaveTheFileOfTheLastSuccess) {
  SolarForecastModule::Forecast forecast(procedure_, with_.messages, with_.log.diagnostics,
                                         with_.log.clock);
  for (const char* path : {"/forecast", "/none", "/cut"}) {
    Configure(path);
    forecast.DownloadSolarForecast();
    EXPECT_EQ(ReadFile(with_.log.folder / "SolarForecast.txt", 100'000),
              TestData("spaceweather/forecast.txt"));
  }
}

}  // namespace
}  // namespace skyhop::testing
