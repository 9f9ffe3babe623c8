#include "engine/results.h"

#include <algorithm>

#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr int kHoursOfDay = static_cast<int>(kHourCount) - 1;

}  // namespace

bool Results::InitializeResults(const std::filesystem::path& file) {
  return diagnostics_->Trap("IONCAPModule.InitializeResults", false, [&] {
    std::error_code error;
    const auto status = std::filesystem::symlink_status(file, error);
    if (status.type() == std::filesystem::file_type::not_found) return true;
    const std::string what = "cannot delete " + PathText(file);
    if (status.type() == std::filesystem::file_type::directory) {
      throw Error(errors::kPathFileAccess, what + ": it is a folder");
    }
    std::filesystem::remove(file, error);
    if (error) throw FileError(error, what);
    return true;
  });
}

bool Results::DisplayResults(bool has_luf, const std::filesystem::path& file, EngineChoice engine) {
  return diagnostics_->Trap("IONCAPModule.DisplayResults", false, [&] {
    const std::string text = ReadFile(file, kLargestFile);
    ParseLufMufResults(text, PathText(file), has_luf, *table_);
    ShowTable(engine, text);
    return true;
  });
}

bool Results::DisplayMethod2030Results(const std::filesystem::path& file) {
  return diagnostics_->Trap("IONCAPModule.DisplayMethod2030Results", false, [&] {
    const std::string text = ReadFile(file, kLargestFile);
    const Method30Outcome outcome = ParseMethod30Results(text, PathText(file), *table_);
    if (!outcome.header_found) {
      messages_->Show("results missing expected header", kProductName);
      diagnostics_->DebugLog("   results missing expected header");
      return false;
    }
    LogFaults(outcome.faults);
    if (outcome.complete_hours < kHoursOfDay) {
      diagnostics_->ErrorLog("IONCAPModule.DisplayMethod2030Results: " + PathText(file) +
                             " ends at line " + std::to_string(outcome.lines) + ", after hour " +
                             std::to_string(outcome.last_hour) + "; " +
                             std::to_string(outcome.complete_hours) + " of 24 hours are complete");
    }
    // Without a single hour there is no axis to draw.
    if (outcome.last_hour > 0) ShowTable(EngineChoice::kVoaCapSnr, text);
    return outcome.complete_hours == kHoursOfDay;
  });
}

/// A file of something else would have more of them than anybody reads.
void Results::LogFaults(const std::vector<std::string>& faults) {
  static constexpr std::size_t kMostLogged = 20;
  const char* name = "IONCAPModule.DisplayMethod2030Results: ";
  for (std::size_t i = 0; i < std::min(faults.size(), kMostLogged); ++i) {
    diagnostics_->ErrorLog(name + faults[i]);
  }
  if (faults.size() > kMostLogged) {
    diagnostics_->ErrorLog(name + std::to_string(faults.size() - kMostLogged) +
                           " more fields could not be read");
  }
}

void Results::ShowTable(EngineChoice engine, const std::string& text) {
  heading_ = ReadHeading(text);
  ++tables_shown_;
  if (on_table_) on_table_(engine);
}

}  // namespace skyhop::IONCAPModule
