#include "engine/engine_job.h"

#include <algorithm>
#include <fstream>

#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"
#include "engine/echo_check.h"
#include "engine/engine_output.h"
#include "engine/results.h"
#include "engine/script_cards.h"

namespace skyhop {
namespace {

using std::chrono::milliseconds;

constexpr const char* kRunScript = "IONCAPModule.RunScript";

/// This many bytes at the end of a results file contain its last line.
constexpr std::streamoff kTail = 200;

bool EndsWithLastLine(const std::filesystem::path& results) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(results, ignored)) return false;
  std::ifstream file(results, std::ios::binary | std::ios::ate);
  if (!file) return false;
  file.seekg(std::max<std::streamoff>(file.tellg() - kTail, 0));
  std::string tail(static_cast<std::size_t>(kTail), '\0');
  file.read(tail.data(), kTail);
  tail.resize(static_cast<std::size_t>(file.gcount()));
  return tail.find("END OF RUN") != std::string::npos && tail.ends_with('\n');
}

EngineJob::Outcome JobFailed(EngineJob::Failure failure, std::string reason) {
  return {EngineJob::State::kFailed, failure, std::move(reason)};
}

}  // namespace

EngineFiles FilesIn(const std::filesystem::path& folder, EngineChoice engine,
                    const EngineFileNames& names, EngineLauncher& launcher) {
  const bool ioncap = engine == EngineChoice::kIonCap;
  const std::filesystem::path run = ioncap ? "" : "run";
  EngineFiles files;
  files.folder = launcher.ShortPath(folder);
  files.deck = files.folder / run / names.deck;
  files.batch = files.folder / run / names.batch;
  if (ioncap) files.driver = files.folder / names.driver;
  files.short_results = files.folder / run / names.results;
  files.results = folder / run / names.results;
  return files;
}

void EngineJob::Prepare(const EngineFiles& files) {
  CreateFolder(files.results.parent_path());
  if (!IONCAPModule::DeleteWithRetries(files.results, *pause_)) {
    throw Error(errors::kPathFileAccess, "could not delete " + PathText(files.results));
  }
}

bool EngineJob::Start(const Request& request, Time now) {
  End();
  problem_ = "the error log has the reason";
  return diagnostics_->Trap(kRunScript, false, [&] {
    diagnostics_->DebugLog(std::string(kRunScript) + ": SNR = " + BooleanText(request.snr) +
                           ", BatFilename = " + PathText(request.files.batch) +
                           ", ScriptFilename = " + PathText(request.files.deck));
    request_ = request;
    process_ = 0;
    ended_at_.reset();
    if (!WriteBatch()) return false;
    if (!request.files.driver.empty()) WriteDriver();
    if (!Launch()) return false;
    started_at_ = now;
    problem_.clear();
    return true;
  });
}

/// Deletes the old batch file and writes the new one: change the folder, run the engine, be quiet.
bool EngineJob::WriteBatch() {
  const EngineFiles& files = request_.files;
  if (!IONCAPModule::DeleteWithRetries(files.batch, *pause_)) {
    problem_ = "could not delete " + PathText(files.batch);
    diagnostics_->ErrorLog(std::string(kRunScript) + ": " + problem_);
    return false;
  }
  const std::string command =
      files.driver.empty()
          ? ItsCommand(request_.finding, files.folder, PathText(files.deck.filename()),
                       PathText(files.short_results.filename()), *launcher_)
          : IonCapCommand(request_.finding, files.driver, *launcher_);
  const std::string end = launcher_->LineEnd();
  const std::string content = "cd " + launcher_->BatchText(files.batch.parent_path()) + end +
                              command + end + "echo off" + end + "cls" + end;
  try {
    WriteFile(files.batch, content);
  } catch (const Error& error) {
    problem_ = "could not create " + PathText(files.batch);
    diagnostics_->ErrorLog(std::string(kRunScript) + ": " + problem_);
    diagnostics_->DebugLog(std::string("   ") + error.what());
    return false;
  }
  return true;
}

void EngineJob::WriteDriver() {
  const EngineFiles& files = request_.files;
  const std::string deck = DriverLine(request_.finding, files.deck, *launcher_);
  const std::string results = DriverLine(request_.finding, files.short_results, *launcher_);
  if (!IONCAPModule::DeleteWithRetries(files.driver, *pause_)) {
    throw Error(errors::kPathFileAccess, "could not delete " + PathText(files.driver));
  }
  const std::string end = launcher_->LineEnd();
  WriteFile(files.driver, deck + end + results + end);
}

bool EngineJob::Launch() {
  const EngineFiles& files = request_.files;
  const LaunchResult started = launcher_->StartBatch(
      files.batch, files.driver.empty() ? "" : PathText(files.driver), files.folder);
  process_ = started.process;
  if (started.Succeeded()) return true;
  problem_ = LaunchErrorText(started.code);
  LogFailedLaunch();
  return false;
}

void EngineJob::LogFailedLaunch() const {
  const EngineFiles& files = request_.files;
  diagnostics_->ErrorLog(std::string(kRunScript) + " ShellExecute failure: " + problem_);
  diagnostics_->ErrorLog("       Exe filename = " + PathText(Executable()));
  diagnostics_->ErrorLog("       Bat filename = " + PathText(files.batch));
  diagnostics_->ErrorLog("    Driver filename = " + PathText(files.driver));
  diagnostics_->ErrorLog("    Script filename = " + PathText(files.deck));
  diagnostics_->ErrorLog("   Results filename = " + PathText(files.short_results));
  diagnostics_->ErrorLog("             Folder = " + PathText(files.folder));
}

EngineJob::Outcome EngineJob::Poll(Time now) {
  // The process before the file: an engine that has ended writes nothing any more.
  const bool ended = process_ != 0 && !launcher_->IsRunning(process_);
  if (HasResults() && (ended || EndsWithLastLine(request_.files.results))) return Judge();
  if (TimedOut(now)) {
    const double seconds = std::chrono::duration<double>(*request_.timeout).count();
    return JobFailed(Failure::kTimeout, "no answer within " + NumberText(seconds) + " s");
  }
  if (!ended) return {};
  if (!ended_at_) ended_at_ = now;
  if (now - *ended_at_ < kGrace) return {};
  return JobFailed(Failure::kNoResults, "the engine ended without results." + FailureText());
}

EngineJob::Outcome EngineJob::Judge() const {
  try {
    std::string text = ReadFile(request_.files.results, IONCAPModule::Results::kLargestFile);
    std::string difference = Difference(text);
    if (!difference.empty()) return JobFailed(Failure::kOtherQuestion, std::move(difference));
    return {State::kComplete, Failure::kNone, std::move(text)};
  } catch (const Error& error) {
    return JobFailed(Failure::kUnreadable, error.what());
  }
}

void EngineJob::End() {
  if (!started_at_) return;
  started_at_.reset();
  if (process_ != 0) launcher_->End(process_);
}

void EngineJob::RemoveFiles() const {
  const EngineFiles& files = request_.files;
  for (const auto& file : {files.deck, files.batch, files.driver, files.results}) {
    std::error_code ignored;
    if (!file.empty()) std::filesystem::remove(file, ignored);
  }
}

bool EngineJob::MustBeEnded(Time now) const {
  const bool lingers = Started() && process_ != 0 && launcher_->IsRunning(process_) &&
                       EndsWithLastLine(request_.files.results);
  return lingers || TimedOut(now);
}

bool EngineJob::TimedOut(Time now) const {
  return Started() && request_.timeout && Elapsed(now) >= *request_.timeout;
}

milliseconds EngineJob::Elapsed(Time now) const {
  return started_at_ ? std::chrono::floor<milliseconds>(now - *started_at_) : milliseconds(0);
}

bool EngineJob::HasResults() const {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(request_.files.results, error);
  return !error && size > 0;
}

std::filesystem::path EngineJob::Executable() const {
  return EngineExecutable(request_.finding, request_.files.folder, *launcher_);
}

std::string EngineJob::Difference(std::string_view results) const {
  return IONCAPModule::EchoDifference(IONCAPModule::ReadHeading(results), request_.asked);
}

std::string EngineJob::FailureText() const {
  return EngineFailureText(request_.asked.engine, request_.finding, launcher_->Output(process_));
}

}  // namespace skyhop
