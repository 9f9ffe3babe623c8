#pragma once

#include <memory>
#include <string>
#include <vector>

namespace skyhop::testing {

/// A program with which a test communicates through its standard input and output. The destructor
/// kills it.
class PeerProcess {
 public:
  PeerProcess(const std::string& program, const std::string& argument);
  ~PeerProcess();
  PeerProcess(const PeerProcess&) = delete;
  PeerProcess& operator=(const PeerProcess&) = delete;

  void Write(const std::string& text);
  /// The output since the last call. Waits for output, at most so long. If links need this thread's
  /// message loop, runs it meanwhile.
  [[nodiscard]] std::string Read(int longest_ms);
  void Suspend();
  void Resume();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace skyhop::testing
