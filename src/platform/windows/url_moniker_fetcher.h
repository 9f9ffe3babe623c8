#pragma once

#include "spaceweather/url_fetcher.h"

namespace skyhop::platform {

/// Fetches as the system's browser does: with the user's proxies, certificates and limits of time.
class UrlMonikerFetcher : public UrlFetcher {
 public:
  std::int32_t RemoveFromCache(const std::string& url) noexcept override;
  [[nodiscard]] std::int32_t Fetch(const std::string& url,
                                   const std::filesystem::path& file) noexcept override;
};

}  // namespace skyhop::platform
