#include "platform/linux/curl_fetcher.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

#include "common/files.h"
#include "common/pause.h"
#include "contract/url_fetcher_contract.h"
#include "platform/platform.h"
#include "spaceweather/background_fetcher.h"
#include "support/fake_downloads.h"
#include "support/http_server.h"
#include "support/program_run.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using platform::CurlFetcher;
using platform::FetchLimits;
using std::chrono::milliseconds;

constexpr const char* kOldContent = "content of an earlier download";

/// The background fetcher over a fake.
class FakeWorld : public FetchWorld {
 public:
  [[nodiscard]] UrlFetcher& Fetcher() override { return fetcher_; }
  [[nodiscard]] std::string Serve(const std::string& content) override {
    fake_->content = content;
    return "https://host/a b";
  }
  [[nodiscard]] std::string ServeNothing() override {
    fake_->code = fetch_codes::kCannotConnect;
    return "https://host/";
  }
  [[nodiscard]] std::string ServeSlowly() override {
    fake_->silent = true;
    return "https://host/slow";
  }

 private:
  std::shared_ptr<FakeFetcher> fake_ = std::make_shared<FakeFetcher>();
  SleepingPause pause_;
  BackgroundFetcher fetcher_{fake_, pause_};
};

INSTANTIATE_TEST_SUITE_P(
    Backends, UrlFetcherContract,
    ::testing::Values(FetcherBackend{"curl",
                                     [] { return std::make_unique<HttpWorld<CurlFetcher>>(); }},
                      FetcherBackend{"background", [] { return std::make_unique<FakeWorld>(); }}),
    ::testing::PrintToStringParamName());

class CurlFetcherTest : public ::testing::Test {
 protected:
  CurlFetcherTest() {
    for (const char* variable : {"http_proxy", "https_proxy", "HTTPS_PROXY", "all_proxy",
                                 "ALL_PROXY", "no_proxy", "NO_PROXY"}) {
      ::unsetenv(variable);
    }
    WriteFile(file_, kOldContent);
  }

  [[nodiscard]] std::int32_t Fetch(const std::string& url, const FetchLimits& limits = {}) {
    return CurlFetcher(limits).Fetch(url, file_, {});
  }
  [[nodiscard]] std::int32_t FetchReply(const HttpReply& reply, const FetchLimits& limits = {}) {
    server_.Serve("/file", reply);
    return Fetch(server_.Url("/file"), limits);
  }
  [[nodiscard]] std::string Content() const { return ReadFile(file_, 100'000'000); }

  static HttpReply RedirectTo(const std::string& url) {
    return Reply("302 Found", "<html>moved", "Location: " + url + "\r\n");
  }

  HttpServer server_;
  TemporaryFolder folder_;
  std::filesystem::path file_ = folder_ / "got.txt";
};

TEST_F(CurlFetcherTest, ReadsContentWithoutLengthToTheEndOfTheConnection) {
  EXPECT_EQ(FetchReply({.pieces = {"HTTP/1.0 200 OK\r\n\r\nfirst ", "second"}}), fetch_codes::kOk);
  EXPECT_EQ(Content(), "first second");
}

TEST_F(CurlFetcherTest, RequestsTheNewestVersionOfATypedAddress) {
  server_.Serve("/a%20b?c=d", Reply("200 OK", "found"));
  ASSERT_EQ(Fetch("  " + server_.Url("/a b?c=d") + " "), fetch_codes::kOk);
  const std::string head = server_.Requests().at(0);
  EXPECT_NE(head.find("\r\nCache-Control: no-cache\r\n"), std::string::npos) << head;
  EXPECT_NE(head.find("\r\nPragma: no-cache\r\n"), std::string::npos) << head;
  EXPECT_NE(head.find("\r\nUser-Agent: Skyhop/"), std::string::npos) << head;
}

TEST_F(CurlFetcherTest, FollowsRedirects) {
  server_.Serve("/target", Reply("200 OK", "arrived"));
  EXPECT_EQ(FetchReply(RedirectTo("/target")), fetch_codes::kOk);
  EXPECT_EQ(Content(), "arrived");
}

TEST_F(CurlFetcherTest, ReturnsTheFailureAndKeepsTheOldFile) {
  const std::string local = "file://" + PathText(file_);
  const std::string refused = "http://127.0.0.1:" + std::to_string(UnusedPort()) + "/";
  server_.Serve("/loop", RedirectTo("/loop"));
  server_.Serve("/to-file", RedirectTo(local));
  server_.Serve("/nowhere", Reply("302 Found", "<html>moved"));
  server_.Serve("/cut", {.pieces = {"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf of it"}});
  server_.Serve("/mute", {});
  server_.Serve("/garbage", {.pieces = {"no reply of a server at all\n"}});
  const std::vector<std::pair<const char*, std::int32_t>> states = {
      {"400 Bad Request", fetch_codes::kInvalidRequest},
      {"401 Unauthorized", fetch_codes::kAuthenticationRequired},
      {"403 Forbidden", fetch_codes::kAccessDenied},
      {"404 Not Found", fetch_codes::kObjectNotFound},
      {"410 Gone", fetch_codes::kObjectNotFound},
      {"418 Teapot", fetch_codes::kInvalidRequest},
      {"500 Internal Server Error", fetch_codes::kDataNotAvailable},
      {"503 Service Unavailable", fetch_codes::kDataNotAvailable},
      {"504 Gateway Timeout", fetch_codes::kConnectionTimeout},
  };
  std::vector<std::pair<std::string, std::int32_t>> cases = {
      {server_.Url("/loop"), fetch_codes::kRedirectFailed},
      {server_.Url("/to-file"), fetch_codes::kRedirectFailed},
      {server_.Url("/nowhere"), fetch_codes::kRedirectFailed},
      {server_.Url("/cut"), fetch_codes::kDownloadFailure},
      {server_.Url("/mute"), fetch_codes::kDownloadFailure},
      {server_.Url("/garbage"), fetch_codes::kUnknownProtocol},
      {refused, fetch_codes::kCannotConnect},
      {"http://no-such-host.invalid/", fetch_codes::kResourceNotFound},
      {local, fetch_codes::kUnknownProtocol},
      {"ftp://127.0.0.1/file", fetch_codes::kUnknownProtocol},
      {"http://", fetch_codes::kInvalidUrl},
      {"http://127.0.0.1:99999/", fetch_codes::kInvalidUrl},
      {"", fetch_codes::kInvalidUrl},
      // An HTTP server at an HTTPS address, with the scheme or without.
      {"https" + server_.Url("/file").substr(4), fetch_codes::kSecurityProblem},
      {server_.Url("/file").substr(7), fetch_codes::kSecurityProblem},
  };
  for (const auto& [status, code] : states) {
    const std::string path = "/" + std::string(status, 3);
    server_.Serve(path, Reply(status, "<html>an error page"));
    cases.emplace_back(server_.Url(path), code);
  }
  for (const auto& [url, code] : cases) {
    EXPECT_EQ(Fetch(url), code) << url;
    EXPECT_EQ(Content(), kOldContent) << url;
  }
}

TEST_F(CurlFetcherTest, EndsAtTheTimeLimit) {
  FetchLimits limits;
  limits.whole = milliseconds(250);
  HttpReply trickle = {.pieces = {"HTTP/1.0 200 OK\r\n\r\n"}, .pause = milliseconds(40)};
  trickle.pieces.resize(101, ".");
  const HttpReply silent = {.pieces = {"", "late"}, .pause = std::chrono::minutes(1)};
  for (const HttpReply& reply : {trickle, silent}) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(FetchReply(reply, limits), fetch_codes::kConnectionTimeout);
    EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(2000));
    EXPECT_EQ(Content(), kOldContent);
  }
}

TEST_F(CurlFetcherTest, RefusesContentBeyondTheLimit) {
  FetchLimits limits;
  limits.size = 1000;
  const std::string fits(1000, 'x');
  EXPECT_EQ(FetchReply(Reply("200 OK", fits), limits), fetch_codes::kOk);
  EXPECT_EQ(Content(), fits);
  const std::string longer = fits + "y";
  EXPECT_EQ(FetchReply(Reply("200 OK", longer), limits), fetch_codes::kCannotLoadData);
  // A server that does not send the length.
  EXPECT_EQ(FetchReply({.pieces = {"HTTP/1.0 200 OK\r\n\r\n", longer}}, limits),
            fetch_codes::kCannotLoadData);
  EXPECT_EQ(Content(), fits);
  EXPECT_EQ(FetchReply(Reply("200 OK", std::string(20U << 20U, 'z'))),
            fetch_codes::kCannotLoadData);
}

TEST_F(CurlFetcherTest, ReturnsTheReasonWhenTheFileCannotBeWritten) {
  server_.Serve("/file", Reply("200 OK", "new"));
  const auto fetch_into = [&](const std::filesystem::path& file) {
    return CurlFetcher().Fetch(server_.Url("/file"), file, {});
  };
  EXPECT_EQ(fetch_into(folder_.Path()), fetch_codes::kAccessDenied);
  EXPECT_EQ(fetch_into(folder_ / "no such folder" / "got.txt"), fetch_codes::kAccessDenied);
  std::filesystem::permissions(file_, std::filesystem::perms::owner_read);
  EXPECT_EQ(fetch_into(file_), fetch_codes::kAborted);
  EXPECT_EQ(Content(), kOldContent);
}

TEST_F(CurlFetcherTest, UsesTheProxyOfTheEnvironment) {
  server_.Serve("http://far-away.invalid/file", Reply("200 OK", "through the proxy"));
  ::setenv("http_proxy", server_.Url("").c_str(), 1);
  EXPECT_EQ(Fetch("http://far-away.invalid/file"), fetch_codes::kOk);
  ::unsetenv("http_proxy");
  EXPECT_EQ(Content(), "through the proxy");
}

/// A server with a certificate that no authority of the system has signed.
class SecureServerTest : public CurlFetcherTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(std::filesystem::exists(kOpenssl)) << "there is no openssl";
    ASSERT_EQ(RunProgram(kOpenssl,
                         {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=localhost",
                          "-addext", "subjectAltName=DNS:localhost,IP:127.0.0.1", "-keyout", key_,
                          "-out", certificate_},
                         {})
                  .status,
              0);
  }

  /// Fetches the content of `folder_`/`name` from a server that answers one request.
  [[nodiscard]] std::int32_t FetchSecurely(const std::string& name, const FetchLimits& limits) {
    const std::string port = std::to_string(UnusedPort());
    std::thread server([&] {
      (void)RunProgram(
          "/usr/bin/env",
          {"-C", PathText(folder_.Path()), "timeout", "20", kOpenssl, "s_server", "-quiet", "-HTTP",
           "-naccept", "1", "-accept", "127.0.0.1:" + port, "-key", key_, "-cert", certificate_},
          {});
    });
    std::int32_t code = fetch_codes::kCannotConnect;
    for (int attempt = 0; attempt < 100 && code == fetch_codes::kCannotConnect; ++attempt) {
      std::this_thread::sleep_for(milliseconds(50));
      code = Fetch("https://127.0.0.1:" + port + "/" + name, limits);
    }
    server.join();
    return code;
  }

  static constexpr const char* kOpenssl = "/usr/bin/openssl";
  std::string key_ = PathText(folder_ / "key.pem");
  std::string certificate_ = PathText(folder_ / "certificate.pem");
};

TEST_F(SecureServerTest, RefusesACertificateWithoutTrustedAuthority) {
  WriteFile(folder_ / "page", Reply("200 OK", "new").pieces[0]);
  EXPECT_EQ(FetchSecurely("page", {}), fetch_codes::kSecurityProblem);
  EXPECT_EQ(Content(), kOldContent);
}

TEST_F(SecureServerTest, FollowsOnlyHttpsAfterHttps) {
  FetchLimits limits;
  limits.authorities = certificate_;
  server_.Serve("/plain", Reply("200 OK", "in clear text"));
  WriteFile(folder_ / "page", Reply("200 OK", "in secret").pieces[0]);
  WriteFile(folder_ / "moved", RedirectTo(server_.Url("/plain")).pieces[0]);
  EXPECT_EQ(FetchSecurely("moved", limits), fetch_codes::kRedirectFailed);
  EXPECT_EQ(Content(), kOldContent);
  EXPECT_TRUE(server_.Requests().empty());
  EXPECT_EQ(FetchSecurely("page", limits), fetch_codes::kOk);
  EXPECT_EQ(Content(), "in secret");
}

}  // namespace
}  // namespace skyhop::testing
