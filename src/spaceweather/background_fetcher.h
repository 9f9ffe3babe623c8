#pragma once

#include <chrono>

#include "common/pause.h"
#include "spaceweather/url_fetcher.h"

namespace skyhop {

/// Lets another fetcher work on a thread of its own while the caller waits in short pauses: a pause
/// that repaints the windows keeps them from looking dead during a slow download. To the caller a
/// fetch is synchronous all the same, and nothing of the program runs on the other thread.
class BackgroundFetcher : public UrlFetcher {
 public:
  static constexpr std::chrono::milliseconds kPause{20};

  /// Both must outlive this object. `pause` must hold back what the user does meanwhile.
  BackgroundFetcher(UrlFetcher& fetcher, Pause& pause) : fetcher_(&fetcher), pause_(&pause) {}

  std::int32_t RemoveFromCache(const std::string& url) noexcept override;
  [[nodiscard]] std::int32_t Fetch(const std::string& url,
                                   const std::filesystem::path& file) noexcept override;

 private:
  UrlFetcher* fetcher_;
  Pause* pause_;
};

}  // namespace skyhop
