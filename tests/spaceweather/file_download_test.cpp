#include "spaceweather/file_download.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stop_token>
#include <thread>

#include "spaceweather/background_fetcher.h"
#include "spaceweather/solar_forecast.h"
#include "spaceweather/sunspot_number.h"
#include "support/fake_downloads.h"

namespace skyhop::testing {
namespace {

using Lines = std::vector<std::string>;

TEST(FileErrorDescription, IsTheProgramsOwnTextForTheCode) {
  const std::vector<std::pair<std::uint32_t, std::string>> cases = {
      {0x80070005, "access denied"},
      {0x80004004, "existing file is 'read-only'"},
      {0x8007000E, "put of memory"},
      {0x800C0002, "invalid URL"},
      {0x800C0003, "no session"},
      {0x800C0004, "cannot connect"},
      {0x800C0005, "resource not found"},
      {0x800C0006, "object not found"},
      {0x800C0007, "data not available"},
      {0x800C0008, "download failure"},
      {0x800C0009, "authentication required"},
      {0x800C000A, "no valid media"},
      {0x800C000B, "connection timeout"},
      {0x800C000C, "invalid request"},
      {0x800C000D, "unknown protocol"},
      {0x800C000E, "security problem"},
      {0x800C000F, "cannot load data"},
      {0x800C0010, "cannot instantiate object"},
      {0x800C0011, "unknown error -2146697199"},
      {0x800C0012, "unknown error -2146697198"},
      {0x800C0013, "query option unknown"},
      {0x800C0014, "redirect failed"},
      {0x800C0015, "redirect to dir"},
      {0x800C0016, "cannot lock request"},
      {94, "unknown error 94"},
  };
  for (const auto& [code, text] : cases) {
    EXPECT_EQ(Common::GetFileErrorDescription(static_cast<std::int32_t>(code)), text);
  }
}

TEST(FileDownload, EscapesBlanksOnlyForTheCache) {
  DownloadFixture with;
  with.fetcher.content = "x";
  const std::filesystem::path file = with.log.folder / "got.txt";
  EXPECT_EQ(with.files.GetFileFromURL("https://host/a b", file), "");
  EXPECT_EQ(with.fetcher.removed, Lines{"https://host/a%20b"});
  EXPECT_EQ(with.fetcher.fetched, Lines{"https://host/a b"});
  EXPECT_EQ(with.log.debug,
            (Lines{"Common.GetFileFromURL: starting", "   theURL = https://host/a b",
                   "   theFile = " + PathText(file), "   CachedURL = https://host/a%20b",
                   "   Deletion Result = 1", "Common.GetFileFromURL: complete"}));
}

TEST(FileDownload, LogsAFailureWithItsCode) {
  DownloadFixture with;
  with.fetcher.code = fetch_codes::kCannotConnect;
  EXPECT_EQ(with.files.GetFileFromURL("https://host/", with.log.folder / "x"), "cannot connect");
  EXPECT_EQ(with.log.debug.back(),
            "Common.GetFileFromURL failed: cannot connect, error code = -2146697212");
}

/// A fetcher whose server answers when the test lets it.
struct SlowFetch {
  std::shared_ptr<FakeFetcher> slow = std::make_shared<FakeFetcher>();
  FakePause pause;
  std::atomic<bool> go = false;
  std::thread::id worker;
  std::stop_source stop;

  SlowFetch() {
    slow->code = 7;
    slow->during = [this] {
      worker = std::this_thread::get_id();
      while (!go) std::this_thread::yield();
    };
  }
};

TEST(BackgroundFetcher, PausesTheCallerUntilTheResultIsThere) {
  SlowFetch with;
  with.pause.during = [&] { with.go = with.pause.waits.size() >= 3; };
  BackgroundFetcher fetcher(with.slow, with.pause);
  EXPECT_EQ(fetcher.Fetch("https://host/", "x", {}), 7);
  EXPECT_GE(with.pause.waits.size(), 3U);
  EXPECT_NE(with.worker, std::this_thread::get_id());
}

TEST(BackgroundFetcher, ReturnsWhenStoppedWhileTheServerIsSilent) {
  SlowFetch with;
  BackgroundFetcher fetcher(with.slow, with.pause);
  with.pause.during = [&] { with.stop.request_stop(); };
  EXPECT_EQ(fetcher.Fetch("https://host/", "x", with.stop.get_token()), fetch_codes::kAborted);
  EXPECT_FALSE(with.go);
  // The next fetch waits for the end of that one, so that both never write at once.
  with.pause.during = [&] { with.go = true; };
  EXPECT_EQ(fetcher.Fetch("https://host/next", "x", {}), 7);
  EXPECT_EQ(with.slow->fetched, (Lines{"https://host/", "https://host/next"}));
}

TEST(DownloadProcedure, ChangesNothingWhenADownloadIsCancelled) {
  DownloadFixture with;
  SolarForecastModule::SunspotNumber number{
      with.procedure, with.host, with.origins, with.messages, with.log.diagnostics, with.log.clock};
  SolarForecastModule::Forecast forecast(with.procedure, with.messages, with.log.diagnostics,
                                         with.log.clock);
  with.fetcher.content = TestData("spaceweather/forecast.txt");
  forecast.DownloadSolarForecast();
  const auto filled = forecast.FilledAt();
  with.host.events.clear();
  with.fetcher.during = [&] { with.procedure.Cancel(); };
  for (const std::int32_t code : {fetch_codes::kAborted, fetch_codes::kOk}) {
    with.fetcher.code = code;
    forecast.DownloadSolarForecast();
    number.DownloadSSN();
  }
  EXPECT_TRUE(forecast.Table()[31].valid);
  EXPECT_EQ(forecast.FilledAt(), filled);
  EXPECT_EQ(forecast.Failure(), "");
  EXPECT_EQ(with.host.values[SolarValue::kSunspotNumber], "50");
  EXPECT_EQ(with.origins.LastFailure(SolarValue::kSunspotNumber), "");
  EXPECT_EQ(with.messages.Texts(), Lines());
  EXPECT_EQ(Lines(with.host.events.end() - 2, with.host.events.end()),
            (Lines{"enable", "caption "}));
  EXPECT_EQ(with.Debug().back(), "   downloading SSN: cancelled");
  // A cancellation does not affect the next download.
  with.fetcher.during = {};
  with.fetcher.content = TestData("spaceweather/predicted-solar-cycle.json");
  number.DownloadSSN();
  EXPECT_EQ(with.host.values[SolarValue::kSunspotNumber], "96.4");
}

}  // namespace
}  // namespace skyhop::testing
