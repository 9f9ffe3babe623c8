#include "spaceweather/file_download.h"

#include <gtest/gtest.h>

#include <thread>

#include "spaceweather/background_fetcher.h"
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

TEST(FileDownload, EscapesBlanksForTheCacheAlone) {
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

TEST(BackgroundFetcher, PausesTheCallerUntilTheResultIsThere) {
  FakeFetcher slow;
  FakePause pause;
  std::atomic<bool> go = false;
  std::thread::id worker;
  slow.code = 7;
  slow.during = [&] {
    worker = std::this_thread::get_id();
    while (!go) std::this_thread::yield();
  };
  pause.during = [&] { go = pause.waits.size() >= 3; };
  BackgroundFetcher fetcher(slow, pause);
  EXPECT_EQ(fetcher.Fetch("https://host/", "x"), 7);
  EXPECT_GE(pause.waits.size(), 3U);
  EXPECT_NE(worker, std::this_thread::get_id());
}

}  // namespace
}  // namespace skyhop::testing
