#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "common/files.h"
#include "engine/engine_launcher.h"
#include "engine/run_lock.h"

namespace skyhop::testing {

/// Starts nothing; keeps the requested starts.
class FakeLauncher : public EngineLauncher {
 public:
  struct Start {
    std::filesystem::path batch;
    std::string parameter;
    std::filesystem::path working_folder;
  };

  LaunchResult StartBatch(const std::filesystem::path& batch, const std::string& parameter,
                          const std::filesystem::path& working_folder) override {
    starts.push_back({batch, parameter, working_folder});
    return {code, knows_processes ? static_cast<ProcessId>(starts.size() + 100) : 0};
  }
  LaunchResult OpenInViewer(const std::string& viewer, const std::filesystem::path& file) override {
    viewed.push_back(viewer + " " + PathText(file));
    return {code, 1};
  }
  [[nodiscard]] bool IsRunning(ProcessId process) override { return running.contains(process); }
  bool WaitForEnd(ProcessId, std::chrono::milliseconds) override { return true; }
  void End(ProcessId process) override {
    if (running.erase(process) > 0) ended.push_back(process);
  }
  void EndWithThisProgram(ProcessId) override {}
  [[nodiscard]] std::string Output(ProcessId) override { return output; }
  [[nodiscard]] std::filesystem::path ShortPath(const std::filesystem::path& path) override {
    return path.parent_path() / ("~" + path.filename().string());
  }
  [[nodiscard]] std::string BatchText(const std::filesystem::path& path) const override {
    return "[" + PathText(path) + "]";
  }
  [[nodiscard]] std::string DriverText(const std::filesystem::path& path) const override {
    return PathText(path);
  }
  [[nodiscard]] std::string LineEnd() const override { return "|\n"; }

  int code = 42;
  bool knows_processes = true;
  std::set<ProcessId> running;
  std::vector<ProcessId> ended;
  std::string output;
  std::vector<Start> starts;
  std::vector<std::string> viewed;
};

/// A launcher that does not shorten names.
class PlainLauncher : public FakeLauncher {
 public:
  [[nodiscard]] std::filesystem::path ShortPath(const std::filesystem::path& path) override {
    return path;
  }
};

/// A lock with at most one holder at a time.
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

/// Creates an executable in the engine folder of a program folder.
inline void InstallEngine(const std::filesystem::path& file) {
  std::filesystem::create_directories(file.parent_path());
  WriteFile(file, "an engine");
  std::filesystem::permissions(file, std::filesystem::perms::owner_all);
}

}  // namespace skyhop::testing
