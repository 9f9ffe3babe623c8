#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace skyhop::testing {

/// A window program that runs beside the test. The destructor kills it.
class StartedProgram {
 public:
  /// Throws std::system_error when it cannot be started.
  explicit StartedProgram(const std::filesystem::path& program);
  ~StartedProgram();
  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(const StartedProgram&) = delete;

  [[nodiscard]] bool Ended();
  /// Exit status, -1 while it runs or if a signal ended it.
  [[nodiscard]] int Status() const { return status_; }
  void Send(int signal) const;

  /// The number of its windows on the screen, and whether a title of one begins with `title`.
  [[nodiscard]] std::size_t Windows() const { return Find(".").size(); }
  [[nodiscard]] bool HasWindow(const std::string& title) const {
    return !Find("^" + title).empty();
  }
  /// Minimises its newest window.
  void Minimise() const;
  /// Presses a key in its newest window.
  void PressKey(const std::string& key) const;

 private:
  [[nodiscard]] std::vector<std::string> Find(const std::string& title) const;

  int process_ = -1;
  bool ended_ = false;
  int status_ = -1;
};

}  // namespace skyhop::testing
