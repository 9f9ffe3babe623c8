#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace skyhop::testing {

/// The bytes that the server sends before it closes the connection.
struct HttpReply {
  std::vector<std::string> pieces;
  /// The pause before each piece except the first.
  std::chrono::milliseconds pause{0};
};

/// "HTTP/1.1 <status>" with a length that fits the body. `headers` are whole lines, each ended by
/// carriage return and line feed.
[[nodiscard]] HttpReply Reply(const std::string& status, const std::string& body,
                              const std::string& headers = "");

/// A server on the loopback interface that sends fixed replies, one connection after another.
class HttpServer {
 public:
#ifdef _WIN32
  using Socket = std::uintptr_t;
#else
  using Socket = int;
#endif

  HttpServer();
  ~HttpServer();
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  /// Sets the reply for a path. Other paths are not found.
  void Serve(const std::string& path, const HttpReply& reply);

  /// "http://127.0.0.1:<port>" and the path.
  [[nodiscard]] std::string Url(const std::string& path) const;
  /// The heads of the requests so far.
  [[nodiscard]] std::vector<std::string> Requests() const;

 private:
  void Run();
  void Answer(Socket connection);
  [[nodiscard]] std::string ReadHead(Socket connection) const;
  [[nodiscard]] HttpReply ReplyTo(const std::string& head);

  int port_ = 0;  // before the listener, which fills it in
  Socket listener_;
  std::atomic<bool> stop_ = false;
  mutable std::mutex mutex_;
  std::map<std::string, HttpReply> replies_;
  std::vector<std::string> requests_;
  std::thread thread_;
};

/// A port of the loopback interface that no program uses now.
[[nodiscard]] int UnusedPort();

}  // namespace skyhop::testing
