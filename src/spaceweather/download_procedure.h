#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <stop_token>
#include <string>

#include "common/diagnostics.h"
#include "common/user_messages.h"
#include "spaceweather/download_host.h"
#include "spaceweather/file_download.h"

namespace skyhop {

/// The parts in which the kinds of downloads differ.
struct DownloadTask {
  DownloadKind kind = DownloadKind::kForecast;
  const char* file_name = "";      ///< of the local file, in the program folder
  const char* status = "";         ///< shown while the download runs
  const char* url_line = "";       ///< start of the debug line that the address completes
  const char* missing_url = "";    ///< message about an address that is not configured
  const char* failed = "";         ///< start of the message about a download that failed
  const char* missing_file = "";   ///< start of the message about a file that is not there
  const char* empty_file = "";     ///< start of the message about an empty file
  const char* complete_line = "";  ///< the last debug line

  /// Tells the user about a failure.
  std::function<void(const std::string& message)> report;
  /// Gets the same messages and the one about a missing address.
  std::function<void(const std::string& message)> on_failure;
  /// Called before anything is fetched, once there is an address.
  std::function<void()> before_fetch;
  /// Called instead of `report` and `on_failure` when the download was cancelled.
  std::function<void()> on_cancel = [] {};
  /// Uses the downloaded file. Returns false after it has reported that the file is unusable.
  std::function<bool(const std::string& content, const std::string& url)> parse;
};

/// The sequence that all downloads follow.
///
/// One runs at a time. The commands that start downloads are disabled meanwhile, but timers go on
/// while a message waits for the user: one that starts then does nothing.
class DownloadProcedure {
 public:
  /// In bytes. The expected files are much shorter.
  static constexpr std::size_t kLongestFile = std::size_t{8} << 20U;

  /// All must outlive this object.
  DownloadProcedure(DownloadHost& host, Common::FileDownload& files, UserMessages& messages,
                    Diagnostics& diagnostics, std::filesystem::path program_folder)
      : host_(&host),
        files_(&files),
        messages_(&messages),
        diagnostics_(&diagnostics),
        program_folder_(std::move(program_folder)) {}

  /// Downloads and parses; returns when that is done or has failed. In every case it then enables
  /// downloads again and restores the caption. Throws what `task`'s functions throw.
  void Run(const DownloadTask& task);

  [[nodiscard]] bool Busy() const { return busy_; }

  /// Ends the download that is running: no message is shown and all values stay as they are. Does
  /// nothing when none is running or when its file has already arrived.
  void Cancel() { stop_.request_stop(); }

 private:
  [[nodiscard]] bool Download(const DownloadTask& task);
  void Finish();

  DownloadHost* host_;
  Common::FileDownload* files_;
  UserMessages* messages_;
  Diagnostics* diagnostics_;
  std::filesystem::path program_folder_;
  bool busy_ = false;
  std::stop_source stop_;  ///< of the download that is running, or of the last one
};

}  // namespace skyhop
