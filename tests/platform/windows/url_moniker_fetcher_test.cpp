#include "platform/windows/url_moniker_fetcher.h"

#include <gtest/gtest.h>

#include <winsock2.h>

#include <string>
#include <thread>

#include "common/files.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

/// A server on the loopback interface that gives every request the same answer.
class OneAnswerServer {
 public:
  explicit OneAnswerServer(std::string answer) : answer_(std::move(answer)) {
    WSADATA data{};
    ::WSAStartup(MAKEWORD(2, 2), &data);
    listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof address;
    ::bind(listener_, reinterpret_cast<sockaddr*>(&address), size);
    ::listen(listener_, 5);
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { Serve(); });
  }
  ~OneAnswerServer() {
    ::closesocket(listener_);
    thread_.join();
    ::WSACleanup();
  }
  OneAnswerServer(const OneAnswerServer&) = delete;
  OneAnswerServer& operator=(const OneAnswerServer&) = delete;

  [[nodiscard]] std::string Url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
  }

 private:
  void Serve() const {
    while (true) {
      const SOCKET client = ::accept(listener_, nullptr, nullptr);
      if (client == INVALID_SOCKET) return;
      std::string request;
      char part[1000];
      while (request.find("\r\n\r\n") == std::string::npos) {
        const int length = ::recv(client, part, sizeof part, 0);
        if (length <= 0) break;
        request.append(part, static_cast<std::size_t>(length));
      }
      ::send(client, answer_.data(), static_cast<int>(answer_.size()), 0);
      ::shutdown(client, SD_SEND);
      ::closesocket(client);
    }
  }

  std::string answer_;
  SOCKET listener_ = INVALID_SOCKET;
  unsigned port_ = 0;
  std::thread thread_;
};

std::string Answer(const std::string& status, const std::string& content) {
  return "HTTP/1.1 " + status +
         "\r\nContent-Type: text/plain\r\nContent-Length: " + std::to_string(content.size()) +
         "\r\nConnection: close\r\n\r\n" + content;
}

class UrlMonikerFetcherTest : public ::testing::Test {
 protected:
  TemporaryFolder folder_{"two words Z\xC3\xBCrich"};
  std::filesystem::path file_ = folder_ / "got.txt";
  platform::UrlMonikerFetcher fetcher_;
};

TEST_F(UrlMonikerFetcherTest, WritesTheContentByteByByte) {
  const std::string content("line\r\nline\n\0end\xff", 16);
  {
    const OneAnswerServer server(Answer("200 OK", content));
    (void)fetcher_.RemoveFromCache(server.Url("/a%20b"));
    ASSERT_EQ(fetcher_.Fetch(server.Url("/a b"), file_, {}), fetch_codes::kOk);
    EXPECT_EQ(ReadFile(file_, 1000), content);
  }
  const OneAnswerServer newer(Answer("200 OK", "newer"));
  ASSERT_EQ(fetcher_.Fetch(newer.Url("/a b"), file_, {}), fetch_codes::kOk);
  EXPECT_EQ(ReadFile(file_, 1000), "newer") << "an existing file is replaced";
}

TEST_F(UrlMonikerFetcherTest, AStoppedFetchWritesNoFile) {
  const OneAnswerServer server(Answer("200 OK", "found"));
  std::stop_source stop;
  stop.request_stop();
  EXPECT_EQ(fetcher_.Fetch(server.Url("/"), file_, stop.get_token()), fetch_codes::kAborted);
  EXPECT_FALSE(std::filesystem::exists(file_));
}

TEST_F(UrlMonikerFetcherTest, FailuresComeBackAsCodes) {
  // Not every edition of the system takes a page about an error for a failure, so that is not
  // asked.
  EXPECT_NE(fetcher_.Fetch("http://127.0.0.1:1/", file_, {}), fetch_codes::kOk);
  EXPECT_NE(fetcher_.Fetch("nonsense:", file_, {}), fetch_codes::kOk);
  EXPECT_NE(fetcher_.Fetch("", file_, {}), fetch_codes::kOk);
}

TEST_F(UrlMonikerFetcherTest, WorksOnAnyThread) {
  const OneAnswerServer server(Answer("200 OK", "found"));
  std::int32_t result = -1;
  std::thread([&] { result = fetcher_.Fetch(server.Url("/"), file_, {}); }).join();
  EXPECT_EQ(result, fetch_codes::kOk);
  EXPECT_EQ(ReadFile(file_, 100), "found");
}

}  // namespace
}  // namespace skyhop::testing
