#include "engine/circuit_run.h"

#include <utility>

#include "common/errors.h"
#include "common/files.h"

namespace skyhop {

CircuitRun::CircuitRun(Collaborators collaborators)
    : with_(std::move(collaborators)),
      decks_(with_.pause, with_.diagnostics),
      job_(with_.launcher, with_.pause, with_.diagnostics) {}

CircuitRun::Started CircuitRun::Start(const PredictionInputs& asked, Time now) {
  return with_.diagnostics.Trap("CircuitRun.Start", Started::kFailed, [&] {
    End();
    problem_ = "the error log has the reason";
    EngineJob::Request request;
    request.asked = asked;
    request.timeout = EngineJob::kTimeout;
    request.finding = FindEngine(with_.host, with_.program_folder, asked.engine);
    const std::string path = PathText(request.finding.executable);
    if (!request.finding.exists) {
      problem_ = "the engine is missing: there is no " + path;
      return Started::kFailed;
    }
    if (!request.finding.can_run) {
      problem_ = "the engine cannot be executed: " + path +
                 " is not a program, or you have no permission to run it.";
      return Started::kFailed;
    }
    std::unique_ptr<RunLock> lock = with_.locker.Lock();
    if (!lock) return Started::kBusy;
    problem_ = Prepare(request);
    if (!problem_.empty()) return Started::kFailed;
    if (!job_.Start(request, now)) {
      problem_ = "the engine could not be started: " + job_.Problem();
      return Started::kFailed;
    }
    lock_ = std::move(lock);
    return Started::kRuns;
  });
}

/// Returns why there is no deck, an empty text when there is one.
std::string CircuitRun::Prepare(EngineJob::Request& request) {
  try {
    const EngineChoice engine = request.asked.engine;
    request.files =
        FilesIn(with_.program_folder / EngineFolder(engine), engine, with_.names, with_.launcher);
    job_.Prepare(request.files);
    if (!decks_.Write(request.asked, request.files.deck)) return "the deck could not be written";
  } catch (const Error& error) {
    return std::string("the run cannot be prepared: ") + error.what();
  }
  return {};
}

std::optional<CircuitRun::Outcome> CircuitRun::Poll(Time now) {
  if (!Running()) return std::nullopt;
  Outcome outcome;
  outcome.text = "the error log has the reason";
  outcome.taken = job_.Elapsed(now);
  const bool finished = with_.diagnostics.Trap("CircuitRun.Poll", true, [&] {
    EngineJob::Outcome ended = job_.Poll(now);
    outcome.good = ended.state == EngineJob::State::kComplete;
    outcome.failure = ended.failure;
    outcome.text = std::move(ended.text);
    return ended.state != EngineJob::State::kRunning;
  });
  if (!finished) return std::nullopt;
  return outcome;
}

void CircuitRun::End(bool keep_files) {
  if (!Running()) return;
  with_.diagnostics.Trap("CircuitRun.End", [&] {
    job_.End();
    if (!keep_files) job_.RemoveFiles();
  });
  // Last: the next holder of the lock may use the same files.
  lock_.reset();
}

}  // namespace skyhop
