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
/// The first line that a run writes is preceded by a block that describes the machine. The file is
/// opened and closed for every line, so it is complete up to the last line whatever happens next.
/// Control characters in a line become blanks: whatever a peer or a file brings in, one line stays
/// one line.
/// An error line that equals one of the last kRecentErrors error lines, written less than kCounted
/// ago, is counted instead of being written: a peer that repeats itself must not fill the disk. How
/// often a line was repeated follows with the next new error line, after kLongestCount repetitions,
/// and at the end of the run. Nothing here throws: a log that cannot be written is not worth
/// stopping the program for.
class Diagnostics {
 public:
  /// Size in bytes beyond which debug logging switches itself off.
  static constexpr std::uintmax_t kDebugLimit = 100'000'000;

  static constexpr std::size_t kRecentErrors = 64;
  static constexpr std::chrono::minutes kCounted{1};
  static constexpr int kLongestCount = 10'000;

  /// `program_folder` is where the log lies. The clock and the facts must outlive this object.
  Diagnostics(std::filesystem::path program_folder, const Clock& clock, const MachineFacts& facts);
  ~Diagnostics();
  Diagnostics(const Diagnostics&) = delete;
  Diagnostics& operator=(const Diagnostics&) = delete;

  /// Renames a log beyond kDebugLimit to "ErrorLog.old.txt", in the place of the one before. Called
  /// once at the start of the program: while it runs, error lines are not limited.
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

  /// Runs `body`. Whatever it throws is reported under `module`, a qualified procedure name such as
  /// "IONCAPModule.RunScript", and `fallback` is the result instead of the body's.
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

  /// What the main window's caption ends with: " - see error log in " and the log's path when the
  /// log file exists, else nothing.
  [[nodiscard]] std::string CaptionHint() const;

  /// Text of the log header's line about connected peer applications, asked when it is written.
  /// Lines that `caption` itself logs follow after the header.
  void SetPeerCaption(std::function<std::string()> caption) { peer_caption_ = std::move(caption); }

  /// Gets every debug line as well; while it is set, debug lines are made even when the log file
  /// does not want them.
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
    int repetitions = 0;  ///< that were counted and not written yet
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
