#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "common/files.h"
#include "spaceweather/download_procedure.h"
#include "spaceweather/value_origins.h"
#include "support/diagnostics_fixture.h"

namespace skyhop::testing {

/// Returns the content that a test sets.
class FakeFetcher : public UrlFetcher {
 public:
  std::int32_t RemoveFromCache(const std::string& url) noexcept override {
    removed.push_back(url);
    return 1;
  }
  [[nodiscard]] std::int32_t Fetch(const std::string& url, const std::filesystem::path& file,
                                   const std::stop_token& stop) noexcept override {
    fetched.push_back(url);
    if (during) during();
    while (silent && !stop.stop_requested()) std::this_thread::yield();
    if (stop.stop_requested()) return fetch_codes::kAborted;
    if (content) WriteFile(file, *content);
    return code;
  }

  std::int32_t code = 0;
  std::optional<std::string> content;  ///< nothing: no file is written
  std::function<void()> during;
  bool silent = false;  ///< answers nothing until the fetch is stopped
  std::vector<std::string> removed;
  std::vector<std::string> fetched;
};

/// The main window for downloads. Records their calls in order.
class FakeDownloadHost : public DownloadHost {
 public:
  [[nodiscard]] std::string Url(DownloadKind kind) const override { return urls.at(kind); }
  void EnableDownloads(bool enable) override { events.emplace_back(enable ? "enable" : "disable"); }
  void ShowStatus(const std::string& status) override { events.push_back("caption " + status); }
  void PutValue(SolarValue value, const std::string& text) override { values[value] = text; }

  std::map<DownloadKind, std::string> urls = {
      {DownloadKind::kForecast, "https://host/forecast"},
      {DownloadKind::kSunspotNumber, "https://host/ssn"},
      {DownloadKind::kCurrentConditions, "https://host/wwv"}};
  std::map<SolarValue, std::string> values = {
      {SolarValue::kFlux, "100"}, {SolarValue::kKindex, "1"}, {SolarValue::kSunspotNumber, "50"}};
  std::vector<std::string> events;
};

/// The parts below a download, with fakes. The clock shows 15 November 2026.
struct DownloadFixture {
  LoggedDiagnostics log;
  FakeUserMessages messages;
  MemorySettingsStore store;
  Common::Settings settings{store, log.diagnostics};
  FakeFetcher fetcher;
  FakeDownloadHost host;
  Common::FileDownload files{fetcher, log.diagnostics};
  DownloadProcedure procedure{host, files, messages, log.diagnostics, log.folder.Path()};
  ValueOrigins origins{settings, log.clock};

  /// The debug lines of the last download, without those of the fetch itself and of settings.
  [[nodiscard]] std::vector<std::string> Debug() const {
    std::vector<std::string> lines;
    for (const std::string& line : log.debug) {
      const bool detail = line.starts_with("   the") || line.starts_with("   Cached") ||
                          line.starts_with("   Deletion");
      if (!detail && !line.starts_with("Common.GetFile")) lines.push_back(line);
    }
    return lines;
  }
};

}  // namespace skyhop::testing
