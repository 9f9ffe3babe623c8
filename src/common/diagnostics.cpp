#include "common/diagnostics.h"

#include <algorithm>
#include <fstream>
#include <new>

#include "common/dates.h"
#include "common/files.h"
#include "common/program.h"

namespace skyhop {
namespace {

/// The text with blanks for its control characters.
std::string OnOneLine(std::string_view text) {
  std::string line(text);
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < ' ' && c != '\t') c = ' ';
  }
  return line;
}

}  // namespace

Diagnostics::Diagnostics(std::filesystem::path program_folder, const Clock& clock,
                         const MachineFacts& facts)
    : program_folder_(std::move(program_folder)),
      path_(program_folder_ / "ErrorLog.txt"),
      clock_(&clock),
      facts_(&facts) {}

Diagnostics::~Diagnostics() {
  for (RecentError& error : recent_errors_) WriteRepetitions(error);
}

void Diagnostics::SetFullLogAside() {
  if (!DebugLogIsFull()) return;
  std::error_code error;
  std::filesystem::rename(path_, program_folder_ / "ErrorLog.old.txt", error);
  if (error) ErrorLog("cannot set the full error log aside: " + error.message());
}

void Diagnostics::DebugLog(std::string_view text) {
  if (debug_listener_) debug_listener_(text);
  if (!debug_) return;
  if (DebugLogIsFull()) {
    debug_ = false;
    return;
  }
  Append(text);
}

void Diagnostics::ErrorLog(std::string_view text) {
  if (error_listener_) error_listener_(text);
  // The limit stops debug lines only; errors are always written.
  if (debug_ && DebugLogIsFull()) debug_ = false;
  if (!Counted(text)) Append(text);
}

/// Counts a line that was written less than kCounted ago. Returns false for any other line, which
/// the caller has to write.
bool Diagnostics::Counted(std::string_view text) {
  const auto known = std::find_if(recent_errors_.begin(), recent_errors_.end(),
                                  [&](const RecentError& error) { return error.text == text; });
  const UtcTime now = clock_->UtcNow();
  if (known != recent_errors_.end() && now - known->written < kCounted) {
    if (++known->repetitions >= kLongestCount) WriteRepetitions(*known);
    return true;
  }
  for (RecentError& error : recent_errors_) WriteRepetitions(error);
  if (known != recent_errors_.end()) recent_errors_.erase(known);
  recent_errors_.push_back({std::string(text), 0, now});
  if (recent_errors_.size() > kRecentErrors) recent_errors_.pop_front();
  return false;
}

void Diagnostics::WriteRepetitions(RecentError& error) noexcept {
  const int repetitions = std::exchange(error.repetitions, 0);
  if (repetitions == 0) return;
  try {
    Append("repeated " + std::to_string(repetitions) + (repetitions == 1 ? " time: " : " times: ") +
           error.text);
  } catch (const std::bad_alloc&) {
    // Drop the line, like any line that cannot be written.
  }
}

void Diagnostics::ProgramError(std::string_view module, const Error& error) {
  ErrorLog("program error " + std::to_string(error.Number()) + " in module " + std::string(module) +
           ": " + error.what());
}

std::string Diagnostics::CaptionHint() const {
  std::error_code ignored;
  if (!std::filesystem::exists(path_, ignored)) return {};
  return " - see error log in " + PathText(path_);
}

void Diagnostics::ReportCurrentException(std::string_view module) noexcept {
  try {
    try {
      throw;
    } catch (const Error& error) {
      ProgramError(module, error);
    } catch (const std::filesystem::filesystem_error& error) {
      ProgramError(module, FileError(error.code(), error.what()));
    } catch (const std::bad_alloc&) {
      ProgramError(module, Error(errors::kOutOfMemory, "Out of memory"));
    } catch (const std::out_of_range& error) {
      ProgramError(module, Error(errors::kSubscript, error.what()));
    } catch (const std::exception& error) {
      ProgramError(module, Error(errors::kInvalidCall, error.what()));
    } catch (...) {
      ProgramError(module, Error(errors::kInvalidCall, "Unknown exception"));
    }
  } catch (...) {
    // The report itself failed. The caller still gets its fallback.
  }
}

bool Diagnostics::DebugLogIsFull() const {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path_, error);
  return !error && size > kDebugLimit;
}

void Diagnostics::Append(std::string_view text) noexcept {
  try {
    if (composing_header_) {
      lines_after_header_ += Line(text);
      return;
    }
    std::ofstream file(path_, std::ios::app);
    if (!file) return;
    if (!header_written_) {
      composing_header_ = true;
      file << Header() << lines_after_header_;
      composing_header_ = false;
      header_written_ = true;
      lines_after_header_.clear();
    }
    file << Line(text);
  } catch (...) {
    // Reporting a failure of the log would need the log.
    composing_header_ = false;
    lines_after_header_.clear();
  }
}

std::string Diagnostics::Line(std::string_view text) const {
  return TimeStampWithMilliseconds(clock_->UtcNow()) + " > " + OnOneLine(text) + '\n';
}

std::string Diagnostics::Header() const {
  const MachineDescription machine = facts_->Describe();
  const UtcTime now = clock_->UtcNow();
  const std::string start = TimeStamp(now, clock_->LocalOffset(now)) + "     > ";
  std::string header;
  const auto line = [&](std::string_view label, const std::string& value) {
    header.append(start).append(label).append(OnOneLine(value)).append("\n");
  };
  line("", std::string(kProductName) + " version " + VersionText());
  line("App.Path          : ", PathText(program_folder_));
  line("App.exe           : ", machine.executable);
  line("Module            : ", machine.module_file + " (" + std::to_string(machine.word_length) +
                                   "-bit) build " + machine.build);
  line("Operating System  : ", machine.system_name + " (0x" + machine.system_version + ")");
  line("Locale ID         : ", machine.locale_id);
  line("ANSI CodePage     : ", machine.ansi_code_page);
  line("OEM CodePage      : ", machine.oem_code_page);
  line("Country           : ", machine.country);
  line("Language          : ", machine.language);
  line("DecimalSeparator  : ", machine.decimal_separator);
  line("ThousandSeparator : ", machine.thousand_separator);
  line("Marlo Apps        : ", peer_caption_ ? peer_caption_() : std::string());
  line("Monitors          : ", std::to_string(machine.monitors.size()));
  int number = 0;
  for (const Monitor& monitor : machine.monitors) {
    line("Monitor ", std::to_string(++number));
    line("   width          : ", std::to_string(monitor.right - monitor.left));
    line("   height         : ", std::to_string(monitor.bottom - monitor.top));
    line("   dimensions     : ",
         std::string("(") + std::to_string(monitor.left) + ", " + std::to_string(monitor.top) +
             ")-(" + std::to_string(monitor.right) + ", " + std::to_string(monitor.bottom) + ")");
  }
  return header;
}

}  // namespace skyhop
