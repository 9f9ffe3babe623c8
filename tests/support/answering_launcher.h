#pragma once

#include <string>

#include "common/files.h"
#include "engine/run_lock.h"
#include "support/fake_launcher.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {

/// Results without the part of their heading that repeats the question: an answer to any circuit.
inline std::string AnswerToAny(const std::string& results) {
  const std::size_t table = results.find("      GMT   LMT");
  return results.substr(table != std::string::npos ? table
                                                   : results.find("  MULTIPATH POWER TOLERANCE"));
}

/// Engines that answer at once, or run until the test ends them.
class AnsweringLauncher : public FakeLauncher {
 public:
  LaunchResult StartBatch(const std::filesystem::path& batch, const std::string& parameter,
                          const std::filesystem::path& working_folder) override {
    const LaunchResult result = FakeLauncher::StartBatch(batch, parameter, working_folder);
    decks.push_back(ReadFile(batch.parent_path() / "beacon.txt", 100'000));
    if (result.Succeeded() && slow) running.insert(result.process);
    if (!answer.empty()) WriteFile(batch.parent_path() / "beaconresults.txt", answer);
    return result;
  }
  [[nodiscard]] std::filesystem::path ShortPath(const std::filesystem::path& path) override {
    return path;
  }

  std::string answer = AnswerToAny(TestData("results/newyork-london-method26.results.txt"));
  bool slow = false;
  std::vector<std::string> decks;
};

/// A lock that one holder at a time has.
class OneLocker : public RunLocker {
 public:
  [[nodiscard]] std::unique_ptr<RunLock> Lock() override {
    ++attempts;
    if (held) return nullptr;
    return std::make_unique<Held>(*this);
  }

  bool held = false;
  int attempts = 0;

 private:
  struct Held : RunLock {
    explicit Held(OneLocker& locker) : locker_(&locker) { locker_->held = true; }
    ~Held() override { locker_->held = false; }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    OneLocker* locker_;
  };
};

/// An executable for the engine folder of a program folder.
inline void InstallEngine(const std::filesystem::path& file) {
  std::filesystem::create_directories(file.parent_path());
  WriteFile(file, "an engine");
  std::filesystem::permissions(file, std::filesystem::perms::owner_all);
}

}  // namespace skyhop::testing
