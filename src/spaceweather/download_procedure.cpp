#include "spaceweather/download_procedure.h"

#include "common/errors.h"
#include "common/files.h"
#include "common/program.h"
#include "common/text.h"

namespace skyhop {

void DownloadProcedure::Run(const DownloadTask& task) {
  if (busy_) {
    diagnostics_->DebugLog(std::string(task.status) + ": another download is running");
    return;
  }
  busy_ = true;
  stop_ = std::stop_source();
  bool complete = false;
  try {
    host_->EnableDownloads(false);
    host_->ShowStatus(task.status);
    complete = Download(task);
  } catch (...) {
    Finish();
    throw;
  }
  Finish();
  if (complete) diagnostics_->DebugLog(task.complete_line);
}

void DownloadProcedure::Finish() {
  busy_ = false;
  host_->EnableDownloads(true);
  host_->ShowStatus("");
}

bool DownloadProcedure::Download(const DownloadTask& task) {
  const auto fail = [&](const std::string& message) {
    task.on_failure(message);
    task.report(message);
    return false;
  };
  const std::filesystem::path file = program_folder_ / task.file_name;
  const std::string url = host_->Url(task.kind);
  diagnostics_->DebugLog(task.url_line + url);
  if (Trim(url).empty()) {
    task.on_failure(task.missing_url);
    messages_->Show(task.missing_url, kProductName);
    return false;
  }
  task.before_fetch();
  const std::string problem = files_->GetFileFromURL(url, file, stop_.get_token());
  if (stop_.stop_requested()) {
    diagnostics_->DebugLog(std::string("   ") + task.status + ": cancelled");
    task.on_cancel();
    return false;
  }
  if (!problem.empty()) return fail(task.failed + url + " - " + problem);

  std::error_code error;
  if (!std::filesystem::exists(file, error)) {
    return fail(task.missing_file + url + " failed to create a file");
  }
  std::string content;
  try {
    content = ReadFile(file, kLongestFile);
  } catch (const Error& unreadable) {
    return fail(task.failed + url + " - " + unreadable.what());
  }
  if (content.empty()) return fail(task.empty_file + url + " is empty");
  return task.parse(content, url);
}

}  // namespace skyhop
