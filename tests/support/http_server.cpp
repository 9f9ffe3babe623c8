#include "support/http_server.h"

#ifdef _WIN32
#include <winsock2.h>
#else
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

#include <array>
#include <stdexcept>

namespace skyhop::testing {
namespace {

using Socket = HttpServer::Socket;

#ifdef _WIN32
// Names that the other systems define.
using socklen_t = int;
constexpr int MSG_NOSIGNAL = 0;

int poll(pollfd* waiting, unsigned long count, int timeout) {
  return ::WSAPoll(waiting, count, timeout);
}
int close(Socket socket) {
  return ::closesocket(socket);
}
WSADATA facts{};
const int kStarted = ::WSAStartup(MAKEWORD(2, 2), &facts);
#endif

/// The longest time until the server notices that it must end.
constexpr int kPollMilliseconds = 20;

/// A socket bound to a free port of the loopback interface.
Socket BoundSocket(int& port) {
  const auto bound = static_cast<Socket>(::socket(AF_INET, SOCK_STREAM, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  if (::bind(bound, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
      ::getsockname(bound, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    throw std::runtime_error("no free port on the loopback interface");
  }
  port = ntohs(address.sin_port);
  return bound;
}

bool Readable(Socket socket) {
  pollfd waiting{socket, POLLIN, 0};
  return poll(&waiting, 1, kPollMilliseconds) > 0;
}

bool SendAll(Socket connection, const std::string& bytes) {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const auto left = static_cast<int>(bytes.size() - sent);
    const auto count = ::send(connection, bytes.data() + sent, left, MSG_NOSIGNAL);
    if (count <= 0) return false;
    sent += static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace

HttpReply Reply(const std::string& status, const std::string& body, const std::string& headers) {
  return {.pieces = {"HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) +
                     "\r\nConnection: close\r\n" + headers + "\r\n" + body}};
}

int UnusedPort() {
  int port = 0;
  close(BoundSocket(port));
  return port;
}

HttpServer::HttpServer() : listener_(BoundSocket(port_)) {
  if (::listen(listener_, 8) != 0) throw std::runtime_error("cannot listen");
  thread_ = std::thread([this] { Run(); });
}

HttpServer::~HttpServer() {
  stop_ = true;
  thread_.join();
  close(listener_);
}

void HttpServer::Serve(const std::string& path, const HttpReply& reply) {
  const std::lock_guard lock(mutex_);
  replies_[path] = reply;
}

std::string HttpServer::Url(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + path;
}

std::vector<std::string> HttpServer::Requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void HttpServer::Run() {
  while (!stop_) {
    if (!Readable(listener_)) continue;
    const auto connection = static_cast<Socket>(::accept(listener_, nullptr, nullptr));
    if (connection == static_cast<Socket>(-1)) continue;
    Answer(connection);
    close(connection);
  }
}

std::string HttpServer::ReadHead(Socket connection) const {
  std::string head;
  std::array<char, 4096> buffer{};
  while (!stop_ && head.find("\r\n\r\n") == std::string::npos) {
    if (!Readable(connection)) continue;
    const auto count = ::recv(connection, buffer.data(), buffer.size(), 0);
    if (count <= 0) break;
    head.append(buffer.data(), static_cast<std::size_t>(count));
    // A client that begins with a TLS handshake never sends a head.
    if (head[0] == '\x16') break;
  }
  return head;
}

HttpReply HttpServer::ReplyTo(const std::string& head) {
  const std::size_t start = head.find(' ') + 1;
  const std::string path = head.substr(start, head.find(' ', start) - start);
  const std::lock_guard lock(mutex_);
  requests_.push_back(head);
  const auto found = replies_.find(path);
  return found != replies_.end() ? found->second : Reply("404 Not Found", "<html>no such file");
}

void HttpServer::Answer(Socket connection) {
  const std::string head = ReadHead(connection);
  if (head.empty()) return;
  const HttpReply reply = ReplyTo(head);
  for (std::size_t piece = 0; piece < reply.pieces.size(); ++piece) {
    const auto until = std::chrono::steady_clock::now() + reply.pause;
    while (piece > 0 && !stop_ && std::chrono::steady_clock::now() < until) {
      std::this_thread::sleep_for(std::chrono::milliseconds(kPollMilliseconds));
    }
    if (stop_ || !SendAll(connection, reply.pieces[piece])) return;
  }
}

}  // namespace skyhop::testing
