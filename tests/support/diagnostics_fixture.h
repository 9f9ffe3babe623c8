#pragma once

#include <string>
#include <vector>

#include "common/diagnostics.h"
#include "support/fakes.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {

/// A diagnostics object with a temporary folder. Keeps every line for inspection.
struct LoggedDiagnostics {
  LoggedDiagnostics() {
    diagnostics.SetDebugListener([this](std::string_view text) { debug.emplace_back(text); });
    diagnostics.SetErrorListener([this](std::string_view text) { errors.emplace_back(text); });
  }
  LoggedDiagnostics(const LoggedDiagnostics&) = delete;
  LoggedDiagnostics& operator=(const LoggedDiagnostics&) = delete;

  TemporaryFolder folder;
  FakeClock clock;
  FakeMachineFacts facts;
  Diagnostics diagnostics{folder.Path(), clock, facts};
  std::vector<std::string> debug;
  std::vector<std::string> errors;
};

}  // namespace skyhop::testing
