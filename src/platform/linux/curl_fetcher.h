#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "spaceweather/url_fetcher.h"

namespace skyhop::platform {

/// Bounds of a fetch.
struct FetchLimits {
  /// Until the server is found and has accepted the connection.
  std::chrono::milliseconds connect{10'000};
  /// All of it.
  std::chrono::milliseconds whole{60'000};
  /// Bytes of content.
  std::size_t size = std::size_t{8} << 20U;
  /// A file with the authorities whose certificates are trusted; empty for those of the system.
  std::string authorities;
};

/// Fetches by HTTP and HTTPS, nothing else, redirects included, and by HTTPS only where the address
/// says so; an address without a scheme is taken for HTTPS. Proxies of the environment are used,
/// certificates are checked, caches on the way are told to ask the server. The file is written as a
/// whole once the content is complete: a failure leaves an older one as it was.
class CurlFetcher : public UrlFetcher {
 public:
  explicit CurlFetcher(FetchLimits limits = {});

  std::int32_t RemoveFromCache(const std::string& url) noexcept override;
  [[nodiscard]] std::int32_t Fetch(const std::string& url, const std::filesystem::path& file,
                                   const std::stop_token& stop) noexcept override;

 private:
  FetchLimits limits_;
};

}  // namespace skyhop::platform
