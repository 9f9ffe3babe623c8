// Measures whole processes: the engine alone, and the program that runs it.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "common/files.h"
#include "support/temporary_folder.h"

extern char** environ;

namespace skyhop {
namespace {

using testing::TemporaryFolder;
using testing::TestData;

/// Runs a program to its end, with its input from a file and its output discarded. Returns its
/// highest memory use in MB, or a negative number if it failed.
double RunToItsEnd(std::vector<std::string> command, const std::filesystem::path& input) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (std::string& word : command) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, input.c_str(), O_RDONLY, 0);
  ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t process = 0;
  const int error =
      ::posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  rusage usage{};
  if (error != 0 || ::wait4(process, &status, 0, &usage) != process || status != 0) return -1;
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

void Measure(benchmark::State& state, const std::vector<std::string>& command,
             const std::filesystem::path& input) {
  double memory = 0;
  for ([[maybe_unused]] auto _ : state) {
    const double used = RunToItsEnd(command, input);
    if (used < 0) state.SkipWithError("the program failed");
    memory = std::max(memory, used);
  }
  state.counters["memory_MB"] = memory;
}

void EngineProcess(benchmark::State& state) {
  const TemporaryFolder folder;
  WriteFile(folder / "script.txt", TestData("decks/transatlantic-ioncap.txt"));
  WriteFile(folder / "driver.txt",
            PathText(folder / "script.txt") + "\n" + PathText(folder / "results.txt") + "\n");
  Measure(state, {SKYHOP_ESTIMATE}, folder / "driver.txt");
}
BENCHMARK(EngineProcess)->Unit(benchmark::kMillisecond)->UseRealTime();

void WholePrediction(benchmark::State& state) {
  const TemporaryFolder folder;
  ::setenv("SKYHOP_HOME", folder.Path().c_str(), 1);
  Measure(state,
          {SKYHOP_PREDICT, "--from", "40.5,-74.25", "--to", "51.5,-0.1167", "--date", "15-Nov-26",
           "--sfi", "150", "--svg", PathText(folder / "chart.svg")},
          "/dev/null");
}
BENCHMARK(WholePrediction)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace skyhop
