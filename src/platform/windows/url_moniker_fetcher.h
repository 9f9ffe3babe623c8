#pragma once

#include "spaceweather/url_fetcher.h"

namespace skyhop::platform {

/// Fetches like the system's browser, with the user's proxies and certificates. The time limits are
/// this program's own.
///
/// The system asks at every event whether to continue. A stopped fetch therefore ends at once while
/// data arrives, else at a time limit. The system also reports redirects: one from https to another
/// scheme ends the fetch with kRedirectFailed.
class UrlMonikerFetcher : public UrlFetcher {
 public:
  std::int32_t RemoveFromCache(const std::string& url) noexcept override;
  [[nodiscard]] std::int32_t Fetch(const std::string& url, const std::filesystem::path& file,
                                   const std::stop_token& stop) noexcept override;
};

}  // namespace skyhop::platform
