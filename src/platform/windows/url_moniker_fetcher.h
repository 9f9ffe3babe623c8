#pragma once

#include "spaceweather/url_fetcher.h"

namespace skyhop::platform {

/// Fetches as the system's browser does: with the user's proxies, certificates and limits of time.
///
/// The system asks whether to go on whenever something happens, so a fetch that is stopped ends at
/// once while data comes in, else at the system's limit of time. It also reports redirects: one
/// from https to another scheme ends the fetch with kRedirectFailed.
class UrlMonikerFetcher : public UrlFetcher {
 public:
  std::int32_t RemoveFromCache(const std::string& url) noexcept override;
  [[nodiscard]] std::int32_t Fetch(const std::string& url, const std::filesystem::path& file,
                                   const std::stop_token& stop) noexcept override;
};

}  // namespace skyhop::platform
