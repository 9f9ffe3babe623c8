#pragma once

#include <string>

#include "common/files.h"
#include "support/fake_launcher.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {

/// Results without the part of the heading that repeats the inputs, so that they answer any
/// circuit.
inline std::string AnswerToAny(const std::string& results) {
  const std::size_t table = results.find("      GMT   LMT");
  return results.substr(table != std::string::npos ? table
                                                   : results.find("  MULTIPATH POWER TOLERANCE"));
}

/// A launcher whose engines answer at once, or run until the test ends them.
class AnsweringLauncher : public PlainLauncher {
 public:
  LaunchResult StartBatch(const std::filesystem::path& batch, const std::string& parameter,
                          const std::filesystem::path& working_folder) override {
    const LaunchResult result = PlainLauncher::StartBatch(batch, parameter, working_folder);
    decks.push_back(ReadFile(batch.parent_path() / "beacon.txt", 100'000));
    if (result.Succeeded() && slow) running.insert(result.process);
    if (!answer.empty()) WriteFile(batch.parent_path() / "beaconresults.txt", answer);
    return result;
  }

  std::string answer = AnswerToAny(TestData("results/newyork-london-method26.results.txt"));
  bool slow = false;
  std::vector<std::string> decks;
};

}  // namespace skyhop::testing
