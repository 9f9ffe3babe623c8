#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "common/clock.h"
#include "common/errors.h"
#include "common/machine_facts.h"

namespace skyhop {

/// The error and debug log "ErrorLog.txt" in the program folder, and the one error trap of the
/// program.
///
/// Each run writes a block that describes the machine before its first line. The file is opened and
/// closed for every line, so a crash loses no line. Control characters in a line become blanks, so
/// text from a peer or a file cannot add lines.
/// An error line that equals one of the last kRecentErrors error lines, written less than kCounted
/// ago, is counted instead of being written: a peer that repeats itself must not fill the disk. The
/// number of repetitions is written with the next new error line, after kLongestCount repetitions,
/// and at the end of the run. Nothing here throws: a failing log must not stop the program.
class Diagnostics {
 public:
  /// Size in bytes beyond which debug logging switches itself off.
  static constexpr std::uintmax_t kDebugLimit = 100'000'000;

  static constexpr std::size_t kRecentErrors = 64;
  static constexpr std::chrono::minutes kCounted{1};
  static constexpr int kLongestCount = 10'000;

  /// The log is in `program_folder`. The clock and the facts must outlive this object.
  Diagnostics(std::filesystem::path program_folder, const Clock& clock, const MachineFacts& facts);
  ~Diagnostics();
  Diagnostics(const Diagnostics&) = delete;
  Diagnostics& operator=(const Diagnostics&) = delete;

  /// Renames a log beyond kDebugLimit to "ErrorLog.old.txt", replacing an earlier one. The program
  /// calls it once at its start; later, error lines have no limit.
  void SetFullLogAside();

  /// Switches debug lines on or off.
  void SetDebug(bool on) { debug_ = on; }
  [[nodiscard]] bool GetDebug() const { return debug_ || debug_listener_; }

  /// Writes one line when debug lines are on.
  void DebugLog(std::string_view text);

  /// Writes one line, or counts it, in any case.
  void ErrorLog(std::string_view text);

  /// Writes "program error <number> in module <module>: <description>".
  void ProgramError(std::string_view module, const Error& error);

  /// Runs `body` and returns its result. Reports an exception from it under `module`, a qualified
  /// procedure name such as "IONCAPModule.RunScript", and returns `fallback` instead.
  template <class Result, class Body>
  Result Trap(std::string_view module, Result fallback, Body&& body) {
    try {
      return std::forward<Body>(body)();
    } catch (...) {
      ReportCurrentException(module);
    }
    return fallback;
  }

  /// The same for a procedure without a result. Returns whether the body ran to its end.
  template <class Body>
  requires std::is_void_v<std::invoke_result_t<Body>>
  bool Trap(std::string_view module, Body&& body) {
    try {
      std::forward<Body>(body)();
      return true;
    } catch (...) {
      ReportCurrentException(module);
    }
    return false;
  }

  /// Path of the log file.
  [[nodiscard]] const std::filesystem::path& LogPath() const { return path_; }

  /// The end of the main window's caption: " - see error log in " and the log's path when the log
  /// file exists, else nothing.
  [[nodiscard]] std::string CaptionHint() const;

  /// `caption` provides the header's line about connected peer applications when the header is
  /// written. Lines that `caption` itself logs follow the header.
  void SetPeerCaption(std::function<std::string()> caption) { peer_caption_ = std::move(caption); }

  /// Gets every debug line as well. While it is set, GetDebug() is true even when debug lines are
  /// switched off.
  void SetDebugListener(std::function<void(std::string_view)> listener) {
    debug_listener_ = std::move(listener);
  }

  /// Gets the text of every error line as well.
  void SetErrorListener(std::function<void(std::string_view)> listener) {
    error_listener_ = std::move(listener);
  }

 private:
  struct RecentError {
    std::string text;
    int repetitions = 0;  ///< counted but not yet written
    UtcTime written;
  };

  void ReportCurrentException(std::string_view module) noexcept;
  [[nodiscard]] bool Counted(std::string_view text);
  void WriteRepetitions(RecentError& error) noexcept;
  void Append(std::string_view text) noexcept;
  [[nodiscard]] std::string Line(std::string_view text) const;
  [[nodiscard]] std::string Header() const;
  [[nodiscard]] bool DebugLogIsFull() const;

  std::filesystem::path program_folder_;
  std::filesystem::path path_;
  const Clock* clock_;
  const MachineFacts* facts_;
  bool debug_ = false;
  bool header_written_ = false;
  bool composing_header_ = false;
  std::string lines_after_header_;
  std::deque<RecentError> recent_errors_;  ///< the newest one last
  std::function<std::string()> peer_caption_;
  std::function<void(std::string_view)> debug_listener_;
  std::function<void(std::string_view)> error_listener_;
};

}  // namespace skyhop
