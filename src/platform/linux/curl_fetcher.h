#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "spaceweather/url_fetcher.h"

namespace skyhop::platform {

/// Bounds of a fetch.
struct FetchLimits {
  /// Time until the server is found and has accepted the connection.
  std::chrono::milliseconds connect{10'000};
  /// Time for the whole fetch.
  std::chrono::milliseconds whole{60'000};
  /// Limit of the content in bytes.
  std::size_t size = std::size_t{8} << 20U;
  /// A file with the authorities whose certificates are trusted; empty for those of the system.
  std::string authorities;
};

/// Fetches by HTTP and HTTPS only. An address without a scheme means HTTPS. A redirect from HTTPS
/// must lead to HTTPS. Uses the proxies of the environment, checks certificates and asks caches for
/// a fresh copy. Writes the file only when the content is complete, so a failure leaves an older
/// file unchanged.
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
