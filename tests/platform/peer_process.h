#pragma once

#include <memory>
#include <string>
#include <vector>

namespace skyhop::testing {

/// A program that a test talks to through its standard input and output. It is killed with the
/// object.
class PeerProcess {
 public:
  PeerProcess(const std::string& program, const std::string& argument);
  ~PeerProcess();
  PeerProcess(const PeerProcess&) = delete;
  PeerProcess& operator=(const PeerProcess&) = delete;

  void Write(const std::string& text);
  /// What it has written. Waits for something at most so long; where links need this thread's
  /// message loop, it runs meanwhile.
  [[nodiscard]] std::string Read(int longest_ms);
  void Suspend();
  void Resume();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace skyhop::testing
