#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <thread>

#include "common/files.h"
#include "spaceweather/url_fetcher.h"
#include "support/http_server.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {

/// A fetcher and the place from which it fetches.
class FetchWorld {
 public:
  virtual ~FetchWorld() = default;
  [[nodiscard]] virtual UrlFetcher& Fetcher() = 0;
  /// Makes content available. Returns its address as a user types it, with a blank.
  [[nodiscard]] virtual std::string Serve(const std::string& content) = 0;
  /// An address without an answer.
  [[nodiscard]] virtual std::string ServeNothing() = 0;
  /// The address of content that takes longer than a minute to arrive.
  [[nodiscard]] virtual std::string ServeSlowly() = 0;
};

/// A fetcher with a server on the loopback interface.
template <class Backend>
class HttpWorld : public FetchWorld {
 public:
  [[nodiscard]] UrlFetcher& Fetcher() override { return fetcher_; }
  [[nodiscard]] std::string Serve(const std::string& content) override {
    server_.Serve("/a%20b", Reply("200 OK", content));
    return server_.Url("/a b");
  }
  [[nodiscard]] std::string ServeNothing() override {
    return "http://127.0.0.1:" + std::to_string(UnusedPort()) + "/";
  }
  [[nodiscard]] std::string ServeSlowly() override {
    HttpReply reply = {.pieces = {"HTTP/1.1 200 OK\r\nContent-Length: 3000000\r\n\r\n"},
                       .pause = std::chrono::milliseconds(40)};
    reply.pieces.resize(1501, std::string(2000, '.'));
    server_.Serve("/slow", reply);
    return server_.Url("/slow");
  }

 private:
  HttpServer server_;
  Backend fetcher_;
};

struct FetcherBackend {
  const char* name;
  std::function<std::unique_ptr<FetchWorld>()> make;

  /// The name in the test's report.
  friend void PrintTo(const FetcherBackend& backend, std::ostream* out) { *out << backend.name; }
};

/// Tests for every fetcher.
class UrlFetcherContract : public ::testing::TestWithParam<FetcherBackend> {
 protected:
  std::unique_ptr<FetchWorld> world_ = GetParam().make();
  TemporaryFolder folder_{"two words Z\xC3\xBCrich"};
  std::filesystem::path file_ = folder_ / "got.txt";
  std::stop_source stop_;
};

TEST_P(UrlFetcherContract, WritesTheNewestContentByteByByte) {
  for (const std::string& content :
       {std::string("line\r\nline\n\0end\xff", 16), std::string("newer"), std::string()}) {
    const std::string url = world_->Serve(content);
    (void)world_->Fetcher().RemoveFromCache(url);
    ASSERT_EQ(world_->Fetcher().Fetch(url, file_, {}), fetch_codes::kOk);
    EXPECT_EQ(ReadFile(file_, 1000), content);
  }
}

TEST_P(UrlFetcherContract, WorksOnAnyThread) {
  const std::string url = world_->Serve("found");
  std::int32_t result = -1;
  std::thread([&] { result = world_->Fetcher().Fetch(url, file_, {}); }).join();
  EXPECT_EQ(result, fetch_codes::kOk);
  EXPECT_EQ(ReadFile(file_, 100), "found");
}

TEST_P(UrlFetcherContract, ReportsAFailure) {
  EXPECT_NE(world_->Fetcher().Fetch(world_->ServeNothing(), file_, {}), fetch_codes::kOk);
}

TEST_P(UrlFetcherContract, WritesNoFileWhenAFetchIsStopped) {
  const std::string slow = world_->ServeSlowly();
  const auto start = std::chrono::steady_clock::now();
  const std::jthread user([this] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    stop_.request_stop();
  });
  EXPECT_EQ(world_->Fetcher().Fetch(slow, file_, stop_.get_token()), fetch_codes::kAborted);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(50));
  const std::string url = world_->Serve("found");
  EXPECT_EQ(world_->Fetcher().Fetch(url, file_, stop_.get_token()), fetch_codes::kAborted);
  EXPECT_FALSE(std::filesystem::exists(file_));
}

}  // namespace skyhop::testing
